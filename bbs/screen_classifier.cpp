#include "bbs/screen_classifier.h"

#include <memory>

#include "core/notify_target.h"

namespace quillet {
namespace {

constexpr int kBlueGround = 4;
constexpr int kRedGround = 1;

std::uint32_t If(bool holds, PageFlags flag) {
  return holds ? std::uint32_t{flag} : 0;
}

std::uint32_t ReaderFlags(const PageTests& pages, const ScreenSnapshot& screen) {
  return If(pages.IsReaderTop(screen), PF_READ_TOP) |
         If(BackgroundOf(screen.AttrAt(kBottomRow, 2)) == kBlueGround, PF_READ_END) |
         If(BackgroundOf(screen.AttrAt(kBottomRow, 60)) == kRedGround, PF_READ_FOOTER_RED);
}

std::uint32_t OtherPageFlags(const PageTests& pages, const ScreenSnapshot& screen) {
  return If(pages.IsPushLine(screen), PF_PUSH_LINE) | If(pages.IsPushConfirm(screen), PF_PUSH_CONFIRM) |
         If(pages.IsListCursor(screen), PF_LIST_CURSOR) | If(pages.IsMailMenu(screen), PF_MAIL_MENU) |
         If(pages.IsArticleList(screen), PF_ARTICLE_LIST) |
         If(pages.IsArticleListStrict(screen), PF_ARTICLE_LIST_CURSOR) |
         If(pages.IsAnimationPrompt(screen), PF_ANIMATION_PROMPT) | If(pages.IsPause(screen), PF_PAUSE) |
         If(pages.IsInputField(screen), PF_INPUT_FIELD) | If(pages.IsEditor(screen), PF_EDITOR) |
         If(pages.IsAnyKeyBanner(screen), PF_ANYKEY_BANNER) |
         If(pages.IsDisputedNotice(screen), PF_DISPUTED_NOTICE);
}

}  // namespace

bool ClassifyScreen(const PageTests& pages, ScreenSnapshot& screen, ScreenReason reason) {
  if (screen.frozen != 0 && reason != ScreenReason::kDisconnected) return false;
  if (pages.IsStarLine(screen)) {
    // The message covers only the bottom rows: what the page was before, it still is.
    screen.pageFlags |= PF_STAR_LINE;
    screen.msgCount = 1;
    return true;
  }
  screen.msgCount = 0;
  const bool reading = pages.IsReader(screen, PageTests::ReaderForm::kPlain);
  std::uint32_t flags = reading ? PF_READING | ReaderFlags(pages, screen) : OtherPageFlags(pages, screen);
  if (screen.sessionState == SessionState::kConnected && screen.isBbsSite != 0)
    flags |= If((flags & (PF_READING | PF_LIST_CURSOR)) != 0, PF_BROWSABLE);
  screen.pageFlags = flags;
  return true;
}

void PostSnapshot(const ScreenSnapshot& screen, ScreenReason reason) {
  if (screen.notifyWindow == nullptr) return;
  auto copy = std::make_unique<ScreenSnapshot>(screen);
  if (screen.notifyWindow->Post(kMessageScreen, static_cast<std::uintptr_t>(reason),
                                reinterpret_cast<std::uintptr_t>(copy.get())))
    static_cast<void>(copy.release());  // the receiver owns it now
}

bool ScreenClassifier::IsReader(const ScreenSnapshot& screen) const {
  return pages_.IsReader(screen, PageTests::ReaderForm::kPlain);
}

bool ScreenClassifier::IsReaderSettled(const ScreenSnapshot& screen) const {
  return pages_.IsReader(screen, PageTests::ReaderForm::kStrict);
}

bool ScreenClassifier::IsArticleList(const ScreenSnapshot& screen) const {
  return pages_.IsArticleList(screen);
}

bool ScreenClassifier::IsStarLine(const ScreenSnapshot& screen) const {
  return pages_.IsStarLine(screen);
}

bool ScreenClassifier::IsListCursor(const ScreenSnapshot& screen) const {
  return pages_.IsListCursor(screen);
}

bool ScreenClassifier::IsInputField(const ScreenSnapshot& screen) const {
  return pages_.IsInputField(screen);
}

void ScreenClassifier::ProcessScreen(ScreenSnapshot& screen, ScreenReason reason) {
  if (ClassifyScreen(pages_, screen, reason)) PostSnapshot(screen, reason);
}

}  // namespace quillet
