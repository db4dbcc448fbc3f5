#include "demo/pages/editor_page.h"

#include <algorithm>
#include <utility>

#include "core/charset.h"
#include "demo/big5_text.h"
#include "demo/pages/prompts.h"

namespace quillet::demo {
namespace {

constexpr std::size_t kRowsShown = kBottomRow;
constexpr std::size_t kLineColumns = 78;
constexpr std::size_t kMostLines = 2000;
// Of a line with colour sequences, which take no room where the article is read.
constexpr std::size_t kColouredBytes = 500;

std::size_t MostBytes(const std::string& line) {
  return line.find('\x1B') == line.npos ? kLineColumns : kColouredBytes;
}

// ESC shows as a star.
std::string AsShown(std::string line) {
  std::replace(line.begin(), line.end(), '\x1B', '*');
  return line;
}

}  // namespace

EditorPage::EditorPage(PageHost& host, std::vector<std::string> lines, Saved saved)
    : host_(host), lines_(std::move(lines)), saved_(std::move(saved)) {
  if (lines_.empty()) lines_.emplace_back();
  for (std::string& line : lines_)
    line = std::string(CutColumns(line, kLineColumns));
}

void EditorPage::Draw(Canvas& canvas) {
  if (line_ < top_) top_ = line_;
  if (line_ >= top_ + kRowsShown) top_ = line_ - kRowsShown + 1;
  for (std::size_t row = 0; row < kRowsShown; ++row) {
    if (top_ + row < lines_.size())
      canvas.Put(static_cast<int>(row), 0, AsShown(lines_[top_ + row]));
    else
      canvas.Put(static_cast<int>(row), 0, u"~");
  }
  constexpr std::uint8_t kWords = Attr(kBlack, kWhite);
  canvas.Fill(kBottomRow, 0, kCols - 1, kWords);
  int col = canvas.Put(kBottomRow, 0, u" 編輯文章 ", Attr(kWhite, kCyan, Weight::kBold));
  col = canvas.Put(kBottomRow, col + 1, u"(^X)", Attr(kRed, kWhite));
  col = canvas.Put(kBottomRow, col, u"存檔或放棄", kWords);
  col = canvas.Put(kBottomRow, col + 1, u"(^Y)", Attr(kRed, kWhite));
  canvas.Put(kBottomRow, col, u"刪除整行", kWords);
  const std::string position = ToBig5(u"║插入│") + PadLeft(std::to_string(line_ + 1), 4) + ":" +
                               PadLeft(std::to_string(at_ + 1), 2) + " ";
  canvas.Put(kBottomRow, kCols - 1 - static_cast<int>(position.size()), position, kWords);
  canvas.MoveCursor(static_cast<int>(line_ - top_), static_cast<int>(at_));
}

void EditorPage::OnKey(const Key& key) {
  // Clients that count columns send an arrow for each half of a wide character.
  const bool isSecondHalf = std::exchange(passed_, std::nullopt) == key.kind && key.atOnce;
  if (isSecondHalf || Move(key)) return;
  if (key.Is(KeyKind::kText))
    Insert(key.text);
  else if (key.Is(KeyKind::kEnter))
    Break();
  else if (key.Is(KeyKind::kBackspace) || key.Is(KeyKind::kDelete))
    Erase(key);
  else if (key.IsControl('U'))
    Insert("\x1B");
  else if (key.IsControl('X') || key.IsControl('Q'))
    AskWhatNow();
  else if (key.IsControl('Y')) {
    Line().clear();
    at_ = 0;
    JoinWithNext();
  }
}

void EditorPage::Insert(const std::string& text) {
  const std::size_t most = std::max(MostBytes(Line()), MostBytes(text));
  if (Line().size() + text.size() > most) {
    if (lines_.size() >= kMostLines) return;
    // What no longer fits goes to the next line, the cursor with it when it stands at the end.
    const std::size_t cut = CutColumns(Line(), static_cast<int>(most - text.size())).size();
    std::string rest = Line().substr(cut);
    Line().resize(cut);
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(line_) + 1, std::move(rest));
    if (at_ >= cut) {
      at_ -= cut;
      ++line_;
    }
  }
  Line().insert(at_, text);
  at_ += text.size();
}

void EditorPage::Break() {
  if (lines_.size() >= kMostLines) return;
  std::string rest = Line().substr(at_);
  Line().resize(at_);
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(line_) + 1, std::move(rest));
  ++line_;
  at_ = 0;
}

// As much of the next line as finds room.
void EditorPage::JoinWithNext() {
  if (line_ + 1 >= lines_.size()) return;
  std::string& next = lines_[line_ + 1];
  const std::size_t most = std::max(MostBytes(Line()), MostBytes(next));
  const std::size_t room = most - std::min(most, Line().size());
  const std::string_view fitting = CutColumns(next, static_cast<int>(room));
  Line() += fitting;
  next.erase(0, fitting.size());
  if (next.empty()) lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(line_) + 1);
}

void EditorPage::Erase(const Key& key) {
  if (key.Is(KeyKind::kBackspace)) {
    if (at_ == 0) {
      if (line_ == 0) return;
      --line_;
      at_ = Line().size();
      JoinWithNext();
      return;
    }
    const std::size_t start = PreviousCharacter(Line(), at_);
    Line().erase(start, at_ - start);
    at_ = start;
  } else if (at_ < Line().size()) {
    Line().erase(at_, CharacterLength(Line(), at_));
  } else {
    JoinWithNext();
  }
}

bool EditorPage::Move(const Key& key) {
  switch (key.kind) {
    case KeyKind::kUp:
      MoveToLine(line_ == 0 ? 0 : line_ - 1);
      return true;
    case KeyKind::kDown:
      MoveToLine(line_ + 1);
      return true;
    case KeyKind::kPageUp:
      MoveToLine(line_ < kRowsShown ? 0 : line_ - kRowsShown);
      return true;
    case KeyKind::kPageDown:
      MoveToLine(line_ + kRowsShown);
      return true;
    case KeyKind::kHome:
      at_ = 0;
      return true;
    case KeyKind::kEnd:
      at_ = Line().size();
      return true;
    case KeyKind::kLeft:
      if (at_ > 0) {
        const std::size_t end = std::exchange(at_, PreviousCharacter(Line(), at_));
        if (end - at_ > 1) passed_ = key.kind;
      } else if (line_ > 0) {
        --line_;
        at_ = Line().size();
      }
      return true;
    case KeyKind::kRight:
      if (at_ < Line().size()) {
        const std::size_t length = CharacterLength(Line(), at_);
        if (length > 1) passed_ = key.kind;
        at_ += length;
      } else if (line_ + 1 < lines_.size()) {
        ++line_;
        at_ = 0;
      }
      return true;
    default:
      return false;
  }
}

void EditorPage::MoveToLine(std::size_t line) {
  line_ = std::min(line, lines_.size() - 1);
  at_ = CutColumns(Line(), static_cast<int>(at_)).size();
}

void EditorPage::AskWhatNow() {
  host_.Open(std::make_unique<LinePrompt>(
      host_, LinePrompt::Place{0, u"檔案處理：[S]儲存 (A)放棄 (E)繼續編輯? [S] ", 2, {}},
      [this](const std::string& answer) { Leave(answer); }));
}

void EditorPage::Leave(const std::string& answer) {
  if (answer == "e" || answer == "E") return;
  host_.CloseTop();
  if (answer == "a" || answer == "A")
    host_.Open(std::make_unique<MessagePage>(host_, u"文章沒有送出"));
  else
    saved_(lines_);
}

}  // namespace quillet::demo
