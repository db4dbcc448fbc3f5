// Cuts a frame into the writes in which a busy BBS would send it, so that clients meet sequences and
// characters that end in the middle. One per client, on the client's thread.
#pragma once

#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

#include "demo/demo_server.h"

namespace quillet::demo {

class WriteSplitter {
 public:
  WriteSplitter(DemoOptions::Writes writes, std::uint32_t seed) : writes_(writes), random_(seed) {}

  // The pieces in order; together they are the frame. Short frames (echoes, prompts, instant messages) stay
  // whole except with kEveryByte, as they do on a real line.
  std::vector<std::string_view> Split(std::string_view frame);

 private:
  std::size_t PickCut(std::string_view frame);

  DemoOptions::Writes writes_;
  std::mt19937 random_;
};

}  // namespace quillet::demo
