#include "app/messages/session_messages.h"

#include <gtest/gtest.h>
#include <set>

#include "core/session_state.h"

namespace quillet {
namespace {

SessionFacts Closed(EndReason reason) {
  return {.state = SessionState::kClosed,
          .siteName = "telnet://bbs.example:23",
          .host = "bbs.example",
          .port = "23",
          .isRecording = false,
          .end = {reason, "No route to host"},
          .unsentBytes = 0};
}

TEST(SessionMessagesTest, EveryEndHasItsOwnWordsAndAWayOn) {
  std::set<QString> titles;
  for (int reason = static_cast<int>(EndReason::kUnknownScheme);
       reason <= static_cast<int>(EndReason::kHostKeyChanged); ++reason) {
    const PanelText text = DescribeSession(Closed(static_cast<EndReason>(reason)));
    EXPECT_TRUE(titles.insert(text.title).second) << reason << " " << text.title.toStdString();
    EXPECT_FALSE(text.title.isEmpty());
    ASSERT_FALSE(text.lines.isEmpty());
    EXPECT_FALSE(text.lines.join("").contains('{')) << text.lines.join("").toStdString();
    EXPECT_NE(text.onEnter, PanelAction::kNone);
    EXPECT_TRUE(text.hint.contains("Enter"));
  }
  EXPECT_TRUE(DescribeBrokenLogin(Closed(EndReason::kClosedByPeer)).title.contains(u"登入還沒完成"));
}

TEST(SessionMessagesTest, TheSystemsTextAndTheUnsentBytesAreTold) {
  SessionFacts facts = Closed(EndReason::kConnectFailed);
  facts.unsentBytes = 17;
  const QString told = DescribeSession(facts).lines.join('\n');
  EXPECT_TRUE(told.contains("No route to host"));
  EXPECT_TRUE(told.contains("bbs.example"));
  EXPECT_TRUE(told.contains(u"17 位元組尚未送出"));
  facts.unsentBytes = 0;
  EXPECT_FALSE(DescribeSession(facts).lines.join('\n').contains(u"尚未送出"));
  facts.isRecording = true;
  EXPECT_TRUE(DescribeSession(facts).title.contains(u"錄影"));
}

TEST(SessionMessagesTest, ALoginThatTheUserCancelledIsNotComplainedAbout) {
  EXPECT_TRUE(DescribeBrokenLogin(Closed(EndReason::kCancelled)).title.isEmpty());
  EXPECT_FALSE(DescribeBrokenLogin(Closed(EndReason::kClosedByPeer)).title.isEmpty());
}

TEST(SessionMessagesTest, AnOverlongAddressIsShortened) {
  SessionFacts facts = Closed(EndReason::kCancelled);
  facts.siteName = QString(5000, 'a');
  EXPECT_LE(DescribeSession(facts).lines.join("").size(), 100);
}

TEST(SessionMessagesTest, OnlyADamagedTableIsNamed) {
  const std::filesystem::path folder = std::filesystem::path("somewhere") / "Data";
  EXPECT_TRUE(DescribeTables({kCharsetFileSize, kCharsetFileSize}, folder).title.isEmpty());
  const QString damaged = DescribeTables({kCharsetFileSize, 7}, folder).lines.join('\n');
  EXPECT_FALSE(damaged.contains("b2u2.bin"));
  EXPECT_TRUE(damaged.contains("u2b2.bin") && damaged.contains("7"));
}

}  // namespace
}  // namespace quillet
