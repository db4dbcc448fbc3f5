// The web sites that the demo's articles link to, over real connections.
#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>

#include "demo/pictures/picture_server.h"
#include "tests/support/loopback_server.h"
#include "tests/support/scratch_folder.h"

namespace quillet {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::filesystem::path kPictures = QUILLET_SOURCE_DIR "/demo/content/pictures";

std::string Get(const std::string& address, const std::string& fields = {}) {
  const std::size_t slash = address.find('/');
  return "GET " + address.substr(slash) + " HTTP/1.1\r\nHost: " + address.substr(0, slash) + "\r\n" + fields +
         "\r\n";
}

class Browser {
 public:
  explicit Browser(const demo::PictureServer& server) {
    const Resolution found = ResolveHost("127.0.0.1", std::to_string(server.Port()));
    EXPECT_EQ(socket_.Connect(found.addresses.at(0), stop_), Socket::Result::kOk);
  }
  void Send(std::string_view text) { EXPECT_TRUE(SendText(socket_, text, stop_)); }
  // At least as many bytes, or all until the connection ends.
  const std::string& Receive(std::size_t bytes = std::string::npos) {
    ReceiveText(socket_, got_, bytes, stop_);
    return got_;
  }
  std::string All(const std::string& request) {
    Send(request);
    return Receive();
  }

 private:
  StopSignal stop_;
  Socket socket_;
  std::string got_;
};

class PicturesTest : public ::testing::Test {
 protected:
  std::string Answer(const std::string& request) { return Browser(server).All(request); }
  demo::PictureServer server{kPictures, 0};
};

TEST_F(PicturesTest, OneConnectionAsksForOnePictureAfterAnother) {
  EXPECT_EQ(server.Problems(), std::vector<std::string>());
  Browser browser(server);
  const std::string last = Get("PICTURES.example:80/food/soap-wall", "Connection: close\r\n");
  const std::string got = browser.All(Get("pictures.example/leaf.bmp") + Get("short.example/sunset") +
                                      Get("pictures.example/../table.txt") + last);
  EXPECT_THAT(got, StartsWith("HTTP/1.1 200 OK\r\nContent-Type: image/bmp\r\nContent-Length: 57"));
  EXPECT_THAT(got, HasSubstr("HTTP/1.1 302 Found\r\nLocation: https://i.pictures.example/sea.jpg\r\n"));
  EXPECT_THAT(got, HasSubstr("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\nHTTP/1.1 200 OK"));
  EXPECT_THAT(got, HasSubstr("content=\"https://pictures.example/food/soap-wall.jpg\""));
}

TEST_F(PicturesTest, WhatIsNoRequestIsRefused) {
  const std::string host = "Host: pictures.example\r\n";
  for (const std::string& bad :
       {"GET /sea.jpg HTTP/1.1\r\n\r\n" + std::string(), "GET /sea.jpg HTTP/2.0\r\n" + host + "\r\n",
        "GET sea.jpg HTTP/1.1\r\n" + host + "\r\n", "GET /sea.jpg HTTP/1.1\r\n" + host + host + "\r\n",
        "GET /sea.jpg HTTP/1.1\r\n" + host + "no field\r\n\r\n", std::string("\0\r\n\r\n", 5),
        "GET /sea.jpg HTTP/1.1\r\n" + host + "Content-Length: 1\r\n\r\n", Get("a/" + std::string(9000, 'a'))})
    EXPECT_THAT(Answer(bad), StartsWith("HTTP/1.1 400 ")) << bad;
  EXPECT_THAT(Answer("POST /sea.jpg HTTP/1.1\r\n" + host + "\r\n"), StartsWith("HTTP/1.1 405 "));
}

TEST_F(PicturesTest, WhatBreaksBreaksAsItSays) {
  const auto sizes = [&](const std::string& path) {
    const std::string got = Answer(Get("faults.example" + path));
    const std::size_t length = got.find("Content-Length: ");
    return std::pair(std::stoul(got.substr(length + 16)), got.size() - got.find("\r\n\r\n") - 4);
  };
  const auto [promised, sent] = sizes("/cut-off.jpg");
  EXPECT_EQ(sent, promised / 2);
  const auto [less, more] = sizes("/overlong.jpg");
  EXPECT_EQ(less, more / 2);
  EXPECT_THAT(Answer(Get("faults.example/mislabelled.jpg", "Connection: close\r\n")),
              HasSubstr("Content-Type: image/jpeg\r\n"));
}

TEST(PictureServerTest, EndsWhateverItsClientsAreAt) {
  auto server = std::make_unique<demo::PictureServer>(kPictures, 0);
  std::list<Browser> browsers;
  for (const char* const path : {"/endless.jpg", "/slow.jpg", "/stalls.jpg"})
    browsers.emplace_back(*server).Send(Get(std::string("faults.example") + path));
  for (Browser& browser : browsers)
    EXPECT_THAT(browser.Receive(1000), StartsWith("HTTP/1.1 200 OK"));
  browsers.emplace_back(*server).Send(Get("faults.example/silent.jpg") + "GET");
  browsers.emplace_back(*server).Send("GET");
  const auto begin = std::chrono::steady_clock::now();
  server.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
}

TEST(PictureServerTest, RowsThatCannotBeUsedAreComplainedOf) {
  ScratchFolder folder;
  std::ofstream(folder.Path() / "table.txt") << "a.example|/a|file|../users.txt\nb.example|/b|file\n"
                                                "c.example|/c|fly|c.jpg\nd.example|/d|file|gone.jpg\n"
                                                "e.example|/e|status|500\n";
  const demo::PictureServer server(folder.Path(), 0);
  EXPECT_EQ(server.Problems().size(), 4u);
  EXPECT_EQ(server.Hosts(), std::vector<std::string>{"e.example"});
}

}  // namespace
}  // namespace quillet
