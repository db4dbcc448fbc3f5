#include "render/style/list_treatment.h"

#include <algorithm>

namespace quillet {
namespace {

ListKind KindOf(const StyleRules& rules, std::u16string_view id) {
  const ListEntry* const entry = id.empty() ? nullptr : rules.names->Find(id);
  return entry == nullptr ? ListKind::kNone : entry->kind;
}

template <typename Treatment>
Treatment TreatmentOf(ListKind kind, Treatment black, Treatment superBlack) {
  if (kind == ListKind::kBlack) return black;
  return kind == ListKind::kSuperBlack ? superBlack : Treatment::kNone;
}

}  // namespace

PushTreatment PushTreatmentOf(const StyleRules& rules, std::u16string_view id) {
  return rules.reveal == Reveal::kHidden ? PushTreatment::kNone : ListedPushTreatmentOf(rules, id);
}

PushTreatment ListedPushTreatmentOf(const StyleRules& rules, std::u16string_view id) {
  const Settings& settings = *rules.settings;
  return TreatmentOf(KindOf(rules, id), settings.blackPush, settings.superBlackPush);
}

TitleTreatment TitleTreatmentOf(const StyleRules& rules, const Keywords& words, std::u16string_view author,
                                std::u16string_view title) {
  if (rules.reveal == Reveal::kHidden) return TitleTreatment::kNone;
  const Settings& settings = *rules.settings;
  const ListKind kind = KindOf(rules, author);
  const TitleTreatment byAuthor = TreatmentOf(kind, settings.blackTitle, settings.superBlackTitle);
  if (kind == ListKind::kWhite || !words.Contained(title)) return byAuthor;
  return std::max({byAuthor, settings.blackTitle, TitleTreatment::kHideText});
}

}  // namespace quillet
