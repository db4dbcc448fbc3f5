// A walk through the demo BBS as a recorded stream, "data/tour.stream", and what the classifier says on the
// way, "data/tour.flags": a line per read of the walk, with its size in bytes and the flags of each screen
// that was handed over in it. A difference is a change of the parser, of the hand-over or of a page test,
// whatever the demo serves today.
//
// `QUILLET_RECORD_TOUR=1 demo_tests --gtest_filter='FlagsTour*'` walks anew and writes both files; look at
// the new flags before they are checked in.
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "core/charset.h"
#include "core/session_state.h"
#include "tests/demo/demo_fixture.h"

namespace quillet {
namespace {

const std::filesystem::path kStream = QUILLET_SOURCE_DIR "/tests/demo/data/tour.stream";
const std::filesystem::path kFlags = QUILLET_SOURCE_DIR "/tests/demo/data/tour.flags";

// All that the classifier sets but the red footer, which the demo has not.
constexpr std::pair<std::uint32_t, const char*> kNames[] = {
    {PF_READING, "READING"},
    {PF_READ_TOP, "READ_TOP"},
    {PF_READ_END, "READ_END"},
    {PF_PUSH_LINE, "PUSH_LINE"},
    {PF_PUSH_CONFIRM, "PUSH_CONFIRM"},
    {PF_LIST_CURSOR, "LIST_CURSOR"},
    {PF_MAIL_MENU, "MAIL_MENU"},
    {PF_BROWSABLE, "BROWSABLE"},
    {PF_ARTICLE_LIST, "ARTICLE_LIST"},
    {PF_ARTICLE_LIST_CURSOR, "ARTICLE_LIST_CURSOR"},
    {PF_ANIMATION_PROMPT, "ANIMATION_PROMPT"},
    {PF_PAUSE, "PAUSE"},
    {PF_INPUT_FIELD, "INPUT_FIELD"},
    {PF_STAR_LINE, "STAR_LINE"},
    {PF_EDITOR, "EDITOR"},
    {PF_ANYKEY_BANNER, "ANYKEY_BANNER"},
    {PF_DISPUTED_NOTICE, "DISPUTED_NOTICE"},
};

std::string Names(std::uint32_t flags) {
  std::string names;
  for (const auto& [flag, name] : kNames)
    if ((flags & flag) != 0) names += std::string(names.empty() ? "" : "+") + name;
  return names.empty() ? "none" : names;
}

// Feeds reads to a screen of its own and says what the classifier made of each.
class Replay : private NotifyTarget {
 public:
  Replay() {
    screen_.SetWatcher(&classifier_);
    screen_.notifyWindow = this;
    screen_.sessionState = SessionState::kConnected;
    screen_.isBbsSite = 1;
    screen_.curAttr = kAttrBlank;
  }
  std::string Line(const std::string& read) {
    line_ = std::to_string(read.size());
    screen_.Feed({reinterpret_cast<const std::uint8_t*>(read.data()), read.size()});
    return line_;
  }
  const ScreenSnapshot& Screen() const { return screen_; }

 private:
  bool Post(unsigned message, std::uintptr_t, std::uintptr_t second) override {
    if (message != kMessageScreen) return true;
    const std::unique_ptr<ScreenSnapshot> taken(reinterpret_cast<ScreenSnapshot*>(second));
    line_ += ' ' + Names(taken->pageFlags);
    return true;
  }

  ScreenClassifier classifier_;
  TermScreen screen_;
  std::string line_;
};

class FlagsTourTest : public DemoTest {
 protected:
  // What is typed, and the flags or the text of the bottom row that show when it has been answered.
  struct Stop {
    std::string keys;
    std::uint32_t flags;
    std::u16string bottom = {};
  };

  void Visit(TestClient& client, const std::vector<Stop>& stops) {
    for (const Stop& stop : stops) {
      const std::size_t before = client.History().size();
      client.Send(stop.keys);
      EXPECT_TRUE(client.WaitFor([&](const ScreenSnapshot& screen) {
        return client.History().size() > before && (client.Seen().pageFlags & stop.flags) == stop.flags &&
               RowStartsWith(screen, kRows - 1, 0, stop.bottom);
      })) << stop.keys
          << client.Dump();
    }
  }

