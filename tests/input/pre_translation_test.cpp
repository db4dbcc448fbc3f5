#include "input/pre_translation.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

#include "bbs/page_flags.h"
#include "bbs/page_kind.h"
#include "core/key_sequence.h"
#include "tests/support/pages.h"
#include "tests/support/tables.h"

namespace quillet {

void PrintTo(const KeyDecision& decision, std::ostream* out) {
  *out << "road " << static_cast<int>(decision.route) << " action " << static_cast<int>(decision.action.kind)
       << " key " << decision.action.virtualKey << " command " << static_cast<int>(decision.action.command)
       << " bytes '" << decision.action.bytes << "' paging " << static_cast<int>(decision.paging.kind)
       << " select " << static_cast<int>(decision.select) << " name " << static_cast<int>(decision.name);
}

namespace {

KeyPress Key(int virtualKey) {
  return {.virtualKey = virtualKey};
}
KeyPress Shifted(int virtualKey) {
  return {.virtualKey = virtualKey, .shift = true};
}
KeyPress Char(char16_t character) {
  const bool letter = character >= u'a' && character <= u'z';
  return {.virtualKey = letter ? character - u'a' + 'A' : 0, .text = std::u16string(1, character)};
}
const KeyPress kEscape = {.virtualKey = kKeyEscape, .text = u"\x1B"};
const KeyPress kEnter = {.virtualKey = kKeyEnter, .text = u"\r"};
const KeyPress kTab = {.virtualKey = kKeyTab, .text = u"\t"};
const KeyPress kControlC = {.virtualKey = 'C', .control = true, .text = u"\x03"};

KeyDecision On(KeyRoute route) {
  return {.route = route};
}
KeyDecision OnKey(KeyRoute route, int virtualKey) {
  return {.route = route, .action = {.virtualKey = virtualKey}};
}
KeyDecision Give(Command command) {
  return {.route = KeyRoute::kCommand, .action = {.kind = KeyActionKind::kCommand, .command = command}};
}
KeyDecision Select(SelectStep step) {
  return {.route = KeyRoute::kSelection, .select = step};
}
KeyDecision Name(NameKey name, int colour = 0) {
  return {.route = KeyRoute::kNames, .name = name, .flagColour = colour};
}
KeyDecision Tabulator() {
  return {.route = KeyRoute::kBbs, .action = {.kind = KeyActionKind::kSendBytes, .bytes = "\t"}};
}

class PreTranslationTest : public WithTables {
 protected:
  // A page of each kind, by kind.
  std::vector<ScreenSnapshot> pages_ = {
      Classified(ScreenBuilder().Put(5, 0, u"歡迎光臨")),
      Classified(ScreenBuilder().Put(12, 20, u"●  (A)nnounce").Cursor(12, 21)),
      Classified(ScreenBuilder().Put(3, 0, u"●    1   kagami").Cursor(3, 1)),
      Classified(ScreenBuilder().Put(3, 0, u"●    1 + 11/06 kagami").Put(23, 0, u" 文章選讀 ").Cursor(3, 1)),
      Reader(0),
      Classified(ScreenBuilder().Put(23, 0, u" 編輯文章 ").Cursor(3, 4)),
      Classified(ScreenBuilder().Put(20, 0, u"代號: ").Fill(20, 6, 20, kAttrInputField).Cursor(20, 6)),
      Classified(ScreenBuilder().Put(23, 0, u" ◆ 沒有了").Cursor(23, 79)),
  };

  std::vector<UnderstoodPage> understood_;

  void SetUp() override {
    for (const ScreenSnapshot& page : pages_) {
      understood_.push_back(Understand(page));
      ASSERT_EQ(static_cast<std::size_t>(understood_.back().kind), understood_.size() - 1);
    }
  }

  // An article, at its top or its end or both or neither.
  static ScreenSnapshot Reader(std::uint32_t ends) {
    ScreenSnapshot screen = Classified(WithReaderFooter(ArticleHeader()));
    screen.pageFlags = (screen.pageFlags & ~(PF_READ_TOP | PF_READ_END)) | ends;
    return screen;
  }

