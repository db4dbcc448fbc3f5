#include "demo/pictures/picture_client.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

namespace quillet::demo {
namespace {

constexpr int kBadRequest = 400;
constexpr int kNotFound = 404;
constexpr int kMethodNotAllowed = 405;
constexpr int kFound = 302;

// Of a slow answer.
constexpr int kPieces = 60;
constexpr int kPauseMs = 250;

constexpr std::size_t kEndlessPiece = 64 * 1024;

std::string_view ReasonOf(int status) {
  switch (status) {
    case kFound:
      return "Found";
    case kBadRequest:
      return "Bad Request";
    case kNotFound:
      return "Not Found";
    case kMethodNotAllowed:
      return "Method Not Allowed";
    default:
      return "Error";
  }
}

std::string Length(std::size_t bytes) {
  return "Content-Length: " + std::to_string(bytes) + "\r\n";
}

// The head of a file's answer up to its length. One that does not stay says so.
std::string HeadOf(std::string_view type, bool staysOpen) {
  return "HTTP/1.1 200 OK\r\nContent-Type: " + std::string(type) + "\r\n" +
         (staysOpen ? "" : "Connection: close\r\n");
}

int NumberOf(const std::string& text) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

void PictureClient::Serve() {
  HttpRequest request;
  HttpFault fault = HttpFault::kNone;
  while (ReadRequest(request, fault)) {
    After after = After::kEnd;
    if (fault == HttpFault::kMalformed)
      AnswerStatus(kBadRequest, {}, after);
    else if (fault == HttpFault::kOtherMethod)
      AnswerStatus(kMethodNotAllowed, "Allow: GET\r\n", after);
    else
      after = Answer(request);
    if (after == After::kEnd) return;
  }
}

bool PictureClient::ReadRequest(HttpRequest& request, HttpFault& fault) {
  std::array<std::uint8_t, kLongestRequest> buffer;
  while (!reader_.Next(request, fault)) {
    std::size_t count = 0;
    if (socket_.Receive(buffer, count, stop_) != Socket::Result::kOk) return false;
    reader_.Feed({reinterpret_cast<const char*>(buffer.data()), count});
  }
  return true;
}

PictureClient::After PictureClient::Answer(const HttpRequest& request) {
  const After after = request.staysOpen ? After::kStay : After::kEnd;
  const PictureRow* const row = table_.Find(request.host, request.target);
  if (row == nullptr) return AnswerStatus(kNotFound, {}, after);
  if (row->manner == Manner::kMoved)
    return AnswerStatus(kFound, "Location: " + row->what.front() + "\r\n", after);
  if (row->manner == Manner::kStatus) return AnswerStatus(NumberOf(row->what.front()), {}, after);
  if (row->manner == Manner::kSilent) {
    WaitUntilGone();
    return After::kEnd;
  }
  PictureFile file = table_.FileFor(*row, request.target);
  if (row->manner == Manner::kMislabel) file.type = "image/jpeg";
  if (row->manner != Manner::kFile && row->manner != Manner::kMislabel) return AnswerOddly(row->manner, file);
  const bool isSent =
      Send(HeadOf(file.type, request.staysOpen) + Length(file.bytes.size()) + "\r\n") && Send(file.bytes);
  return isSent ? after : After::kEnd;
}

PictureClient::After PictureClient::AnswerOddly(Manner manner, const PictureFile& file) {
  const std::string head = HeadOf(file.type, false);
  const std::string_view bytes = file.bytes;
  const std::string_view half = bytes.substr(0, bytes.size() / 2);
  const std::size_t promised = manner == Manner::kOverlong ? half.size() : bytes.size();
  if (!Send(manner == Manner::kEndless ? head + "\r\n" : head + Length(promised) + "\r\n"))
    return After::kEnd;
  if (manner == Manner::kSlow) {
    SendSlowly(bytes);
  } else if (manner == Manner::kStalls) {
    if (Send(half)) WaitUntilGone();
  } else if (manner == Manner::kCutOff) {
    Send(half);
  } else {
    if (Send(bytes) && manner == Manner::kEndless) SendForEver();
  }
  return After::kEnd;
}

PictureClient::After PictureClient::AnswerStatus(int status, std::string_view fields, After after) {
  const std::string head = "HTTP/1.1 " + std::to_string(status) + " " + std::string(ReasonOf(status)) +
                           "\r\n" + std::string(fields) +
                           (after == After::kEnd ? "Connection: close\r\n" : "") + Length(0) + "\r\n";
  return Send(head) ? after : After::kEnd;
}

bool PictureClient::Send(std::string_view bytes) {
  std::size_t count = 0;
  return socket_.Send({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, count, stop_) ==
         Socket::Result::kOk;
}

void PictureClient::SendSlowly(std::string_view bytes) {
  const std::size_t piece = bytes.size() / kPieces + 1;
  while (!bytes.empty() && Send(bytes.substr(0, piece)) && !stop_.WaitFor(kPauseMs))
    bytes.remove_prefix(std::min(piece, bytes.size()));
}

void PictureClient::SendForEver() {
  const std::string piece(kEndlessPiece, '\0');
  while (Send(piece)) {
  }
}

void PictureClient::WaitUntilGone() {
  std::array<std::uint8_t, 512> buffer;
  std::size_t count = 0;
  while (socket_.Receive(buffer, count, stop_) == Socket::Result::kOk) {
  }
}

}  // namespace quillet::demo
