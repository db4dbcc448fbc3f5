// Any bytes into the parser. The first byte of the input says how the rest is cut into batches; after each
// batch the screen must be sound and must equal the plain reference, and so must all that was handed over.
#include <cstdint>
#include <cstdlib>
#include <span>

#include "core/charset.h"
#include "core/term_screen.h"
#include "tests/support/recording_watcher.h"
#include "tests/support/reference_parser.h"

namespace quillet {
namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

bool InSignedByte(int value) {
  return value >= -128 && value <= 127;
}

void RequireSound(const ScreenSnapshot& screen) {
  for (const ScreenRow& row : screen.text) {
    Require(row[80] == ' ' && row[81] == 0);
    for (std::size_t col = 82; col < kRowStride; ++col)
      Require(row[col] == ' ');
  }
  for (const ScreenRow& row : screen.attr)
    for (std::size_t col = kCols; col < kRowStride; ++col)
      Require(row[col] == kAttrBlank);
  Require(InSignedByte(screen.cursorRow) && InSignedByte(screen.cursorCol));
  Require(screen.inBatch == 0 && screen.bottomJump == 0);
}

// Sizes of the batches: whole, or a sequence of small ones grown from a seed.
class Cutter {
 public:
  explicit Cutter(std::uint8_t seed) : state_(seed) {}
  std::size_t Next(std::size_t left) {
    if (state_ == 0) return left;
    state_ = state_ * 1103515245u + 12345u;
    const std::size_t size = 1 + (state_ >> 16) % ((state_ >> 8) % 4 == 0 ? 200 : 24);
    return size < left ? size : left;
  }

 private:
  std::uint32_t state_;
};

void RunInput(std::span<const std::uint8_t> input) {
  if (input.empty()) return;
  Cutter cutter(input[0]);
  input = input.subspan(1);

  RecordingWatcher actual, expected;
  TermScreen screen;
  ReferenceScreen reference(&expected);
  screen.SetWatcher(&actual);
  screen.notifyWindow = &actual;
  reference.notifyWindow = &expected;
  screen.msgWatch = reference.msgWatch = 1;
  while (!input.empty()) {
    const std::span<const std::uint8_t> batch = input.first(cutter.Next(input.size()));
    input = input.subspan(batch.size());
    screen.Feed(batch);
    reference.Feed(batch);
    RequireSound(screen);
    Require(SameScreen(screen, reference) && SameEvents(actual, expected));
    actual.events.clear();
    expected.events.clear();
  }
}

}  // namespace
}  // namespace quillet

// The prompts over an article list are compared in Big5.
extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  quillet::Require(quillet::LoadCharsetTables(QUILLET_SOURCE_DIR "/Data").Complete());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillet::RunInput({data, size});
  return 0;
}
