#include "render/style/article_parts.h"

#include <algorithm>
#include <string_view>

#include "core/charset.h"

namespace quillet {
namespace {

constexpr std::u16string_view kQuotation = u"※ 引述";
constexpr std::string_view kSignatureRule = "--";

std::string_view TextOfLine(const ArticleLine& line) {
  const std::string_view text = BytesOf(line.text);
  const std::size_t last = text.find_last_not_of(std::string_view(" \0", 2));
  return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

bool IsQuoted(const ArticleLine& line) {
  static const std::string kQuoted = ToBig5(kQuotation);
  const std::string_view text = TextOfLine(line);
  return text.starts_with(':') || text.starts_with('>') || text.starts_with(kQuoted);
}

// Of a line that the origin line has no say in.
LinePart PartOf(const ArticleLine& line) {
  if (line.push) return LinePart::kPush;
  return IsQuoted(line) ? LinePart::kQuote : LinePart::kText;
}

}  // namespace

std::vector<LinePart> PartsOf(const ArticleLines& lines) {
  std::vector<LinePart> parts(static_cast<std::size_t>(lines.Count()));
  int rule = -1;
  int origin = -1;
  int ruleOfOrigin = -1;
  for (int at = 0; at < lines.Count(); ++at) {
    const ArticleLine& line = lines.At(at);
    parts[static_cast<std::size_t>(at)] = PartOf(line);
    if (line.note == NoteLine::kOrigin) {
      origin = at;
      ruleOfOrigin = rule;
    } else if (TextOfLine(line) == kSignatureRule) {
      rule = at;
    }
  }
  if (ruleOfOrigin >= 0)
    std::fill(parts.begin() + ruleOfOrigin + 1, parts.begin() + origin, LinePart::kSignature);
  return parts;
}

PictureSize PictureSizeOf(LinePart part, const Settings& settings) {
  switch (part) {
    case LinePart::kQuote:
      return settings.quotePic;
    case LinePart::kText:
      return settings.contentPic;
    case LinePart::kSignature:
      return settings.signPic;
    case LinePart::kPush:
      return settings.pushPic;
  }
  return settings.contentPic;
}

}  // namespace quillet
