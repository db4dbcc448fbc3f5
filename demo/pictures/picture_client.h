// One connection to the picture server: reads requests and answers each in its row's manner, until the client
// leaves or a manner ends the connection. On a thread of its own.
#pragma once

#include <string_view>

#include "demo/pictures/http_request.h"
#include "demo/pictures/picture_table.h"
#include "platform/socket.h"

namespace quillet::demo {

class PictureClient {
 public:
  // All outlive the object.
  PictureClient(Socket& socket, const PictureTable& table, const StopSignal& stop)
      : socket_(socket), table_(table), stop_(stop) {}

  // Until the end of the connection; soon after `stop` was set at the latest.
  void Serve();

 private:
  enum class After { kStay, kEnd };

  bool ReadRequest(HttpRequest& request, HttpFault& fault);
  After Answer(const HttpRequest& request);
  After AnswerOddly(Manner manner, const PictureFile& file);
  After AnswerStatus(int status, std::string_view fields, After after);
  bool Send(std::string_view bytes);
  void SendSlowly(std::string_view bytes);
  void SendForEver();
  void WaitUntilGone();

  Socket& socket_;
  const PictureTable& table_;
  const StopSignal& stop_;
  HttpRequestReader reader_;
};

}  // namespace quillet::demo
