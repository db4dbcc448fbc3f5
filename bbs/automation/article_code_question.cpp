#include "bbs/automation/article_code_question.h"

#include "bbs/page_facts.h"

namespace quillet {
namespace {

using namespace std::chrono_literals;

constexpr std::string_view kInfoKey = "Q";
constexpr std::chrono::milliseconds kReaction = 3s;

}  // namespace

std::u16string AskArticleCode(ScreenWaits& waits) {
  const PageTests& pages = waits.Pages();
  const auto reader = [&](const ScreenSnapshot& screen) {
    return pages.IsReader(screen, PageTests::ReaderForm::kStrict);
  };
  if (!waits.WaitAtMost(kReaction, reader)) return {};

  waits.Send(kInfoKey);
  const auto box = [&](const ScreenSnapshot& screen) { return pages.IsAnyKeyBanner(screen); };
  if (!waits.WaitAtMost(kReaction, box)) return {};
  const std::u16string code = PageFacts::ParseInfoBoxAid(waits.Seen());
  waits.Send(ScreenWaits::kDismissKey);
  return waits.WaitAtMost(kReaction, reader) ? code : std::u16string();
}

}  // namespace quillet
