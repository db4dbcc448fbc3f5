#include "demo/client.h"

#include <array>

#include "core/charset.h"
#include "demo/big5_text.h"
#include "demo/pages/login_page.h"
#include "demo/pages/prompts.h"
#include "demo/pages/user_list_page.h"

namespace quillet::demo {
namespace {

using namespace std::chrono_literals;

constexpr const char* kGreetedFlag = "greeted";  // gets a message from the system after the login
constexpr auto kGreetingDelay = 3s;
constexpr std::size_t kReceiveBuffer = 4096;
constexpr int kMessageRow = 22;
constexpr std::uint8_t kSenderAttr = Attr(kYellow, kCyan, Weight::kBold);
constexpr std::uint8_t kMessageAttr = Attr(kWhite, kMagenta, Weight::kBold);
constexpr int kMessageColumns = 76;  // leaves a plain cell for the cursor

std::span<const std::uint8_t> Bytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// An instant message lies over the bottom rows, beside the row on which something is being typed.
int DrawMessage(Canvas& canvas, const InstantMessage& message) {
  const int row = canvas.CursorRow() == kMessageRow ? kRows - 1 : kMessageRow;
  canvas.ClearRow(row);
  const int col = canvas.Put(row, 0, ToBig5(u"★") + message.from, kSenderAttr);
  const std::string text = " " + message.text + " ";
  canvas.MoveCursor(row, canvas.Put(row, col, CutColumns(text, kMessageColumns - col), kMessageAttr));
  return row;
}

}  // namespace

Client::Client(World& world, const House& house, std::unique_ptr<Wire> wire, ClientOptions options)
    : world_(world),
      house_(house),
      wire_(std::move(wire)),
      options_(std::move(options)),
      splitter_(options_.writes, options_.seed),
      thread_([this] { Run(); }) {}

Client::~Client() {
  Stop();
  if (thread_.joinable()) thread_.join();
}

void Client::Stop() {
  stop_.Set();
  mailbox_->Close(CloseOrder::kConnectionLost);
}

void Client::Run() {
  Log("connected");
  if (wire_->Open(stop_)) Serve();
  wire_->Close();
  Log("closed");
  finished_ = true;
}

void Client::Serve() {
  std::thread receiver([this] { Receive(); });
  Open(std::make_unique<LoginPage>(*this));
  while (Show() && !hungUp_) {
    const Mailbox::Contents contents = mailbox_->Take(Deadline());
    Handle(contents);  // what was sent before the connection was lost, too
    if (contents.close == CloseOrder::kConnectionLost) break;
  }
  Stop();
  receiver.join();
  if (session_ != 0) world_.Leave(session_);
}

void Client::Receive() {
  std::array<std::uint8_t, kReceiveBuffer> buffer;
  while (const std::size_t count = wire_->Receive(buffer, stop_))
    if (!mailbox_->PutBytes({reinterpret_cast<const char*>(buffer.data()), count})) return;
  mailbox_->Close(CloseOrder::kConnectionLost);
}

void Client::Handle(const Mailbox::Contents& contents) {
  if (contents.close == CloseOrder::kKickedOut) {
    ShowKickedOut();
    return;
  }
  for (const Key& key : decoder_.Feed(contents.bytes)) {
    OnKey(key);
    closed_.clear();
    if (hungUp_) return;
  }
  for (const InstantMessage& message : contents.messages) {
    messageIsNew_ = messageIsNew_ || messages_.empty();
    messages_.push_back(message);
  }
  if (contents.bell || !contents.messages.empty()) RingBell();
  OnTime();
  closed_.clear();
}

void Client::OnKey(const Key& key) {
  if (!messages_.empty()) {
    messages_.pop_front();
    messageIsNew_ = !messages_.empty();
    if (key.Is(KeyKind::kLineFeed) || key.Is(KeyKind::kEnter)) return;
  }
  if (key.IsControl('L')) {
    Refresh();
    return;
  }
  Page& top = *pages_.back();
  if (key.IsControl('U') && top.HasGlobalKeys())
    Open(std::make_unique<UserListPage>(*this));
  else
    top.OnKey(key);
}

void Client::ShowKickedOut() {
  Open(std::make_unique<AnyKeyPage>(
      *this, 10, std::vector<std::string>{ToBig5(u"          這個代號已在別處登入，本連線到此結束。")},
      AnyKeyPage::Covers::kScreen));
  Log("replaced by another login of " + user_.id);
  HangUp();
}

std::optional<Mailbox::Clock::time_point> Client::Deadline() const {
  const auto page = pages_.back()->Deadline();
  if (!page || !systemMessage_) return page ? page : systemMessage_;
  return std::min(*page, *systemMessage_);
}

void Client::OnTime() {
  const auto now = Mailbox::Clock::now();
  if (systemMessage_ && now >= *systemMessage_) {
    systemMessage_.reset();
    mailbox_->PutMessage({"sysop", ToBig5(u"歡迎回來，祝你今天讀到好文章")});
  }
  const auto page = pages_.back()->Deadline();
  if (page && now >= *page) pages_.back()->OnTime();
}

void Client::Open(std::unique_ptr<Page> page) {
  pages_.push_back(std::move(page));
}

void Client::CloseTop() {
  closed_.push_back(std::move(pages_.back()));
  pages_.pop_back();
}

void Client::CloseToMenu() {
  while (pages_.size() > 1)
    CloseTop();
}

void Client::LogIn(const User& user) {
  while (!pages_.empty())
    CloseTop();
  user_ = user;
  session_ = world_.Enter(user_, mailbox_);
  if (user_.Has(kGreetedFlag)) systemMessage_ = Mailbox::Clock::now() + kGreetingDelay;
  Log(user_.id + " logged in");
}

void Client::RingBell() {
  Send("\a");
}

void Client::DrawPages(Canvas& canvas) {
  std::size_t first = pages_.size() - 1;
  while (first > 0 && !pages_[first]->CoversScreen())
    --first;
  for (; first < pages_.size(); ++first)
    pages_[first]->Draw(canvas);
}

bool Client::Show() {
  Canvas canvas;
  DrawPages(canvas);
  if (!messages_.empty()) {
    const int row = DrawMessage(canvas, messages_.front());
    if (messageIsNew_) writer_.ForgetRow(row);
    messageIsNew_ = false;
  }
  const std::string frame = writer_.Frame(canvas);
  for (const std::string_view piece : splitter_.Split(frame))
    if (!Send(piece)) return false;
  return true;
}

bool Client::Send(std::string_view bytes) {
  return wire_->Send(Bytes(bytes), stop_);
}

void Client::Log(const std::string& line) const {
  if (options_.log) options_.log(line);
}

}  // namespace quillet::demo