  void Walk(TestClient& client) {
    const std::string down = "\x1b[B";
    Visit(client, {{"greeted\r", PF_INPUT_FIELD},
                   {"wrong\r", PF_INPUT_FIELD},
                   {"greeted\rg\r", PF_ANYKEY_BANNER},
                   {"\n", PF_LIST_CURSOR},
                   {"", PF_STAR_LINE | PF_LIST_CURSOR},
                   {"\n", PF_LIST_CURSOR},
                   {"m\r", PF_MAIL_MENU},
                   {"q", PF_LIST_CURSOR},
                   {"b\r", PF_LIST_CURSOR, u" 選擇看板 "},
                   {"/", PF_INPUT_FIELD},
                   {"\r", PF_LIST_CURSOR},
                   {"s", PF_INPUT_FIELD},
                   {"SandBox\r", PF_LIST_CURSOR, u" 選擇看板 "},
                   {"\r", PF_ARTICLE_LIST_CURSOR},
                   {"1\r", PF_ARTICLE_LIST_CURSOR, u" 文章選讀 "},
                   {"Q", PF_ANYKEY_BANNER},
                   {" ", PF_ARTICLE_LIST_CURSOR},
                   {"l", PF_READING | PF_READ_TOP},
                   {" ", PF_READING},
                   {"$", PF_READING | PF_READ_END},
                   {"/", PF_INPUT_FIELD},
                   {"\r", PF_READING},
                   {"X", PF_PUSH_LINE},
                   {"1", PF_PUSH_LINE, u"推 greeted"},
                   {"a\r", PF_PUSH_LINE | PF_INPUT_FIELD},
                   {"y", PF_PUSH_CONFIRM},
                   {"\r", PF_READING},
                   {"q", PF_ARTICLE_LIST_CURSOR},
                   {"3\rl", PF_DISPUTED_NOTICE},
                   {"\r", PF_READING | PF_READ_TOP | PF_READ_END},
                   {"q", PF_ARTICLE_LIST_CURSOR},
                   {down + "l", PF_ANIMATION_PROMPT},
                   {"y", PF_PAUSE},
                   {"q", PF_READING},
                   {"q", PF_ARTICLE_LIST_CURSOR},
                   {"6\rl", 0, u" ◆ 此文章無內容"},
                   {" ", PF_ARTICLE_LIST_CURSOR},
                   {"#", PF_INPUT_FIELD},
                   {"1zzzzzzz\r", PF_ANYKEY_BANNER | PF_ARTICLE_LIST},
                   {" ", PF_ARTICLE_LIST_CURSOR},
                   {"\x10", PF_INPUT_FIELD},
                   {"t\r", PF_EDITOR},
                   {"a\x18", PF_INPUT_FIELD},
                   {"a\r", PF_ARTICLE_LIST, u" ◆ 文章沒有送出"},
                   {" ", PF_ARTICLE_LIST_CURSOR}});
  }
  void Record(const TestClient& client) {
    std::ofstream stream(kStream, std::ios::binary);
    std::ofstream flags(kFlags);
    Replay replay;
    for (const std::string& read : client.Reads()) {
      stream << read;
      flags << replay.Line(read) << '\n';
    }
  }
};

TEST_F(FlagsTourTest, TheDemoHasEveryPageOfTheTour) {
  TestClient client(server->Port());
  Walk(client);
  if (std::getenv("QUILLET_RECORD_TOUR") != nullptr) Record(client);
}

TEST_F(FlagsTourTest, EveryScreenOfTheRecordedTourHasItsFlags) {
  std::ifstream stream(kStream, std::ios::binary);
  std::ifstream lines(kFlags);
  ASSERT_TRUE(stream && lines);
  Replay replay;
  std::string all;
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    std::string read(static_cast<std::size_t>(std::stoul(line)), '\0');
    ASSERT_TRUE(stream.read(read.data(), static_cast<std::streamsize>(read.size())));
    EXPECT_EQ(replay.Line(read), line) << "line " << ++number << '\n' << DumpScreen(replay.Screen());
    all += line + '\n';
  }
  EXPECT_EQ(stream.peek(), std::ifstream::traits_type::eof());
  for (const auto& [flag, name] : kNames)
    EXPECT_NE(all.find(name), std::string::npos) << "no longer on the way: " << name;
}

}  // namespace
}  // namespace quillet
