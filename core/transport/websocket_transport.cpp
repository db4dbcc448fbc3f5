#include "core/transport/websocket_transport.h"

#include <chrono>
#include <optional>
#include <system_error>
#include <utility>

#include "core/transport/websocket_line.h"
#include "platform/stream_tuning.h"

namespace quillet {
namespace {

using Kind = WebSocketExchange::Kind;

// How long the peer has to say goodbye as well.
constexpr std::chrono::milliseconds kGoodbye{1500};

constexpr int kMostQuestions = 2;

}  // namespace

WebSocketTransport::WebSocketTransport(std::string target, std::string authority, Resolver resolver,
                                       WebSocketPatience patience)
    : uri_("wss://" + std::move(target)),
      authority_(std::move(authority)),
      patience_(patience),
      lookup_(std::move(resolver)) {}

WebSocketTransport::~WebSocketTransport() = default;

TransportEnd WebSocketTransport::Run(TransportEvents& events) {
  const WebSocketAddress address = ReadWebSocketAddress(uri_);
  if (!address.fault.empty()) return {EndReason::kBadAddress, address.fault};
  // The library looks the name up once more, but cannot be stopped while it does: it begins only when the
  // resolver is known to answer.
  const std::optional<Resolution> resolution = lookup_.Run(address.host, address.port);
  if (!resolution || exchange_->Stopped()) return {EndReason::kCancelled, {}};
  if (resolution->addresses.empty()) return {EndReason::kResolveFailed, resolution->error};

  const auto line = std::make_shared<WebSocketLine>(uri_, authority_, exchange_);
  {
    std::lock_guard lock(lineLock_);
    line_ = line;
  }
  bool connected = false;
  TransportEnd end = Follow(*line, events, *resolution, connected);
  line->Close(connected ? kGoodbye : std::chrono::milliseconds(0));
  return end;
}

TransportEnd WebSocketTransport::Follow(WebSocketLine& line, TransportEvents& events,
                                        const Resolution& resolution, bool& connected) {
  const std::string timedOut = std::make_error_code(std::errc::timed_out).message();
  bool answers = false;
  int questions = 0;
  while (true) {
    const WebSocketExchange::Item item = exchange_->Take(connected ? patience_.silence : patience_.opening);
    switch (item.kind) {
      case Kind::kOpened:
        connected = true;
        // The library shows nobody its socket, and leaves it as the system makes one: a key would wait until
        // the one before it is acknowledged.
        TuneStreamsTo(resolution.addresses);
        events.OnConnected({});
        break;
      case Kind::kBytes:
        questions = 0;
        events.OnReceived({reinterpret_cast<const std::uint8_t*>(item.bytes.data()), item.bytes.size()});
        break;
      case Kind::kSignOfLife:
        questions = 0;
        answers = true;
        break;
      case Kind::kSilence:
        if (!connected) return {EndReason::kGatewaySilent, timedOut};
        if (answers && questions == kMostQuestions) return {EndReason::kReadFailed, timedOut};
        ++questions;
        line.Ping();
        break;
      case Kind::kEnd:
        return item.end;
      case Kind::kStopped:
        return {connected ? EndReason::kClosedByUser : EndReason::kCancelled, {}};
    }
  }
}

std::size_t WebSocketTransport::Write(std::span<const std::uint8_t> bytes) {
  const std::shared_ptr<WebSocketLine> line = Line();
  // The library takes an empty message for a mistake.
  if (bytes.empty() || !line || !exchange_->MaySend()) return 0;
  if (!line->Send(bytes)) return 0;
  // Whether the peer answers such a question is asked when it has something of ours to read in any case: one
  // that leaves with something unread cuts off what it said last.
  if (!std::exchange(asked_, true)) line->Ping();
  return bytes.size();
}

std::shared_ptr<WebSocketLine> WebSocketTransport::Line() {
  std::lock_guard lock(lineLock_);
  return line_;
}

void WebSocketTransport::Stop() {
  lookup_.Abandon();
  exchange_->Stop();
}

}  // namespace quillet
