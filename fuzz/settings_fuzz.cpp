// Any bytes as a settings file, and any texts as settings. What is read, and what is set, must come back from
// the file that is written; the typed fields stay in range, and nothing of older versions is left.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "settings/files/text_lines.h"
#include "settings/old_settings.h"
#include "settings/setting_table.h"
#include "settings/settings_map.h"
#include "settings/settings_store.h"

namespace quillet {
namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void RequireComesBack(const SettingsMap& map) {
  for (const std::string_view lineEnd : {"\n", "\r\n"}) {
    const TextLines written = ReadLines(EncodeText(map.AsText(), lineEnd));
    Require(written.firstBadLine == 0);
    SettingsMap back;
    back.ReadLines(written.lines);
    Require(back == map);
  }
}

void RequireInRange(const Settings& fields) {
  for (const SettingRow& row : SettingTable())
    if (row.kind != SettingKind::kText)
      Require(NumberOf(row, fields) >= row.least && NumberOf(row, fields) <= row.most);
}

void RunAsFile(std::string_view bytes) {
  const TextLines read = ReadLines(bytes);
  for (const std::u16string& line : read.lines)
    Require(!line.empty() && line.size() <= kLongestLine && Trimmed(line) == line);
  SettingsMap map = DefaultSettings("bbs.example");
  map.ReadLines(read.lines);
  RequireComesBack(map);

  NameList names;
  ConvertOldLists(map, names);
  DropOldLists(map);
  ConvertOldSite(map);
  ConvertOldKeys(map);
  RequireComesBack(map);
  Settings fields;
  ApplySettings(map, fields);
  RequireInRange(fields);
}

// Three texts at a time as section, key and value, each ended by the unit 0xFFFF or the end.
void RunAsTexts(std::string_view bytes) {
  std::u16string texts[3];
  std::size_t at = 0;
  SettingsMap map;
  const auto use = [&] {
    map.Set(texts[0], texts[1], texts[2]);
    std::fill(std::begin(texts), std::end(texts), std::u16string());
    at = 0;
  };
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const int low = static_cast<unsigned char>(bytes[i]), high = static_cast<unsigned char>(bytes[i + 1]);
    const auto unit = static_cast<char16_t>(low | high << 8);
    if (unit != 0xFFFF)
      texts[at].push_back(unit);
    else if (++at == std::size(texts))
      use();
  }
  use();
  RequireComesBack(map);
}

}  // namespace
}  // namespace quillet

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string bytes(data + 1, data + size);
  if (data[0] == 0xFF)
    quillet::RunAsTexts(bytes);
  else
    quillet::RunAsFile(bytes);
  return 0;
}
