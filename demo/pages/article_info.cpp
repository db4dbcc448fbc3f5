#include "demo/pages/article_info.h"

#include "core/charset.h"
#include "demo/ansi_line.h"
#include "demo/big5_text.h"
#include "demo/pages/prompts.h"

namespace quillet::demo {
namespace {

constexpr int kBoxColumns = 78;
constexpr int kInnerColumns = kBoxColumns - 2 * 2;
// The box ends above the banner; with the money line it begins one row higher.
constexpr int kBoxEnd = kRows - 1;
constexpr int kBoardBoxRow = 14;

std::string Border(char16_t left, char16_t right) {
  std::u16string line(1, left);
  line.append(kInnerColumns / 2, u'─');
  return ToBig5(line + right);
}

// Columns are counted without the colour sequences of `text`.
std::string BoxLine(const std::string& text) {
  const int width = static_cast<int>(PlainText(text).size());
  return ToBig5(u"│") + text + "\x1b[m" +
         std::string(static_cast<std::size_t>(std::max(0, kInnerColumns - width)), ' ') + ToBig5(u"│");
}

// What an article is worth: longer ones and liked ones more.
int Worth(const Article& article) {
  return static_cast<int>(article.body.size()) / 10 * 5 + std::max(0, article.Score());
}

std::vector<std::string> Boxed(const std::vector<std::string>& texts) {
  std::vector<std::string> lines{Border(u'┌', u'┐')};
  for (const std::string& text : texts)
    lines.push_back(BoxLine(text));
  lines.push_back(Border(u'└', u'┘'));
  return lines;
}

}  // namespace

void OpenArticleInfo(PageHost& host, const std::string& board, const Article& article) {
  const House& house = host.TheHouse();
  // Clients read the code, the board and the title from their columns in this line.
  const std::string start = ToBig5(u" 文章代碼(AID): ") + "\x1b[1;37m#" + article.code + "\x1b[m (" + board +
                            ") [" + house.hostName + "] ";
  const int titleColumns = kInnerColumns - static_cast<int>(PlainText(start).size()) - 1;
  std::vector<std::string> texts{start + std::string(CutColumns(article.title, titleColumns))};
  texts.push_back(ToBig5(u" 文章網址: ") + "\x1b[1;37mhttps://" + house.webHost + "/bbs/" + board + "/" +
                  article.fileName + ".html");
  if (Worth(article) > 0)
    texts.push_back(ToBig5(u" 這一篇文章值 ") + std::to_string(Worth(article)) + ToBig5(u" 文藝幣"));
  const std::vector<std::string> box = Boxed(texts);
  host.Open(std::make_unique<AnyKeyPage>(host, kBoxEnd - static_cast<int>(box.size()), box,
                                         AnyKeyPage::Covers::kOwnRows));
}

void OpenBoardInfo(PageHost& host, const BoardInfo& board) {
  const std::string count = std::to_string(host.TheWorld().Articles(board.name).size());
  host.Open(std::make_unique<AnyKeyPage>(
      host, kBoardBoxRow,
      Boxed({ToBig5(u" 看板名稱: ") + board.name, ToBig5(u" 看板類別: ") + board.category,
             ToBig5(u" 中文敘述: ") + board.title, ToBig5(u" 板主名單: ") + board.moderators,
             ToBig5(u" 文章總數: ") + count,
             ToBig5(u" 推文間隔: ") + std::to_string(board.pushPauseSeconds) + ToBig5(u" 秒")}),
      AnyKeyPage::Covers::kOwnRows));
}

}  // namespace quillet::demo
