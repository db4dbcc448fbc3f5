#include "app/interaction/name_keys.h"

#include <array>

namespace quillet {
namespace {

constexpr std::array kKindNames = {u"", u"黑名單", u"超黑名單", u"白名單"};
constexpr std::array kColourNames = {u"", u"紅", u"綠", u"黃", u"深藍", u"紫", u"淺藍", u"白"};

// "黑名單 底線 旗子：紅、黃"
QString DescribeEntry(const ListEntry& entry) {
  QStringList parts;
  if (entry.kind != ListKind::kNone)
    parts << QString::fromUtf16(kKindNames[static_cast<std::size_t>(entry.kind)]);
  if (entry.underline) parts << u"底線"_qs;
  QStringList colours;
  for (int colour = 1; colour <= kFlagColours; ++colour)
    if (entry.HasColour(colour))
      colours << QString::fromUtf16(kColourNames[static_cast<std::size_t>(colour)]);
  if (!colours.isEmpty()) parts << u"旗子："_qs + colours.join(u"、");
  return parts.isEmpty() ? u"只有描述"_qs : parts.join(u"，");
}

std::optional<ListEntry> Find(const NameList& names, const std::u16string& id) {
  const ListEntry* const entry = names.Find(id);
  return entry == nullptr ? std::nullopt : std::optional(*entry);
}

}  // namespace

QString NameKeys::Press(const std::u16string& id, NameKey key, int colour) {
  if (id.empty()) return {};
  settings_.Refresh();
  NameList& names = settings_.Store().Names();
  const std::optional<ListEntry> before = Find(names, id);
  std::optional<ListEntry> after = ChangedEntry(before, key, colour, last_);
  if (after == before) return {};
  const QString name = QString::fromStdU16String(id);
  if (after) {
    after->changed = true;
    names.Set(id, *after);
    last_ = after;
  } else {
    names.Remove(id);
  }
  settings_.Store().SaveNames();
  settings_.Apply();
  return after ? u"%1：%2"_qs.arg(name, DescribeEntry(*after)) : u"%1 已移出名單"_qs.arg(name);
}

void NameKeys::NoteAdded(const std::u16string& id) {
  if (const std::optional<ListEntry> entry = Find(settings_.Store().Names(), id)) last_ = entry;
}

}  // namespace quillet
