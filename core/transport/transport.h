// One way to reach a BBS. The session owns its transport and runs it on the receive thread; the sender
// thread writes through it. Telnet and the replay of a recorded stream are transports; tests have a scripted
// one that fails on demand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quillet {

// The most that one read hands to the screen, in bytes.
inline constexpr std::size_t kReadSize = 16384;

// Why a connection ended or never came to be; the view turns it into words.
enum class EndReason : int {
  kNone = 0,        // still connecting or connected
  kUnknownScheme,   // the address names a transport that nobody knows
  kAddressTooLong,  //
  kResolveFailed,   // the host has no address
  kConnectFailed,   // nobody answered, or the peer refused
  kCancelled,       // the user gave up while connecting
  kClosedByPeer,    // the other side ended the connection
  kClosedByUser,    //
  kReadFailed,      // the system reported an error while reading or writing
  kEndOfRecording,  // a replayed file has been shown to its end

  // SSH
  kLoginRefused,     // the peer does not let the BBS's public account in
  kTerminalRefused,  // the peer opens no terminal
  kHostKeyChanged,   // the host is not the one that it was; the new key's fingerprint is in the detail

  // WebSocket
  kBadAddress,            // it is none
  kGatewayUnreachable,    // nobody answered where the gateway should be, or the peer refused
  kGatewaySilent,         // somebody answered, and then fell silent before the WebSocket was there
  kGatewayRefused,        // the gateway answered something else than a WebSocket
  kNotSecure,             // the peer does not speak TLS, or none that we do
  kCertificateUntrusted,  // no authority that this system trusts has signed the peer's certificate
  kCertificateWrongName,  // it is another host's
  kCertificateExpired     // it is not valid at this time
};

// What a transport tells its session; all calls on the receive thread.
class TransportEvents {
 public:
  virtual ~TransportEvents() = default;
  // The connection is up. `peerAddress` is the dotted or colon text of the peer, empty when there is none.
  virtual void OnConnected(std::string_view peerAddress) = 0;
  virtual void OnReceived(std::span<const std::uint8_t> bytes) = 0;
  // Sleeps, but wakes at once when the session is asked to stop. Returns false then.
  virtual bool Pause(int milliseconds) = 0;
  virtual void OnDebugLine(std::string_view line) = 0;
};

struct TransportEnd {
  EndReason reason = EndReason::kNone;
  std::string detail;  // the system's own text, when it has one
};

class Transport {
 public:
  Transport() = default;
  Transport(const Transport&) = delete;
  Transport& operator=(const Transport&) = delete;
  virtual ~Transport() = default;

  // Connects, reports OnConnected, then delivers everything that arrives until the connection ends or Stop
  // is called. Returns why. Receive thread; called once.
  virtual TransportEnd Run(TransportEvents& events) = 0;

  // Writes all bytes, waiting for the peer as long as it takes or until Stop. Returns the number written;
  // less than all means that the connection is gone. Any thread, but one at a time.
  virtual std::size_t Write(std::span<const std::uint8_t> bytes) = 0;

  // Makes Run and Write return soon, whatever they are waiting for. Any thread, more than once.
  virtual void Stop() = 0;

  // Whether the session opens with a handful of Delete keys, as the BBS expects of this way to reach it.
  virtual bool OpensWithDeleteKeys() const { return false; }
};

}  // namespace quillet
