// demo_bbs: serves the demo BBS on loopback until it is interrupted.
#include <atomic>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

#include "core/charset.h"
#include "core/endpoints.h"
#include "demo/demo_server.h"
#include "platform/folders.h"

namespace {

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "set within a signal handler");

void OnSignal(int) {
  interrupted = true;
}

constexpr const char* kUsage =
    "usage: demo_bbs [--port N] [--ssh-port N] [--wss-port N [--ca-file PATH]] [--picture-port N]\n"
    "                [--content FOLDER] [--once-writes whole|bbs|byte]\n";
constexpr auto kSignalPoll = std::chrono::milliseconds(100);

std::optional<quillet::DemoOptions::Writes> WritesNamed(const std::string& name) {
  using Writes = quillet::DemoOptions::Writes;
  if (name == "whole") return Writes::kWhole;
  if (name == "bbs") return Writes::kAsBbs;
  if (name == "byte") return Writes::kEveryByte;
  return std::nullopt;
}

bool ReadPort(const std::string& value, std::uint16_t& port) {
  const char* const end = value.data() + value.size();
  const auto [rest, error] = std::from_chars(value.data(), end, port);
  return error == std::errc() && rest == end;
}

struct Arguments {
  quillet::DemoOptions options;
  std::string authorityFile;  // where the certificate authority is written to; empty: nowhere
};

bool WriteAuthority(const std::string& path, const std::string& authority) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << authority;
  return file.flush().good();
}

// False for an option that there is not, or a value that it cannot have.
bool ReadOption(const std::string& name, const std::string& value, Arguments& read) {
  quillet::DemoOptions& options = read.options;
  if (name == "--port") return ReadPort(value, options.port);
  if (name == "--ssh-port") return ReadPort(value, options.sshPort.emplace());
  if (name == "--wss-port") return ReadPort(value, options.webSocketPort.emplace());
  if (name == "--picture-port") return ReadPort(value, options.picturePort.emplace());
  if (name == "--once-writes") {
    const auto writes = WritesNamed(value);
    options.writes = writes.value_or(options.writes);
    return writes.has_value();
  }
  if (name == "--ca-file")
    read.authorityFile = value;
  else if (name == "--content")
    options.contentFolder = value;
  else
    return false;
  return true;
}

// Every option takes a value. False for anything that is not understood.
bool ReadArguments(int count, char** arguments, Arguments& read) {
  for (int i = 1; i < count; i += 2)
    if (i + 1 >= count || !ReadOption(arguments[i], arguments[i + 1], read)) return false;
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  const auto resources = quillet::ResourceFolder();
  Arguments read;
  quillet::DemoOptions& options = read.options;
  options.contentFolder = resources / "demo" / "content";
  options.picturePort = 0;
  quillet::Endpoints endpoints;
  if (quillet::LoadEndpoints(resources / "Data" / "endpoints.ini", endpoints)) options.UseNames(endpoints);
  options.log = [](std::string_view line) {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
  };
  if (!ReadArguments(count, arguments, read)) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  if (!quillet::LoadCharsetTables(resources / "Data").Complete()) {
    std::fprintf(stderr, "demo_bbs: no character tables in %s\n", (resources / "Data").string().c_str());
    return 1;
  }
  std::signal(SIGINT, OnSignal);
  std::signal(SIGTERM, OnSignal);
  quillet::DemoServer server(options);
  if (!server.Error().empty()) {
    std::fprintf(stderr, "demo_bbs: %s\n", server.Error().c_str());
    return 1;
  }
  if (!read.authorityFile.empty() && !WriteAuthority(read.authorityFile, server.CertificateAuthority())) {
    std::fprintf(stderr, "demo_bbs: cannot write %s\n", read.authorityFile.c_str());
    return 1;
  }
  for (const std::string& address : server.Addresses())
    std::printf("%s\n", address.c_str());
  std::fflush(stdout);
  while (!interrupted)
    std::this_thread::sleep_for(kSignalPoll);
  return 0;
}
