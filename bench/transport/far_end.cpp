#include "bench/transport/far_end.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <span>
#include <string_view>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "demo/wires/ssh_door.h"
#include "demo/wires/telnet_door.h"
#include "demo/wires/websocket_door.h"
#include "demo/wires/wire.h"

namespace quillet {
namespace {

using demo::Door;
using demo::OpenedDoor;
using demo::Wire;

// What the BBS sends back for a key in a list: the mark moves.
constexpr std::string_view kEcho = "\x1b[5;1H  \x1b[6;1H\xa1\xb4\x1b[6;2H";

std::unique_ptr<Door> Opened(OpenedDoor opened) {
  if (opened.door) return std::move(opened.door);
  std::fprintf(stderr, "transport_bench: %s\n", opened.error.c_str());
  std::exit(1);
}

std::span<const std::uint8_t> BytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

void Flood(Wire& wire, std::string_view stream, std::size_t size, const StopSignal& never) {
  for (std::size_t at = 0; size > 0;) {
    const std::string_view piece = stream.substr(at, std::min(FarEnd::kPiece, size));
    if (!wire.Send(BytesOf(piece), never)) return;
    size -= piece.size();
    at = at + piece.size() < stream.size() ? at + piece.size() : 0;
  }
}

}  // namespace

std::int64_t NowNs() {
  return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

FarEnd::FarEnd(std::string stream, std::size_t floodSize)
    : stream_(std::move(stream)), floodSize_(floodSize) {
  void* const memory =
      mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) std::exit(1);
  shared_ = new (memory) Shared{};
  process_ = fork();
  if (process_ == 0) RunHere();
  while (!shared_->ready && waitpid(process_, nullptr, WNOHANG) == 0)
    usleep(1000);
  if (!shared_->ready) std::exit(1);
}

FarEnd::~FarEnd() {
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
  munmap(shared_, sizeof(Shared));
}

void FarEnd::RunHere() {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  Serve();
  _exit(1);
}

void FarEnd::Serve() const {
  std::array<std::unique_ptr<Door>, kWays> doors;
  doors[kTelnet] = Opened(demo::OpenTelnetDoor(0));
  doors[kSsh] = Opened(demo::OpenSshDoor(0));
  demo::OpenedWebSocketDoor webSocket = demo::OpenWebSocketDoor(0);
  doors[kWebSocket] = Opened(std::move(webSocket.opened));
  std::copy_n(webSocket.authority.c_str(), webSocket.authority.size() + 1, shared_->authority.begin());
  for (int way = 0; way < kWays; ++way)
    shared_->ports[static_cast<std::size_t>(way)] = doors[static_cast<std::size_t>(way)]->Port();
  shared_->ready = true;

  const StopSignal never;
  std::vector<std::thread> threads;
  threads.reserve(doors.size());
  for (const auto& door : doors)
    threads.emplace_back([&] {
      while (std::unique_ptr<Wire> wire = door->Accept(never))
        std::thread([this, &never, taken = std::move(wire)] { ServeClient(*taken, never); }).detach();
    });
  for (std::thread& thread : threads)
    thread.join();
}

void FarEnd::ServeClient(demo::Wire& wire, const StopSignal& never) const {
  std::array<std::uint8_t, kPiece> buffer;
  char wish = 0;
  if (!wire.Open(never)) return;
  while (const std::size_t count = wire.Receive(buffer, never)) {
    const std::int64_t now = NowNs();
    for (const std::uint8_t byte : std::span(buffer).first(count)) {
      if (wish == 0)
        wish = Grant(byte, wire, never);
      else if (wish == kKeys && byte == kKey)
        NoteKey(now, wire, never);
    }
  }
  wire.Close();
}

char FarEnd::Grant(std::uint8_t byte, demo::Wire& wire, const StopSignal& never) const {
  switch (byte) {
    case kFlood:
      Flood(wire, stream_, floodSize_, never);
      return kFlood;
    case kKeys:
      wire.Send(BytesOf(kEcho), never);
      return kKeys;
    case kRest:
      return kRest;
    default:
      return 0;  // of the keys that a session opens with
  }
}

void FarEnd::NoteKey(std::int64_t time, demo::Wire& wire, const StopSignal& never) const {
  const std::size_t key = shared_->keys;
  if (key == kMostKeys) return;
  shared_->keyTimes[key] = time;
  shared_->keys = key + 1;
  wire.Send(BytesOf(kEcho), never);
}

}  // namespace quillet
