#include "bbs/article_box.h"

#include <algorithm>
#include <string_view>

#include "bbs/article_code.h"
#include "bbs/screen_fields.h"
#include "core/ascii.h"

namespace quillet {
namespace {

constexpr int kCodeMarkCol = 18;
constexpr int kCodeCol = 19;
constexpr int kBoardCol = 29;
constexpr int kBoardColumns = 12;
constexpr int kTitleSearchCol = 37;
constexpr int kTitleLastCol = 74;

// The row of the box with the article's code.
std::optional<int> BoxRow(const ScreenSnapshot& screen) {
  for (const int row : {19, 20})
    if (IsCharacter(screen, row, kCodeMarkCol, '#')) return row;
  return std::nullopt;
}

CellRange CodeIn(const ScreenSnapshot& screen, int row) {
  const std::string_view code = screen.RowText(row).substr(kCodeCol, kAidLength);
  const bool whole = std::all_of(code.begin(), code.end(), [](char c) {
    return kAidAlphabet.find(static_cast<unsigned char>(c)) != kAidAlphabet.npos;
  });
  return whole ? CellRange{kCodeCol, kCodeCol + static_cast<int>(kAidLength)} : CellRange{};
}

CellRange BoardIn(const ScreenSnapshot& screen, int row) {
  const std::optional<int> end = FindCharacter(screen, row, kBoardCol, kBoardCol + kBoardColumns, ')');
  return end ? CellRange{kBoardCol, *end} : CellRange{};
}

CellRange TitleIn(const ScreenSnapshot& screen, int row) {
  const std::optional<int> bracket = FindCharacter(screen, row, kTitleSearchCol, kCols - 1, ']');
  if (!bracket) return {};
  // The BBS writes a question mark there for half a character that it had to cut.
  const int last = IsCharacter(screen, row, kTitleLastCol, '?') ? kTitleLastCol - 1 : kTitleLastCol;
  return {*bracket + 2, last + 1};
}

// Whether `text` begins with the ASCII `prefix`, which is in lower case.
bool StartsWithAnyCase(std::u16string_view text, std::u16string_view prefix) {
  return text.size() >= prefix.size() &&
         std::equal(prefix.begin(), prefix.end(), text.begin(),
                    [](char16_t wanted, char16_t c) { return AsciiLower(c) == wanted; });
}

}  // namespace

std::optional<ArticleBox> FindArticleBox(const ScreenSnapshot& screen) {
  const std::optional<int> row = BoxRow(screen);
  if (!row) return std::nullopt;
  return ArticleBox{.row = *row,
                    .code = CodeIn(screen, *row),
                    .board = BoardIn(screen, *row),
                    .title = TitleIn(screen, *row)};
}

std::u16string ListTitle(std::u16string_view title) {
  struct Mark {
    std::u16string_view typed;
    std::u16string_view listed;
  };
  for (const Mark& mark : {Mark{u"re:", u"R: "}, Mark{u"fw:", u"轉 "}}) {
    if (!StartsWithAnyCase(title, mark.typed)) continue;
    title.remove_prefix(mark.typed.size());
    if (title.starts_with(u' ')) title.remove_prefix(1);
    return std::u16string(mark.listed).append(title);
  }
  return std::u16string(u"□ ").append(title);
}

}  // namespace quillet
