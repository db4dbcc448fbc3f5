#include "demo/pages/animation_page.h"

#include "core/charset.h"
#include "demo/ansi_line.h"
#include "demo/content_loader.h"

namespace quillet::demo {
namespace {

using namespace std::chrono_literals;

constexpr auto kFrameTime = 400ms;
constexpr std::u16string_view kQuestion = u" ★ 這份文件是可播放的文字動畫，要開始播放嗎？ [Y/n]";
constexpr std::u16string_view kPlaying = u" >>> 動畫播放中... 可按 q, Ctrl-C 或其它任意鍵停止 ";

}  // namespace

bool IsFrameSeparator(const std::string& line) {
  return line == kFrameSeparator;
}

AnimationPage::AnimationPage(PageHost& host, const std::vector<std::string>& body, std::function<void()> read)
    : host_(host), read_(std::move(read)), frames_(1) {
  for (const std::string& line : body) {
    if (IsFrameSeparator(line))
      frames_.emplace_back();
    else
      frames_.back().push_back(line);
  }
}

void AnimationPage::Draw(Canvas& canvas) {
  int row = 0;
  for (const std::string& line : frames_[frame_]) {
    if (row >= kBottomRow) break;
    canvas.Put(row++, 0, CellsOf(line));
  }
  if (nextFrame_) {
    canvas.Fill(kBottomRow, 0, kCols - 1, Attr(kBlack, kWhite));
    canvas.Put(kBottomRow, 0, kPlaying, Attr(kBlack, kWhite));
    canvas.MoveCursor(kBottomRow, kCols - 1);
  } else {
    canvas.MoveCursor(kBottomRow,
                      canvas.Put(kBottomRow, 0, kQuestion, Attr(kYellow, kBlack, Weight::kBold)) + 1);
  }
}

void AnimationPage::OnKey(const Key& key) {
  if (nextFrame_ || key.Is('n') || key.Is('N'))
    Finish();
  else if (key.Is('q') || key.Is(KeyKind::kLeft))
    host_.CloseTop();
  else if (key.Is('y') || key.Is('Y') || key.Is(KeyKind::kEnter))
    nextFrame_ = Mailbox::Clock::now() + kFrameTime;
}

void AnimationPage::OnTime() {
  if (frame_ + 1 == frames_.size()) {
    Finish();
    return;
  }
  ++frame_;
  nextFrame_ = Mailbox::Clock::now() + kFrameTime;
}

void AnimationPage::Finish() {
  host_.CloseTop();
  read_();
}

}  // namespace quillet::demo
