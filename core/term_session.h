// One connection to a site: the screen, the transport with its receive thread, and the send queue with its
// sender thread. Owned by the document; driven from the user-interface thread, and by automation through
// the send operations, which any thread may call.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "core/cell_position.h"
#include "core/endpoints.h"
#include "core/live_screen.h"
#include "core/receive_observer.h"
#include "core/session_state.h"
#include "core/site_address.h"
#include "core/term_screen.h"
#include "core/transport/host_key.h"
#include "core/transport/transport.h"

namespace quillet {

enum class ReactionWait { kNone, kUntilCursorMoves };
enum class Wrap { kNone, kAt78Columns, kAt78ColumnsLeftOpen };

class SessionLink;

// The two cells that tell which line the BBS's menu cursor stands on.
using MenuMark = std::array<std::uint8_t, 2>;

struct SessionOptions {
  Endpoints endpoints;
  ScreenWatcher* watcher = nullptr;                      // not owned; may be null
  NotifyTarget* notify = nullptr;                        // not owned; may be null
  std::function<void(std::string_view line)> debugLine;  // may be empty; called from any thread
};

// What the caller of Connect knows about the connection that no address says.
struct ConnectTraits {
  bool isBbs = false;         // the site is the BBS, whatever its name: the embedded demo's
  bool autoLogin = false;     // the login dialogue may be answered
  HostKeyQuestion hostKey{};  // asked before anything is typed where the way to the site knows such keys
};

class TermSession : private TransportEvents {
 public:
  explicit TermSession(SessionOptions options);
  ~TermSession() override;  // disconnects

  // Called every 10 ms while Connect waits, on the calling thread; returns false to give up.
  using IdleHook = std::function<bool()>;

  // Ends any previous connection, resets the screen and begins to connect; the site's answer is not waited
  // for. The watcher is handed a screen when the attempt has ended: kConnected or kDisconnected.
  // User-interface thread. A call from within the idle hook or the watcher does nothing.
  void StartConnect(std::string_view address, const ConnectTraits& traits = {});
  // The same over a transport made by the caller (a recorded stream, a test's script), which is not null;
  // `host` is empty then.
  void StartConnectWith(std::unique_ptr<Transport> transport, const ConnectTraits& traits = {});

  // The same two, but they return when the attempt has ended; `state` then is connected or closed.
  void Connect(std::string_view address, const IdleHook& idle = {}, const ConnectTraits& traits = {});
  void ConnectWith(std::unique_ptr<Transport> transport, const IdleHook& idle = {},
                   const ConnectTraits& traits = {});

  // Ends the connection and joins both threads; returns within two seconds whatever the peer does, and within
  // a fraction of one unless the transport has a goodbye that the peer leaves without an answer. From within
  // the idle hook it only asks the attempt to end.
  void Disconnect();
  // Asks the connection of that `connectionNumber` to end and waits for nothing: it ends by itself soon, as
  // closed by the user. Another connection that has taken its place stays. Any thread.
  void RequestDisconnect(unsigned connection);

  // Who is shown what comes, on whatever connection; null: nobody. When it returns, the one before is left
  // alone. Any thread but the receive thread.
  void SetObserver(ReceiveObserver* observer);

  // Sends the sequence of a key (Windows virtual-key code) and logs it. Returns false for a key without one.
  bool SendKey(int virtualKey, ReactionWait wait = ReactionWait::kNone);
  // The common entry for typed, pasted and automatic input. Bytes go out in the order of the calls. While a
  // few bytes of an earlier call still wait, it waits for them to go out first; on the user-interface thread
  // (the one that called Connect) never longer than 100 ms, and `wait` no longer either. Bytes for a closed
  // session are dropped.
  void SendBytes(std::string_view bytes, ReactionWait wait = ReactionWait::kNone);
  // Converts to Big5 (characters without a code vanish, all but ASCII when the table is missing) and sends.
  // With kAt78Columns each piece of at most 78 columns is followed by a CR, with kAt78ColumnsLeftOpen each
  // but the last; a character is never cut.
  void SendText(std::u16string_view text, Wrap wrap = Wrap::kNone);
  // Moves the BBS's cursor by keys from `start`, or from where the screen's cursor stands.
  void MoveCursorTo(int row, int col, std::optional<CellPosition> start = std::nullopt);

