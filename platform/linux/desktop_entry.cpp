#include "platform/linux/desktop_entry.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "platform/link_handler.h"
#include "platform/utf8.h"

namespace quillet {
namespace {

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kWhite = " \t\r";
  const std::size_t first = text.find_first_not_of(kWhite);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kWhite) - first + 1);
}

// The value of a key in a group of such a file, as it is written; nothing when it has none.
std::optional<std::string_view> ValueIn(std::string_view file, std::string_view group, std::string_view key) {
  bool inGroup = false;
  while (!file.empty()) {
    const std::size_t end = std::min(file.find('\n'), file.size());
    const std::string_view line = Trimmed(file.substr(0, end));
    file.remove_prefix(std::min(end + 1, file.size()));
    if (line.starts_with('[')) {
      inGroup = line.size() > 2 && line.ends_with(']') && line.substr(1, line.size() - 2) == group;
    } else if (inGroup && !line.starts_with('#')) {
      const std::size_t equals = line.find('=');
      if (equals != line.npos && Trimmed(line.substr(0, equals)) == key)
        return Trimmed(line.substr(equals + 1));
    }
  }
  return std::nullopt;
}

std::optional<std::string_view> OfEntry(std::string_view entry, std::string_view key) {
  return ValueIn(entry, "Desktop Entry", key);
}

// What every text of such a file may hold, before a command's own quoting.
std::string Unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      plain += text[i];
      continue;
    }
    switch (text[++i]) {
      case 's':
        plain += ' ';
        break;
      case 'n':
        plain += '\n';
        break;
      case 't':
        plain += '\t';
        break;
      case 'r':
        plain += '\r';
        break;
      case '\\':
        plain += '\\';
        break;
      default:
        plain += '\\';
        plain += text[i];
    }
  }
  return plain;
}

// The quoted text that `rest` begins with, which is taken; nothing when its end is missing.
std::optional<std::string> TakeQuoted(std::string_view& rest) {
  std::string plain;
  for (std::size_t i = 1; i < rest.size(); ++i) {
    if (rest[i] == '"') {
      rest.remove_prefix(i + 1);
      return plain;
    }
    if (rest[i] == '\\' && i + 1 < rest.size()) ++i;
    plain += rest[i];
  }
  return std::nullopt;
}

constexpr std::string_view kBetween = " \t\n";

struct Word {
  std::string text;
  bool isQuoted = false;  // counts then even if it is empty
};

// Nothing when a quote does not end.
std::optional<std::vector<Word>> WordsOf(std::string_view command) {
  std::vector<Word> words;
  for (;;) {
    command.remove_prefix(std::min(command.find_first_not_of(kBetween), command.size()));
    if (command.empty()) return words;
    if (command.starts_with('"')) {
      auto quoted = TakeQuoted(command);
      if (!quoted) return std::nullopt;
      words.push_back({*std::move(quoted), true});
    } else {
      const std::size_t end = std::min(command.find_first_of(kBetween), command.size());
      words.push_back({std::string(command.substr(0, end)), false});
      command.remove_prefix(end);
    }
  }
}

constexpr std::string_view kLinkCodes = "uU";

// With the link for the codes that mean one. The others mean files, or the entry's icon, words and
// file, which no browser needs, or are out of use.
std::string Expanded(const std::string& word, const std::string& link, bool& takesLinks) {
  std::string text;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (word[i] != '%' || i + 1 == word.size()) {
      text += word[i];
      continue;
    }
    const char code = word[++i];
    if (code == '%') text += '%';
    if (kLinkCodes.find(code) == kLinkCodes.npos) continue;
    text += link;
    takesLinks = true;
  }
  return text;
}

bool IsAsciiLetterOrDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// Only where it must be: not every reader of entries knows quotes.
std::string Quoted(const std::string& text) {
  const auto isPlain = [](char c) {
    return IsAsciiLetterOrDigit(c) || std::string_view("/._+-").find(c) != std::string_view::npos;
  };
  if (std::all_of(text.begin(), text.end(), isPlain)) return text;
  // A per-cent sign would be a code, a backslash is read twice.
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '`' || c == '$') quoted += "\\\\";
    if (c == '%') quoted += '%';
    quoted += c == '\\' ? std::string("\\\\\\\\") : std::string(1, c);
  }
  return quoted + '"';
}

// The marker as an argument.
std::string MarkerWord() {
  return std::string(Trimmed(Utf8FromUtf16(kLinkMarker)));
}

}  // namespace

std::vector<std::string> CommandForLink(std::string_view entry, const std::string& link) {
  for (const std::string_view key : {"Hidden", "Terminal"})
    if (OfEntry(entry, key) == "true") return {};
  const auto words = WordsOf(Unescaped(OfEntry(entry, "Exec").value_or("")));
  if (!words || words->empty()) return {};
  std::vector<std::string> command;
  bool takesLinks = false;
  for (const Word& word : *words) {
    std::string text = Expanded(word.text, link, takesLinks);
    if (!text.empty() || word.isQuoted) command.push_back(std::move(text));
  }
  return takesLinks && !command.empty() && !command.front().empty() ? command : std::vector<std::string>();
}

std::vector<std::string> EntriesFor(std::string_view type, std::string_view cache) {
  std::vector<std::string> names;
  std::string_view rest = ValueIn(cache, "MIME Cache", type).value_or("");
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(';'), rest.size());
    if (end > 0) names.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return names;
}

std::string LinkHandlerEntry(const std::string& program) {
  return "[Desktop Entry]\nType=Application\nName=Quillet\nComment=A good Qor browser\nExec=" +
         Quoted(program) + ' ' + MarkerWord() +
         " %u\nIcon=quillet\nTerminal=false\nNoDisplay=true\nCategories=Network;WebBrowser;\n"
         "MimeType=x-scheme-handler/http;x-scheme-handler/https;\n";
}

bool IsLinkHandlerOfOurs(std::string_view entry) {
  const std::vector<std::string> command = CommandForLink(entry, "");
  return command.size() >= 2 && command[1] == MarkerWord();
}

}  // namespace quillet
