#include "demo/pages/article_text.h"

#include <algorithm>

#include "core/charset.h"
#include "demo/ansi_line.h"
#include "demo/article_code.h"
#include "demo/big5_text.h"

namespace quillet::demo {
namespace {

constexpr int kTextColumns = kCols - 1;
constexpr int kBoardLabelCol = 56;  // where "  看板  " begins: the blank before the label box
constexpr int kRuleCharacters = 39;
constexpr int kPushLineColumns = 78;
constexpr int kAddressColumns = 15;
constexpr int kTimeColumns = 11;
// "推 ", ": ", and before address and time a blank each
constexpr int kPushPunctuation = 3 + 2 + 1 + 1;
constexpr int kUserIdColumns = 12;

constexpr std::uint8_t kHeaderLabel = Attr(kBlue, kWhite);
constexpr std::uint8_t kValue = Attr(kWhite, kBlue);

using Cells = std::vector<Cell>;

void Append(Cells& cells, std::string_view big5, std::uint8_t attr) {
  for (const char byte : big5)
    cells.push_back({static_cast<std::uint8_t>(byte), attr});
}

Cells HeaderRow(std::u16string_view label, std::string_view value) {
  Cells cells;
  Append(cells, ToBig5(label), kHeaderLabel);
  Append(cells, " " + PadRight(value, kTextColumns - static_cast<int>(cells.size()) - 1), kValue);
  return cells;
}

Cells AuthorRow(const Article& article, const std::string& board) {
  Cells cells = HeaderRow(u" 作者 ", article.authorId + " (" + article.nickname + ")");
  cells.resize(kBoardLabelCol);
  // A nickname that reaches the label is cut before it, never through a character.
  std::string left;
  for (const Cell& cell : cells)
    left += static_cast<char>(cell.byte);
  const std::string fitting = PadRight(left, kBoardLabelCol);
  for (std::size_t i = 0; i < cells.size(); ++i)
    cells[i].byte = static_cast<std::uint8_t>(fitting[i]);
  Append(cells, " ", kValue);
  Append(cells, ToBig5(u" 看板 "), kHeaderLabel);
  Append(cells, " " + PadRight(board, kTextColumns - static_cast<int>(cells.size()) - 1), kValue);
  return cells;
}

void AppendHeader(ReaderText& text, const Article& article, const std::string& board) {
  text.rows.push_back(AuthorRow(article, board));
  text.rows.push_back(HeaderRow(u" 標題 ", article.title));
  text.rows.push_back(HeaderRow(u" 時間 ", HeaderTime(article.seconds)));
  text.ruleRow = static_cast<int>(text.rows.size());
  Cells rule;
  for (int i = 0; i < kRuleCharacters; ++i)
    Append(rule, ToBig5(u"─"), Attr(kCyan));
  text.rows.push_back(std::move(rule));
}

void AppendOrigin(ReaderText& text, const Article& article, const std::string& board, const House& house) {
  const bool signedAlready = std::find(article.body.begin(), article.body.end(), "--") != article.body.end();
  if (!signedAlready) {
    text.rows.emplace_back();
    text.rows.push_back(CellsOf("--"));
  }
  std::string origin = ToBig5(u"※ 發信站: 奧拉拉文藝坊(") + house.hostName + ")";
  if (!article.address.empty()) origin += ToBig5(u", 來自: ") + article.address;
  text.rows.push_back(CellsOf(origin, Attr(kGreen)));
  const std::string url = "https://" + house.webHost + "/bbs/" + board + "/" + article.fileName + ".html";
  text.rows.push_back(CellsOf(ToBig5(u"※ 文章網址: ") + url, Attr(kGreen)));
}

Cells PushRow(const Push& push, PushKind kind, std::string_view words) {
  Cells cells;
  Append(cells, PushMark(kind),
         kind == PushKind::kGood ? Attr(kWhite, kBlack, Weight::kBold) : Attr(kRed, kBlack, Weight::kBold));
  Append(cells, " ", kAttrBlank);
  Append(cells, push.userId, Attr(kYellow, kBlack, Weight::kBold));
  const int columns = PushColumns(push.userId);
  Append(cells, ": " + PadRight(words, columns), Attr(kYellow));
  Append(cells, " " + PadLeft(push.address, kAddressColumns) + " " + PadRight(push.time, kTimeColumns),
         kAttrBlank);
  return cells;
}

// A text too long for one line goes on in notes of the same user, as people do it by hand.
void AppendPush(ReaderText& text, const Push& push) {
  std::string_view rest = push.text;
  PushKind kind = push.kind;
  do {
    const std::string_view words = CutColumns(rest, PushColumns(push.userId));
    text.rows.push_back(PushRow(push, kind, words));
    rest = rest.substr(words.size());
    kind = PushKind::kNote;
  } while (!rest.empty());
}

}  // namespace

int PushColumns(const std::string& userId) {
  const int id = std::min(static_cast<int>(userId.size()), kUserIdColumns);
  return kPushLineColumns - kPushPunctuation - id - kAddressColumns - kTimeColumns;
}

std::string PushMark(PushKind kind) {
  return ToBig5(kind == PushKind::kGood ? u"推" : kind == PushKind::kBad ? u"噓" : u"→");
}

ReaderText LayOutArticle(const Article& article, const std::string& board, const House& house) {
  ReaderText text;
  AppendHeader(text, article, board);
  text.rows.emplace_back();
  for (const std::string& line : article.body)
    text.rows.push_back(CellsOf(line, kAttrBlank, kTextColumns));
  AppendOrigin(text, article, board, house);
  for (const Push& push : article.pushes)
    AppendPush(text, push);
  return text;
}

ReaderText LayOutText(const std::vector<std::string>& lines) {
  ReaderText text;
  for (const std::string& line : lines)
    text.rows.push_back(CellsOf(line, kAttrBlank, kTextColumns));
  if (text.rows.empty()) text.rows.emplace_back();
  return text;
}

}  // namespace quillet::demo
