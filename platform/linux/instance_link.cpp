#include "platform/instance_link.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <poll.h>
#include <random>
#include <span>
#include <string>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/instance_message.h"
#include "platform/link_handler.h"
#include "platform/linux/desktop_folders.h"
#include "platform/utf8.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

// Each window has a socket of its own, "<kAppId>.<random>" in the user's runtime folder: none takes the
// other's away, and when one closes the others are still found.
constexpr int kMostWaiting = 8;
// So many windows that do not answer are asked.
constexpr int kMostAsked = 4;
constexpr int kPatienceMs = 2000;
constexpr char kYes = 'y';
constexpr char kNo = 'n';

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  explicit operator bool() const { return number_ >= 0; }
  int Number() const { return number_; }

 private:
  const int number_;
};

// Nothing for a path that is too long for a socket.
std::optional<sockaddr_un> AddressOf(const fs::path& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string& text = path.native();
  if (text.size() >= sizeof address.sun_path) return std::nullopt;
  std::memcpy(address.sun_path, text.c_str(), text.size() + 1);
  return address;
}

template <typename Call>
int WithAddress(Call call, int socket, const sockaddr_un& address) {
  return call(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

bool IsOurUser(int connection) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

std::string NameStart() {
  return Utf8FromUtf16(kAppId) + '.';
}

std::string RandomName() {
  constexpr std::string_view kDigits = "0123456789abcdefghijklmnopqrstuv";
  std::random_device random;
  std::string name = NameStart();
  for (int i = 0; i < 12; ++i)
    name += kDigits[random() % kDigits.size()];
  return name;
}

class SocketLink : public InstanceLink {
 public:
  // Only MakeListener's; the object owns both descriptors and the name.
  SocketLink(fs::path name, int listener, int stop, Take take)
      : name_(std::move(name)), listener_(listener), stop_(stop), take_(std::move(take)), thread_([this] {
          Listen();
        }) {}
  ~SocketLink() override {
    constexpr std::uint64_t kOnce = 1;
    while (write(stop_.Number(), &kOnce, sizeof kOnce) < 0 && errno == EINTR) {
    }
    thread_.join();
    unlink(name_.c_str());
  }

  void NoteUserHere() override { utimensat(AT_FDCWD, name_.c_str(), nullptr, 0); }

 private:
  enum class Event { kReady, kStop, kTimeout };
  // `descriptor` -1: only a stop.
  Event Await(int descriptor, int patienceMs) const {
    std::array<pollfd, 2> waits{{{.fd = stop_.Number(), .events = POLLIN, .revents = 0},
                                 {.fd = descriptor, .events = POLLIN, .revents = 0}}};
    int ready = 0;
    do
      ready = poll(waits.data(), waits.size(), patienceMs);
    while (ready < 0 && errno == EINTR);
    if (ready < 0 || waits[0].revents != 0) return Event::kStop;
    return ready > 0 ? Event::kReady : Event::kTimeout;
  }

  void Listen() {
    while (Await(listener_.Number(), -1) == Event::kReady) {
      const Descriptor connection(
          accept4(listener_.Number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
      if (connection)
        Answer(connection.Number());
      else if (errno != ECONNABORTED && errno != EINTR && Await(-1, kPatienceMs) == Event::kStop)
        return;  // there was nothing to open it with, and may be now
    }
  }

  void Answer(int connection) const {
    if (!IsOurUser(connection) || Await(connection, kPatienceMs) != Event::kReady) return;
    std::array<std::byte, kMostMessageUnits * sizeof(char16_t)> bytes{};
    // The whole length, also of a message that is too long for the room.
    const ssize_t length = recv(connection, bytes.data(), bytes.size(), MSG_TRUNC);
    if (length <= 0 || static_cast<std::size_t>(length) > bytes.size()) return;
    const auto text = TextOfMessage(std::span(bytes).first(static_cast<std::size_t>(length)));
    const char answer = text && take_(*text) ? kYes : kNo;
    send(connection, &answer, sizeof answer, MSG_NOSIGNAL);
  }

  const fs::path name_;
  const Descriptor listener_, stop_;
  const Take take_;
  std::thread thread_;
};

// It gets the name that it is found by only when it answers: who is refused there takes it for a dead one.
bool OpenListener(int listener, const fs::path& name) {
  const fs::path before = name.parent_path() / ("." + name.filename().string());
  const auto address = AddressOf(before);
  if (!address) return false;
  fchmod(listener, S_IRUSR | S_IWUSR);  // what it is made with below
  if (WithAddress(bind, listener, *address) != 0) return false;
  const bool opened = chmod(before.c_str(), S_IRUSR | S_IWUSR) == 0 && listen(listener, kMostWaiting) == 0 &&
                      rename(before.c_str(), name.c_str()) == 0;
  if (!opened) unlink(before.c_str());
  return opened;
}

// The sockets of windows, of those used last first.
std::vector<fs::path> SocketsIn(const fs::path& folder) {
  std::vector<std::pair<fs::file_time_type, fs::path>> found;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    std::error_code ignored;
    if (!entry->path().filename().string().starts_with(NameStart()) || !entry->is_socket(ignored)) continue;
    found.emplace_back(entry->last_write_time(ignored), entry->path());
  }
  std::sort(found.begin(), found.end(), std::greater());
  std::vector<fs::path> sockets;
  sockets.reserve(found.size());
  for (auto& [time, path] : found)
    sockets.push_back(std::move(path));
  return sockets;
}

enum class Delivery { kTaken, kRefused, kNobodyThere };

Delivery SendTo(const fs::path& path, std::span<const std::byte> message) {
  const auto address = AddressOf(path);
  const Descriptor connection(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
  if (!address || !connection) return Delivery::kNobodyThere;
  const timeval patience{.tv_sec = kPatienceMs / 1000, .tv_usec = 0};
  for (const int direction : {SO_SNDTIMEO, SO_RCVTIMEO})
    setsockopt(connection.Number(), SOL_SOCKET, direction, &patience, sizeof patience);
  if (WithAddress(connect, connection.Number(), *address) != 0) {
    if (errno != ECONNREFUSED) return Delivery::kRefused;
    unlink(path.c_str());  // of a program that was killed
    return Delivery::kNobodyThere;
  }
  if (!IsOurUser(connection.Number())) return Delivery::kRefused;
  if (send(connection.Number(), message.data(), message.size(), MSG_NOSIGNAL) < 0) return Delivery::kRefused;
  char answer = kNo;
  const ssize_t length = recv(connection.Number(), &answer, sizeof answer, 0);
  return length == 1 && answer == kYes ? Delivery::kTaken : Delivery::kRefused;
}

}  // namespace

std::unique_ptr<InstanceLink> ListenForLinks(InstanceLink::Take take) {
  const fs::path folder = RuntimeFolder();
  if (folder.empty()) return nullptr;
  const fs::path name = folder / RandomName();
  const int listener = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  const int stop = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  if (listener >= 0 && stop >= 0 && OpenListener(listener, name)) {
    try {
      return std::make_unique<SocketLink>(name, listener, stop, std::move(take));
    } catch (const std::system_error&) {
      unlink(name.c_str());  // no thread is left; the object has closed both
      return nullptr;
    }
  }
  if (listener >= 0) close(listener);
  if (stop >= 0) close(stop);
  return nullptr;
}

bool SendToInstance(std::u16string_view commandLine) {
  const std::vector<std::byte> message = MessageOf(commandLine);
  const fs::path folder = RuntimeFolder();
  if (message.empty() || folder.empty()) return false;
  int asked = 0;
  for (const fs::path& socket : SocketsIn(folder)) {
    const Delivery delivery = SendTo(socket, message);
    if (delivery == Delivery::kTaken) return true;
    if (delivery == Delivery::kRefused && ++asked == kMostAsked) break;
  }
  return false;
}

}  // namespace quillet