  // Fields that other rooms read. Those that cross threads are atomic.
  TransportKind kind = TransportKind::kTelnet;
  std::string host;
  std::string port = "23";
  std::atomic<bool> sendDirect{false};  // write at once instead of queueing
  TermScreen screen;                    // receive thread; others read `live`
  LiveScreen live;
  std::atomic<SessionState> state{SessionState::kIdle};
  std::atomic<bool> isBbsSite{false};
  std::atomic<bool> isMainBbs{false};
  std::atomic<bool> autoLogin{false};         // the login dialogue may be answered on this connection
  std::atomic<unsigned> connectionNumber{0};  // one more with each attempt
  // Written by automation, mirrored into the screen before its next batch: no classification meanwhile.
  std::atomic<bool> frozen{false};
  std::atomic<bool> noSendWait{false};
  std::atomic<int> idleMark{0};               // 0 on every send; the view's idle logic writes other values
  std::atomic<std::int64_t> connectedAt{0};   // when the last attempt ended, seconds since 1970
  std::atomic<std::int64_t> lastSendTick{0};  // milliseconds of the steady clock
  // How often something has been given to be sent, and how often something has come: who has waited since one
  // of them sees whether the other has happened.
  std::atomic<unsigned> sentCount{0};
  std::atomic<unsigned> receivedCount{0};
  std::mutex keyLogLock;
  std::vector<std::string> keyLog;  // the newest kKeyLogLimit; guarded by keyLogLock

  // Who reads the log wants to know whether somebody types; a key held down for hours must not fill memory.
  static constexpr std::size_t kKeyLogLimit = 1000;

  // Largest number of bytes that the sender takes at a time. One Ethernet frame holds it, and the user can
  // still change his mind about the rest of a long paste.
  static constexpr std::size_t kSendChunk = 1024;

  // The last attempt had made a connection, even if that has ended. Any thread.
  bool WasConnected() const;
  // How the last connection ended; kNone while it lasts. Any thread.
  TransportEnd LastEnd() const;
  // Bytes that were accepted but not written before the last connection ended, the opening keys left out. Any
  // thread.
  std::size_t UnsentBytes() const;

 private:
  // The connecting thread, while no receive thread exists.
  void EndLink();
  void ResetForAttempt(const SiteAddress& address, const ConnectTraits& traits);
  void RecogniseHost();
  void Begin(std::unique_ptr<Transport> transport);
  void Fail(EndReason reason, std::string detail);
  void WaitForAttempt(const IdleHook& idle);

  // Receive thread.
  void RunReceiver(SessionLink& link);
  void SettleAttempt(SessionLink& link);
  void OnConnected(std::string_view peerAddress) override;
  void OnReceived(std::span<const std::uint8_t> bytes) override;
  bool Pause(int milliseconds) override;
  void OnDebugLine(std::string_view line) override;
  void RecognisePeer(std::string_view peerAddress);
  void SendDeleteKeys();

  // Either of these two threads.
  void ReportEnd(TransportEnd end);
  void HandOver(ScreenReason reason);
  void MirrorFields();

  // Any thread.
  std::shared_ptr<SessionLink> Link() const;
  // Whether a wait would wait for its own thread: on the receive thread, or in the idle hook.
  bool CalledFromInside() const;
  bool OnUserInterfaceThread() const;
  bool OnReceiveThread() const;
  void SendDirectly(SessionLink& link, std::string_view bytes, ReactionWait wait);
  void WaitForReaction(const SessionLink& link, MenuMark before);

  const SessionOptions options_;
  std::mutex lifecycleLock_;  // held while a connection is begun and while one is ended
  mutable std::mutex linkLock_;
  std::shared_ptr<SessionLink> link_;  // the last attempt's; guarded by linkLock_
  std::atomic<std::thread::id> userInterfaceThread_{};
  std::atomic<std::thread::id> waitingThread_{};  // in Connect, and so in the idle hook
  std::atomic<std::thread::id> receiverThread_{};
  mutable std::mutex endLock_;
  TransportEnd end_;                     // guarded by endLock_
  std::mutex observerLock_;              // held while it is called
  ReceiveObserver* observer_ = nullptr;  // guarded by observerLock_
};

// Keys that move the BBS's cursor: Home, then down or up, then right; within a row only right or left.
// Empty when both positions are equal.
std::string CursorKeys(CellPosition from, CellPosition to);

}  // namespace quillet
