#include "input/commands/commands.h"

#include <gtest/gtest.h>
#include <map>
#include <set>

#include "core/key_sequence.h"
#include "input/commands/command_help.h"
#include "input/page_commands.h"

namespace quillet {
namespace {

using enum Condition;

// A connected user in an article of a board that is shown whole.
constexpr Conditions kReading{kConnected, kHasLine, kBegun, kArticle, kLocalArticle, kHasPushes};

TEST(CommandsTest, WhatCannotActIsRefusedAndSaysWhy) {
  struct Row {
    Command command;
    Refusal offLine;  // before any connection
    Refusal onLine;   // in a list
    Refusal reading;
    Refusal busy;  // the same while an automation works
  };
  using enum Refusal;
  constexpr Row kExpected[] = {
      {Command::kConnect, kNone, kNone, kNone, kNone},
      {Command::kCopy, kNone, kNone, kNone, kNone},
      {Command::kReconnect, kNotConnected, kNone, kNone, kNone},
      {Command::kDisconnect, kNotConnected, kNone, kNone, kNone},
      {Command::kPaste, kNotConnected, kNone, kNone, kNone},
      {Command::kSearchFirst, kNotNow, kNotNow, kNotNow, kNotNow},
      {Command::kJump, kNotConnected, kNone, kNone, kBusy},
      {Command::kBookmark, kNotConnected, kNotNow, kNone, kBusy},
      {Command::kPush, kNotConnected, kNotNow, kNone, kNone},
      {Command::kPushOn, kNotConnected, kNotNow, kNone, kBusy},
      {Command::kGiveMoney, kNotConnected, kNotNow, kNone, kBusy},
      {Command::kFirstPush, kNotConnected, kNotNow, kNone, kNone},
      {Command::kSearch, kNotConnected, kNotNow, kNone, kNone},
      {Command::kOpenLink, kNotNow, kNotNow, kNotNow, kNotNow},
      {Command::kWrite, kNotConnected, kNone, kNotNow, kNotNow},
      {Command::kNextInThread, kNotConnected, kNotNow, kNone, kNone},
      {Command::kNone, kNotNow, kNotNow, kNotNow, kNotNow},
  };
  const CommandState list{.holds = {kConnected, kHasLine, kBegun}, .page = PageKind::kArticleList};
  const CommandState reader{.holds = kReading, .page = PageKind::kReader};
  CommandState busy = reader;
  busy.holds.AddIf(true, kAutomation).AddIf(true, kCodeOutOfReach);
  for (const auto& [command, offLine, onLine, reading, working] : kExpected) {
    EXPECT_EQ(WhyNot(command, {}), offLine) << static_cast<int>(command);
    EXPECT_EQ(WhyNot(command, list), onLine) << static_cast<int>(command);
    EXPECT_EQ(WhyNot(command, reader), reading) << static_cast<int>(command);
    EXPECT_EQ(WhyNot(command, busy), working) << static_cast<int>(command);
  }
  EXPECT_EQ(WhyNot(Command::kReconnect, {.holds = {kBegun, kConnecting}}), Refusal::kNotNow);
  EXPECT_TRUE(IsEnabled(Command::kSearchFirst, {.holds = {kSelection, kFirstEngine}}));
  EXPECT_FALSE(IsEnabled(Command::kSearchFirst, {.holds = {kSelection, kSecondEngine}}));
}

TEST(CommandsTest, EachHasWordsAndNoKeyOrLetterOfAMenuIsGivenTwice) {
  std::set<std::pair<int, Modifier>> keys;
  std::set<char16_t> articleKeys;
  std::map<CommandMenu, std::set<char16_t>> letters;
  for (const CommandRow& row : AllCommands()) {
    EXPECT_FALSE(NameOf(row.command, {}).empty()) << static_cast<int>(row.command);
    for (const KeyChord& chord : row.keys) {
      const bool isNew = chord.virtualKey == 0 || keys.emplace(chord.virtualKey, chord.modifier).second;
      EXPECT_TRUE(isNew) << static_cast<int>(row.command);
    }
    const bool isNewLetter = row.articleKey == 0 || articleKeys.insert(row.articleKey).second;
    EXPECT_TRUE(isNewLetter) << static_cast<int>(row.command);
    if (row.menu == CommandMenu::kNone) continue;
    const std::size_t at = row.text.find(u"(&");
    ASSERT_NE(at, row.text.npos);
    EXPECT_TRUE(letters[row.menu].insert(row.text[at + 2]).second) << static_cast<int>(row.command);
  }
}

TEST(CommandsTest, MenusAreTheTablesRowsInTheirOrder) {
  const auto texts = [](CommandMenu menu, const CommandState& state) {
    std::u16string all;
    for (const MenuEntry& entry : EntriesOf(menu)) {
      if (!IsShown(entry, state)) continue;
      const CommandWords words{.firstEngine = u"find.example", .selection = u"{id}", .id = u"kagami"};
      all += (entry.gap == Gap::kLine ? u"|" : u"") + TextOf(entry, state, words) + u";";
    }
    return all;
  };
  EXPECT_TRUE(
      texts(CommandMenu::kArticle, {}).starts_with(u"跳到文章代碼…(&J);|加入／移除書籤(&M);推文(&P);"));
  EXPECT_EQ(texts(CommandMenu::kEdit, {}).find(u"搜尋"), std::u16string::npos) << "no engine is known";
  EXPECT_EQ(texts(CommandMenu::kContext, {}), u"|貼上(&P);貼上短網址(&S);|全選(&A);");
  const std::u16string all =
      texts(CommandMenu::kContext, {.holds = {kLink, kArticleLink, kUserId, kSelection, kFirstEngine}});
  EXPECT_TRUE(all.starts_with(
      u"開啟文章(&O);複製連結網址(&L);|將 kagami 加入名單…(&B);kagami 的網頁(&U);|複製(&C);"));
  EXPECT_NE(all.find(u"用 find.example 搜尋「{id}」(&1)"), all.npos)
      << "what is selected is no place for words";
}

TEST(CommandsTest, TipsNameThePlainKeyOfThePage) {
  const CommandState reader{.holds = kReading, .page = PageKind::kReader};
  EXPECT_EQ(TipOf(Command::kOptions, {}), u"選項 (Ctrl+Shift+O)");
  EXPECT_EQ(TipOf(Command::kBookmark, reader), u"加入書籤 (m)");
  EXPECT_EQ(TipOf(Command::kBack, reader), u"離開 (←)");
  EXPECT_EQ(TipOf(Command::kPasteShortLink, {}), u"貼上短網址 (Ctrl+Shift+K)");
  EXPECT_EQ(NameOf(KeyChord{kKeyInsert, Modifier::kShift}), u"Shift+Ins");
  EXPECT_EQ(NameOf(RowOf(Command::kReveal).keys.front()), u"Ctrl+Tab");
  EXPECT_EQ(NameOf(RowOf(Command::kFullScreen).keys.front()), u"F11");
}

TEST(CommandsTest, TheHelpPageHasEveryKey) {
  std::u16string all;
  for (const HelpGroup& group : MakeHelp({.holds = {kFirstEngine}}, {.firstEngine = u"find.example"})) {
    all += group.title + u'\n';
    for (const HelpLine& line : group.lines)
      all += line.name + u'=' + line.keys + u' ' + line.alone + u'\n';
  }
  EXPECT_TRUE(all.starts_with(u"選單：連線\n登入=Ctrl+Shift+L \n")) << "without dots and letters";
  EXPECT_NE(all.find(u"\n複製=Ctrl+Shift+C、Ctrl+Ins \n"), all.npos);
  EXPECT_NE(all.find(u"\n加入／移除書籤=Ctrl+Shift+M m\n"), all.npos);
  EXPECT_NE(all.find(u"\n用 find.example 搜尋選取的文字=Ctrl+Shift+S \n"), all.npos);
  EXPECT_NE(all.find(u"\n離開=← \n"), all.npos);
  EXPECT_NE(all.find(u"\n示範站台= \n"), all.npos) << "in the menu only";
  EXPECT_NE(all.find(u"\n使用者 的網頁= \n"), all.npos);
  for (const CommandRow& row : AllCommands()) {
    const std::u16string key = NameOf(row.keys.front());
    const bool isTold =
        all.find(u'=' + (row.siteKeyName.empty() ? key : std::u16string(row.siteKeyName))) != all.npos;
    EXPECT_TRUE(isTold || !row.shown.IsEmpty()) << static_cast<int>(row.command);
  }
}

TEST(CommandsTest, TheHelpPageIsSearchedByWords) {
  const std::vector<HelpGroup> help = MakeHelp({}, {});
  EXPECT_EQ(FilterHelp(help, u" \u3000"), help);
  const std::vector<HelpGroup> found = FilterHelp(help, u"ctrl+SHIFT+c　編輯");
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found.front().lines, (std::vector<HelpLine>{{u"複製", u"Ctrl+Shift+C、Ctrl+Ins", u""}}));
  EXPECT_TRUE(FilterHelp(help, u"沒有這個").empty());
}

TEST(CommandsTest, ThePagesCommandsHavePicturesAndAreWhatTheKeysAre) {
  for (int kind = 0; kind < kPageKinds; ++kind) {
    for (const Command command : CommandsBeside(static_cast<PageKind>(kind))) {
      EXPECT_NE(RowOf(command).picture, 0) << static_cast<int>(command);
      const CommandState state{.holds = kReading, .page = static_cast<PageKind>(kind)};
      EXPECT_TRUE(IsEnabled(command, state)) << static_cast<int>(command);
    }
  }
  const MouseAction back = DecidePageCommand(Command::kBack, Picture::kArticle);
  EXPECT_EQ(back.bytes, KeySequence(kKeyLeft));
  EXPECT_EQ(back.repeat, Repeat::kAfterAnswer);
  EXPECT_EQ(DecidePageCommand(Command::kEnd, Picture::kScreen).bytes, KeySequence(kKeyEnd));
  EXPECT_EQ(DecidePageCommand(Command::kEnd, Picture::kArticle).kind, MouseActionKind::kScrollToEnd);
  EXPECT_EQ(DecidePageCommand(Command::kOptions, Picture::kScreen), MouseAction{});
}

}  // namespace
}  // namespace quillet
