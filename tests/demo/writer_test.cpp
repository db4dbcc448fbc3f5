// The terminal writer, the splitter and the key decoder by themselves, on random input.
#include <gtest/gtest.h>
#include <random>

#include "core/charset.h"
#include "core/term_screen.h"
#include "demo/key_decoder.h"
#include "demo/terminal_writer.h"
#include "demo/write_splitter.h"
#include "tests/demo/demo_fixture.h"

namespace quillet {
namespace {

using demo::Canvas;
using demo::KeyKind;

void Feed(TermScreen& screen, std::string_view bytes) {
  screen.Feed({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

void ExpectShows(const TermScreen& screen, const Canvas& canvas) {
  for (int row = 0; row < kRows; ++row) {
    for (int col = 0; col < kCols; ++col) {
      const demo::Cell& cell = canvas.RowAt(row)[static_cast<std::size_t>(col)];
      ASSERT_EQ(screen.TextAt(row, col), cell.byte) << row << "," << col;
      ASSERT_EQ(screen.AttrAt(row, col), cell.attr) << row << "," << col;
    }
  }
  ASSERT_EQ(screen.cursorRow, canvas.CursorRow());
  ASSERT_EQ(screen.cursorCol, canvas.CursorCol());
  ASSERT_EQ(screen.curAttr, kAttrBlank);
}

class WriterTest : public WithTables {};

TEST_F(WriterTest, AnySuccessionOfFramesArrivesAsDrawn) {
  std::mt19937 random(11);
  demo::TerminalWriter writer;
  TermScreen screen;
  Canvas canvas;
  const std::string texts[] = {ToBig5(u"中文與 ASCII"), "plain", ToBig5(u"│■★"), "  "};
  for (int frame = 0; frame < 400; ++frame) {
    for (unsigned i = 0; i < random() % 12; ++i) {
      const int row = static_cast<int>(random() % kRows);
      const int col = static_cast<int>(random() % kCols);
      const auto attr = static_cast<std::uint8_t>(random());
      if (random() % 4 == 0)
        canvas.ClearRow(row);
      else
        canvas.Put(row, col, std::string_view(texts[random() % 4]), random() % 2 ? attr : kAttrBlank);
    }
    canvas.MoveCursor(static_cast<int>(random() % kRows), static_cast<int>(random() % kCols));
    if (random() % 50 == 0) writer.Forget();
    if (random() % 20 == 0) writer.ForgetRow(static_cast<int>(random() % kRows));
    Feed(screen, writer.Frame(canvas));
    ExpectShows(screen, canvas);
  }
  EXPECT_EQ(writer.Frame(canvas), "");
}

TEST_F(WriterTest, OnlyWhatChangedIsSentAndTheBottomRowIsEnteredWithoutAJump) {
  demo::TerminalWriter writer;
  Canvas canvas;
  for (int row = 0; row < kRows; ++row)
    canvas.Put(row, 0, std::string(79, 'x'), 0x1F & 0x0F);
  canvas.MoveCursor(23, 79);
  writer.Frame(canvas);
  canvas.Put(7, 40, u"中", 0x0F);
  EXPECT_LT(writer.Frame(canvas).size(), 40u);
  canvas.ClearRow(23);
  canvas.Put(23, 0, u"prompt");
  const std::string prompt = writer.Frame(canvas);
  EXPECT_EQ(prompt.find("\x1b[24;1H"), std::string::npos) << prompt;
  EXPECT_NE(prompt.find('\r'), std::string::npos);
}

TEST_F(WriterTest, PiecesAddUpAndOnlyLongFramesAreCut) {
  using Writes = DemoOptions::Writes;
  std::string frame;
  for (int i = 0; i < 60; ++i)
    frame += "\x1b[1;3" + std::to_string(i % 8) + "m" + ToBig5(u"字字");
  bool insideSequence = false, insideCharacter = false;
  for (std::uint32_t seed = 0; seed < 200; ++seed) {
    demo::WriteSplitter splitter(Writes::kAsBbs, seed);
    std::string all;
    for (const std::string_view piece : splitter.Split(frame)) {
      ASSERT_FALSE(piece.empty());
      insideSequence |= piece.back() == '\x1b';
      all += piece;
      insideCharacter |= all.ends_with(ToBig5(u"字").substr(0, 1));
    }
    ASSERT_EQ(all, frame);
    EXPECT_EQ(splitter.Split("short").size(), 1u);
  }
  EXPECT_TRUE(insideSequence);
  EXPECT_TRUE(insideCharacter);
  EXPECT_EQ(demo::WriteSplitter(Writes::kEveryByte, 1).Split("abc").size(), 3u);
  EXPECT_EQ(demo::WriteSplitter(Writes::kWhole, 1).Split(frame).size(), 1u);
}

TEST_F(WriterTest, KeysAreTheSameHoweverTheirBytesArrive) {
  const std::string bytes = "a\x1b[A\x1b[5~\x1bOD" + ToBig5(u"中") + "\r\n\x18\x7f\x1bz" +
                            std::string("\xff\xfb\x01\xff\xfa\x18\x01\xff\xf0", 9) + std::string(1, '\0') +
                            "b";
  demo::KeyDecoder whole, piecewise;
  const auto keys = whole.Feed(bytes);
  std::vector<demo::Key> pieces;
  for (const char byte : bytes)
    for (const demo::Key& key : piecewise.Feed(std::string_view(&byte, 1)))
      pieces.push_back(key);
  ASSERT_EQ(keys.size(), pieces.size());
  for (std::size_t i = 0; i < keys.size(); ++i) {
    EXPECT_EQ(keys[i].kind, pieces[i].kind);
    EXPECT_EQ(keys[i].text, pieces[i].text);
  }
  const KeyKind expected[] = {KeyKind::kText,      KeyKind::kUp,     KeyKind::kPageUp,   KeyKind::kLeft,
                              KeyKind::kText,      KeyKind::kEnter,  KeyKind::kLineFeed, KeyKind::kControl,
                              KeyKind::kBackspace, KeyKind::kEscape, KeyKind::kText,     KeyKind::kText};
  ASSERT_EQ(keys.size(), std::size(expected));
  for (std::size_t i = 0; i < keys.size(); ++i)
    EXPECT_EQ(keys[i].kind, expected[i]) << i;
  EXPECT_EQ(keys[4].text, ToBig5(u"中"));
  EXPECT_EQ(keys.back().text, "b");
}

using DemoFuzzTest = DemoTest;

// Random keys of a random user, weighted so that they get everywhere.
TEST_F(DemoFuzzTest, WhateverIsSentTheServerGoesOn) {
  const std::string words[] = {"\r",
                               "\x1b[A",
                               "\x1b[B",
                               "\x1b[C",
                               "\x1b[D",
                               "\x1b[6~",
                               "\x1b[1~",
                               "s",
                               "sSandBox\r",
                               "l",
                               "X1",
                               "\x18",
                               "\x10",
                               "y",
                               "Q",
                               "#",
                               "/",
                               "=",
                               "\x15",
                               ToBig5(u"字"),
                               "12",
                               "q",
                               "i",
                               "d",
                               std::string("\xff\xfd\x1f", 3),
                               std::string(120, 'w'),
                               "\x1b[",
                               std::string(1, '\0')};
  for (std::uint32_t seed = 1; seed <= 6; ++seed) {
    std::mt19937 random(seed);
    TestClient client(server->Port());
    client.Send("alice\rwonder\r\r\r\r");
    std::string bytes;
    for (int i = 0; i < 1500; ++i) {
      if (random() % 3 == 0)
        bytes += static_cast<char>(random());
      else
        bytes += words[random() % std::size(words)];
    }
    client.Send(bytes);
  }
  for (int i = 0; i < 20; ++i) {  // no login at all
    std::mt19937 random(static_cast<unsigned>(i));
    TestClient client(server->Port());
    std::string bytes;
    for (int k = 0; k < 3000; ++k)
      bytes += static_cast<char>(random());
    client.Send(bytes);
  }
  // Everything that was sent is handled before a connection is given up.
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (closed < 26 && std::chrono::steady_clock::now() < end)
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  EXPECT_EQ(closed, 26);
  EXPECT_TRUE(Client("bob", "builder", "SandBox")->Has(1, 0, u"[←]離開"));
}

}  // namespace
}  // namespace quillet