  KeyDecision Decide(const KeyPress& press, PageKind kind, const WindowState& window = {},
                     KeyPhase phase = KeyPhase::kFirst) const {
    return DecideOn(static_cast<std::size_t>(kind), press, phase, window);
  }
  KeyDecision DecideOn(std::size_t page, const KeyPress& press, KeyPhase phase,
                       const WindowState& window) const {
    return DecideKeyMessage(press, phase, understood_[page], window);
  }
  // The key as the BBS gets it where nothing claims it.
  KeyDecision ForBbs(const KeyPress& press) const {
    return {.route = KeyRoute::kBbs, .action = DecideKey(press, understood_.front())};
  }
};

// ---- Precedence

TEST_F(PreTranslationTest, EnterAndEscapeAreTheNoticesWhateverElseIsThere) {
  const WindowState all{.noticeShown = true,
                        .sideListShown = true,
                        .selectionShown = true,
                        .revealShown = true,
                        .activityRuns = true};
  for (const KeyPress& press : {kEnter, kEscape}) {
    EXPECT_EQ(Decide(press, PageKind::kReader, all), OnKey(KeyRoute::kNotice, press.virtualKey));
    EXPECT_EQ(Decide(press, PageKind::kReader, all, KeyPhase::kRepeat), On(KeyRoute::kSwallowed));
  }
  EXPECT_EQ(Decide(Key(kKeyDown), PageKind::kReader, {.noticeShown = true}), ForBbs(Key(kKeyDown)));
}

TEST_F(PreTranslationTest, APictureOverTheTerminalTakesTheNextKeyWhateverItMeans) {
  const WindowState window{.pictureShown = true, .sideListShown = true, .articleShown = true};
  for (const KeyPress& press :
       {kEscape, Key(kKeyDown), Char(u'q'), KeyPress{.virtualKey = 'P', .control = true}})
    EXPECT_EQ(Decide(press, PageKind::kReader, window), OnKey(KeyRoute::kPicture, press.virtualKey));
  EXPECT_EQ(Decide(KeyPress{.shift = true}, PageKind::kReader, window).route, KeyRoute::kToolkit);
}

TEST_F(PreTranslationTest, TheSideListTakesEveryPlainKeyButTab) {
  const WindowState window{.sideListShown = true,
                           .selectionShown = true,
                           .articleShown = true,
                           .article = {.top = 0, .count = 100},
                           .articleOpen = true,
                           .commandsOffered = true,
                           .idUnderPointer = true,
                           .addBlackHotKey = true};
  for (const KeyPress& press : {kEscape, kEnter, Key(kKeyUp), Shifted(kKeyUp), Char(u'd'), Char(u'm')})
    EXPECT_EQ(Decide(press, PageKind::kReader, window), OnKey(KeyRoute::kSideList, press.virtualKey));
  EXPECT_EQ(Decide(Char(u'`'), PageKind::kReader, window), OnKey(KeyRoute::kSideList, 0));
  EXPECT_EQ(Decide(kTab, PageKind::kReader, window), Give(Command::kReveal));
  EXPECT_EQ(Decide({.virtualKey = 'V', .control = true}, PageKind::kReader, window), Give(Command::kPaste));
  const KeyPress controlQ{.virtualKey = 'Q', .control = true};
  EXPECT_EQ(Decide(controlQ, PageKind::kReader, window), ForBbs(controlQ));
}

TEST_F(PreTranslationTest, EscapeEndsOneThingAfterTheOther) {
  WindowState window{.selectionShown = true, .revealShown = true, .activityRuns = true};
  const auto escape = [&] { return Decide(kEscape, PageKind::kTyping, window); };
  EXPECT_EQ(escape(), Select(SelectStep::kClear));
  window.selectionShown = false;
  EXPECT_EQ(escape(), On(KeyRoute::kReveal));
  window.revealShown = false;
  EXPECT_EQ(escape(), On(KeyRoute::kActivity));
  window.activityRuns = false;
  EXPECT_EQ(escape(), ForBbs(kEscape));
  EXPECT_EQ(Decide(kEscape, PageKind::kTyping, window, KeyPhase::kRepeat), On(KeyRoute::kSwallowed));
}

TEST_F(PreTranslationTest, KeysOverAnIdComeBeforePagingAndTheBbs) {
  WindowState window{.articleShown = true,
                     .article = {.top = 40, .count = 100},
                     .articleOpen = true,
                     .commandsOffered = true,
                     .idUnderPointer = true,
                     .addBlackHotKey = true};
  EXPECT_EQ(Decide(Char(u'0'), PageKind::kReader, window), Name(NameKey::kColour, 0));
  EXPECT_EQ(Decide(Char(u'`'), PageKind::kReader, window), Name(NameKey::kBlack));
  EXPECT_EQ(Decide(Char(u'u'), PageKind::kReader, window, KeyPhase::kRepeat), On(KeyRoute::kSwallowed));
  window.articleShown = false;
  EXPECT_EQ(Decide(Char(u'7'), PageKind::kArticleList, window), Name(NameKey::kColour, 7));
  for (const PageKind typed : {PageKind::kTyping, PageKind::kEditor, PageKind::kOther})
    EXPECT_EQ(Decide(Char(u'7'), typed, window), ForBbs(Char(u'7')));
  window.idUnderPointer = false;
  EXPECT_EQ(Decide(Char(u'7'), PageKind::kArticleList, window), ForBbs(Char(u'7')));
  EXPECT_EQ(Decide(Char(u'`'), PageKind::kArticleList, window), Tabulator());
  window.idUnderPointer = true;
  window.addBlackHotKey = false;
  EXPECT_EQ(Decide(Char(u'u'), PageKind::kArticleList, window), ForBbs(Char(u'u')));
}

// ---- Single keys

TEST_F(PreTranslationTest, TabShowsNotesWhereIdsAreAndTheBackQuoteIsTheBbssTab) {
  for (const PageKind kind : {PageKind::kMenu, PageKind::kEditor, PageKind::kTyping, PageKind::kPause}) {
    EXPECT_EQ(Decide(kTab, kind), Tabulator()) << static_cast<int>(kind);
    EXPECT_EQ(Decide(Char(u'`'), kind), ForBbs(Char(u'`'))) << static_cast<int>(kind);
  }
  for (const PageKind kind : {PageKind::kList, PageKind::kArticleList, PageKind::kReader}) {
    EXPECT_EQ(Decide(kTab, kind), kind == PageKind::kList ? Tabulator() : Give(Command::kReveal));
    EXPECT_EQ(Decide(Char(u'`'), kind), Tabulator()) << static_cast<int>(kind);
  }
  EXPECT_EQ(Decide(kTab, PageKind::kReader, {}, KeyPhase::kRepeat), On(KeyRoute::kSwallowed))
      << "no double Tab";
  EXPECT_EQ(Decide(Shifted(kKeyTab), PageKind::kReader), On(KeyRoute::kToolkit));
  understood_[static_cast<std::size_t>(PageKind::kReader)].flags &= ~std::uint32_t{PF_BROWSABLE};
  EXPECT_EQ(Decide(kTab, PageKind::kReader), Tabulator()) << "another site";
}

TEST_F(PreTranslationTest, TheCaptionsKeysAndThePlacesAreTheArticles) {
  const WindowState article{.articleOpen = true, .commandsOffered = true};
  const std::pair<char16_t, Command> keys[] = {{u'm', Command::kBookmark},
                                               {u'p', Command::kPush},
                                               {u'x', Command::kPushOn},
                                               {u'g', Command::kGiveMoney},
                                               {u'i', Command::kTogglePlaces}};
  for (const auto& [character, command] : keys) {
    const KeyPress press = Char(character);
    EXPECT_EQ(Decide(press, PageKind::kReader, article), Give(command));
    EXPECT_EQ(Decide(press, PageKind::kReader, article, KeyPhase::kRepeat), On(KeyRoute::kSwallowed));
    EXPECT_EQ(Decide(press, PageKind::kReader), ForBbs(press)) << "a help text";
    EXPECT_EQ(Decide(press, PageKind::kArticleList, article), ForBbs(press));
    const KeyPress control{.virtualKey = press.virtualKey, .control = true, .text = u"\x01"};
    EXPECT_EQ(Decide(control, PageKind::kReader, article), ForBbs(control));
  }
  EXPECT_EQ(Decide(Char(u'i'), PageKind::kReader, {.articleOpen = true}), Give(Command::kTogglePlaces))
      << "without captions too";
  EXPECT_EQ(Decide(Char(u'i'), PageKind::kPause, {.addressesShown = true}), Give(Command::kTogglePlaces))
      << "a person's page";
  EXPECT_EQ(Decide(Char(u'm'), PageKind::kPause, {.addressesShown = true}), ForBbs(Char(u'm')));
}

TEST_F(PreTranslationTest, TheLocalArticleMovesFirstAndHandsOnWhatLeavesIt) {
  WindowState window{.articleShown = true,
                     .article = {.top = 0, .count = 100},
                     .articleOpen = true,
                     .commandsOffered = true};
  const auto paging = [](PagingAction::Kind kind, int top) {
    return KeyDecision{.route = KeyRoute::kArticle, .paging = {kind, top}};
  };
  EXPECT_EQ(Decide(Key(kKeyDown), PageKind::kReader, window), paging(PagingAction::Kind::kScrollTo, 1));
  EXPECT_EQ(Decide(Key(kKeyLeft), PageKind::kReader, window), ForBbs(Key(kKeyLeft)));
  EXPECT_EQ(Decide(Char(u'm'), PageKind::kReader, window), Give(Command::kBookmark));
  EXPECT_EQ(Decide(Key(kKeyDown), PageKind::kPause, window), paging(PagingAction::Kind::kScrollTo, 1))
      << "an automation works under the article";
  window.article.top = 77;
  KeyDecision leaves = paging(PagingAction::Kind::kNext, 77);
  for (const KeyPress& press : {Key(kKeyDown), kEnter, Char(u' '), Key(kKeyRight)}) {
    leaves.action = ForBbs(press).action;
    EXPECT_EQ(Decide(press, PageKind::kReader, window), leaves);
  }
  window.preventArticleChange = true;
  EXPECT_EQ(Decide(kEnter, PageKind::kReader, window), paging(PagingAction::Kind::kNothing, 77));
}

TEST_F(PreTranslationTest, InTheLocalArticleTheKeysOfSearchingAreTheClients) {
  const KeyPress controlF{.virtualKey = 'F', .control = true, .text = u"\x06"};
  const KeyPress shiftN{.virtualKey = 'N', .shift = true, .text = u"N"};
  WindowState window{.article = {.top = 5, .count = 100}};
  const auto on = [&](const KeyPress& press) { return Decide(press, PageKind::kReader, window); };
  for (const KeyPress& press : {Char(u'/'), Char(u'n'), controlF})
    EXPECT_EQ(on(press).route, KeyRoute::kBbs);
  window.articleShown = true;
  EXPECT_EQ(on(Char(u'/')).search, SearchStep::kAsk);
  EXPECT_EQ(on(controlF).search, SearchStep::kAsk);
  EXPECT_EQ(on(Char(u'n')).search, SearchStep::kNext);
  EXPECT_EQ(on(Shifted(kKeyF3)).search, SearchStep::kPrevious);
  EXPECT_EQ(on(shiftN).route, KeyRoute::kArticle);
  window.search = SearchUse::kMarked;
  EXPECT_EQ(on(shiftN).search, SearchStep::kPrevious);
  EXPECT_EQ(on(kEnter).route, KeyRoute::kArticle);
  EXPECT_EQ(on(kEscape).search, SearchStep::kEnd);
  window.search = SearchUse::kWalked;
  EXPECT_EQ(on(kEnter).search, SearchStep::kNext);
}

TEST_F(PreTranslationTest, FourKeysDoNotLeaveTheBbssReaderWhenTheUserWantsItSo) {
  const WindowState window{.articleOpen = true, .preventArticleChange = true};
  const auto on = [&](std::uint32_t ends, const KeyPress& press, const WindowState& state) {
    return DecideKeyMessage(press, KeyPhase::kFirst, Understand(Reader(ends)), state);
  };
  const std::vector<KeyPress> onward = {Key(kKeyDown), kEnter, Char(u' ')};
  for (const KeyPress& press : onward) {
    EXPECT_EQ(on(PF_READ_END, press, window), On(KeyRoute::kSwallowed));
    EXPECT_EQ(on(PF_READ_TOP, press, window), ForBbs(press));
    EXPECT_EQ(on(PF_READ_END, press, {.articleOpen = true}), ForBbs(press));
    EXPECT_EQ(on(PF_READ_END, press, {.preventArticleChange = true}), ForBbs(press)) << "a help text";
  }
  EXPECT_EQ(on(PF_READ_TOP | PF_READ_END, Key(kKeyUp), window), On(KeyRoute::kSwallowed));
  EXPECT_EQ(on(PF_READ_END, Key(kKeyUp), window), ForBbs(Key(kKeyUp)));
  for (const KeyPress& press : {Key(kKeyRight), Key(kKeyPageDown), Key(kKeyLeft), Char(u'f'), Char(u'b')})
    EXPECT_EQ(on(PF_READ_TOP | PF_READ_END, press, window), ForBbs(press));
}

TEST_F(PreTranslationTest, ShiftSelectsButNotWhereThatWouldBeFeltAsTyping) {
  const std::pair<int, SelectStep> keys[] = {
      {kKeyLeft, SelectStep::kLeft}, {kKeyRight, SelectStep::kRight},    {kKeyUp, SelectStep::kUp},
      {kKeyDown, SelectStep::kDown}, {kKeyHome, SelectStep::kLineStart}, {kKeyEnd, SelectStep::kLineEnd}};
  const WindowState article{.articleShown = true, .article = {.top = 40, .count = 100}};
  for (const auto& [key, step] : keys) {
    EXPECT_EQ(Decide(Shifted(key), PageKind::kMenu), Select(step));
    EXPECT_EQ(Decide(Shifted(key), PageKind::kEditor), Select(step));
    EXPECT_EQ(Decide(Shifted(key), PageKind::kReader, article, KeyPhase::kRepeat), Select(step));
    EXPECT_EQ(Decide(Shifted(key), PageKind::kTyping), ForBbs(Shifted(key)));
    EXPECT_EQ(Decide(Shifted(key), PageKind::kTyping, {.selectionShown = true}), Select(step));
    EXPECT_EQ(Decide(Key(key), PageKind::kMenu, {.selectionShown = true}), ForBbs(Key(key)));
  }
  EXPECT_EQ(Decide(Shifted(kKeyPageDown), PageKind::kMenu), ForBbs(Shifted(kKeyPageDown)));
  EXPECT_EQ(Decide(kControlC, PageKind::kEditor), ForBbs(kControlC));
  EXPECT_EQ(Decide(kControlC, PageKind::kEditor, {.selectionShown = true}), Give(Command::kCopy));
}

// ---- For every key

// Every virtual key with every modifier, with what a keyboard may make of it.
std::vector<KeyPress> EveryPress() {
  std::vector<KeyPress> presses;
  for (int key = 0; key < 256; ++key) {
    for (int modifiers = 0; modifiers < 8; ++modifiers) {
      KeyPress press{.virtualKey = key,
                     .control = (modifiers & 1) != 0,
                     .shift = (modifiers & 2) != 0,
                     .alt = (modifiers & 4) != 0};
      presses.push_back(press);
      for (const char16_t character : std::u16string_view(u" `~059uimpxgkjG$\x03\r\x1B中")) {
        press.text = std::u16string(1, character);
        presses.push_back(press);
      }
    }
  }
  return presses;
}

// Everything that `bits` may switch on while nothing lies over the screen.
WindowState NothingOver(unsigned bits) {
  return {.selectionShown = (bits & 1) != 0,
          .revealShown = (bits & 2) != 0,
          .activityRuns = (bits & 4) != 0,
          .articleOpen = (bits & 8) != 0,
          .commandsOffered = (bits & 16) != 0,
          .idUnderPointer = (bits & 32) != 0,
          .addBlackHotKey = (bits & 32) != 0,
          .preventArticleChange = (bits & 64) != 0};
}

TEST_F(PreTranslationTest, NoKeyOfTheBbssIsLeftToTheToolkitAndNoOtherReachesTheBbs) {
  for (const KeyPress& press : EveryPress()) {
    for (std::size_t page = 0; page < pages_.size(); ++page) {
      const KeyActionKind meaning = DecideKey(press, understood_[page]).kind;
      const KeyRoute route = DecideOn(page, press, KeyPhase::kFirst, {}).route;
      if (meaning == KeyActionKind::kNone)
        ASSERT_EQ(route, KeyRoute::kToolkit) << press.virtualKey;
      else if (meaning == KeyActionKind::kCommand)
        ASSERT_EQ(route, KeyRoute::kCommand) << press.virtualKey;
      else
        ASSERT_TRUE(route == KeyRoute::kBbs || route == KeyRoute::kSelection || press.virtualKey == kKeyTab)
            << press.virtualKey;
    }
  }
}

TEST_F(PreTranslationTest, WhileTypingEveryCharacterIsTheBbss) {
  for (const PageKind kind : {PageKind::kTyping, PageKind::kEditor}) {
    for (const KeyPress& press : EveryPress()) {
      const KeyAction meaning = DecideKey(press, understood_[static_cast<std::size_t>(kind)]);
      if (meaning.kind != KeyActionKind::kSendText) continue;
      for (const unsigned bits : {0U, 1U, 2U, 4U, 8U, 16U, 32U, 64U, 127U}) {
        const KeyDecision expected{.route = KeyRoute::kBbs, .action = meaning};
        ASSERT_EQ(Decide(press, kind, NothingOver(bits)), expected) << press.virtualKey << ' ' << bits;
      }
    }
  }
}

TEST_F(PreTranslationTest, AHeldKeyOnlyScrollsSelectsAndTypes) {
  for (const KeyPress& press : EveryPress()) {
    for (std::size_t page = 0; page < pages_.size(); ++page) {
      for (const unsigned bits : {0U, 63U, 127U}) {
        const KeyRoute route = DecideOn(page, press, KeyPhase::kRepeat, NothingOver(bits)).route;
        ASSERT_TRUE(route == KeyRoute::kToolkit || route == KeyRoute::kBbs || route == KeyRoute::kSwallowed ||
                    route == KeyRoute::kSelection)
            << press.virtualKey << ' ' << static_cast<int>(route);
      }
    }
  }
}

}  // namespace
}  // namespace quillet
