#include "render/style/list_treatment.h"

#include <algorithm>

namespace quillet {
namespace {

ListKind KindOf(const StyleRules& rules, std::u16string_view id) {
  const ListEntry* const entry = id.empty() ? nullptr : rules.names->Find(id);
  return entry == nullptr ? ListKind::kNone : entry->kind;
}

int LevelOf(ListKind kind, int black, int superBlack) {
  switch (kind) {
    case ListKind::kBlack:
      return black;
    case ListKind::kSuperBlack:
      return superBlack;
    case ListKind::kNone:
    case ListKind::kWhite:
      break;
  }
  return 0;
}

template <typename Treatment>
Treatment AsTreatment(int level, Treatment most) {
  return static_cast<Treatment>(std::clamp(level, 0, static_cast<int>(most)));
}

}  // namespace

PushTreatment PushTreatmentOf(const StyleRules& rules, std::u16string_view id) {
  if (rules.reveal == Reveal::kHidden) return PushTreatment::kNone;
  const Settings& settings = *rules.settings;
  const int level = LevelOf(KindOf(rules, id), settings.blackPush, settings.superBlackPush);
  return AsTreatment(level, PushTreatment::kRemove);
}

TitleTreatment TitleTreatmentOf(const StyleRules& rules, const Keywords& words, std::u16string_view author,
                                std::u16string_view title) {
  if (rules.reveal == Reveal::kHidden) return TitleTreatment::kNone;
  const Settings& settings = *rules.settings;
  const ListKind kind = KindOf(rules, author);
  int level = LevelOf(kind, settings.blackTitle, settings.superBlackTitle);
  if (kind != ListKind::kWhite && words.Contained(title)) level = std::max({level, settings.blackTitle, 1});
  return AsTreatment(level, TitleTreatment::kMaskId);
}

}  // namespace quillet
