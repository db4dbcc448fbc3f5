#include "demo/pages/board_prompt.h"

#include <algorithm>

#include "demo/big5_text.h"
#include "demo/pages/article_list_page.h"
#include "demo/pages/prompts.h"

namespace quillet::demo {
namespace {

constexpr int kPromptRow = 1;
constexpr int kCandidateRow = 2;
constexpr int kNameColumns = 12;
constexpr std::u16string_view kPromptLabel = u"請輸入看板名稱(按空白鍵自動搜尋):";

std::size_t CommonStart(const std::string& a, const std::string& b) {
  std::size_t length = 0;
  while (length < a.size() && length < b.size() &&
         EqualsIgnoringCase(a.substr(length, 1), b.substr(length, 1)))
    ++length;
  return length;
}

}  // namespace

BoardPrompt::BoardPrompt(PageHost& host, Chosen chosen)
    : host_(host), chosen_(std::move(chosen)), field_(kNameColumns) {}

void BoardPrompt::Draw(Canvas& canvas) {
  for (int row = 0; row <= kCandidateRow; ++row)
    canvas.ClearRow(row);
  canvas.Put(0, 0, u"【 選擇看板 】", Attr(kWhite, kBlue, Weight::kBold));
  int col = 0;
  for (const std::string& name : candidates_)
    col = canvas.Put(kCandidateRow, col, name + " ", Attr(kYellow)) + 1;
  field_.Draw(canvas, kPromptRow, canvas.Put(kPromptRow, 0, kPromptLabel) + 1);
}

void BoardPrompt::OnKey(const Key& key) {
  if (key.Is(KeyKind::kEnter))
    Finish();
  else if (key.Is(KeyKind::kEscape) || key.IsControl('C'))
    host_.CloseTop();
  else if (key.Is(' '))
    Complete();
  else
    field_.OnKey(key);
}

void BoardPrompt::Complete() {
  candidates_.clear();
  for (const BoardInfo& board : host_.TheWorld().Boards())
    if (StartsWithIgnoringCase(board.name, field_.Text())) candidates_.push_back(board.name);
  if (candidates_.empty()) return;
  std::size_t common = candidates_[0].size();
  for (const std::string& name : candidates_)
    common = std::min(common, CommonStart(candidates_[0], name));
  field_.SetText(candidates_[0].substr(0, common));
}

void BoardPrompt::Finish() {
  const std::string name(Trimmed(field_.Text()));
  host_.CloseTop();
  if (name.empty()) return;
  if (const auto board = host_.TheWorld().FindBoard(name))
    chosen_(*board);
  else
    host_.Open(std::make_unique<MessagePage>(host_, u"沒有這個看板"));
}

void OpenBoardPrompt(PageHost& host) {
  host.Open(std::make_unique<BoardPrompt>(host, [&host](const BoardInfo& board) {
    host.CloseToMenu();
    host.Open(std::make_unique<ArticleListPage>(host, board));
  }));
}

}  // namespace quillet::demo
