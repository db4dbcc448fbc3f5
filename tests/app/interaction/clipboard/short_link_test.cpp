#include "app/interaction/clipboard/short_link.h"

#include <gtest/gtest.h>
#include <map>

#include <QPointer>

#include "app/window/tour/tour.h"
#include "tests/support/picture_server.h"

namespace quillet {
namespace {

constexpr int kPatienceMs = 20000;

class ShortLinkTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const ShortLink* const asked : {&link, &hasty, &weary})
      QObject::connect(asked, &ShortLink::Done, [this](const QString& text) { done += text; });
  }

  // Whether an answer comes.
  bool Answers(const QString& path) { return Answers(link, path); }
  bool Answers(ShortLink& asked, const QString& path) {
    done.clear();
    asked.Ask(server.Address(path));
    EXPECT_TRUE(done.isEmpty()) << "not before the caller knows that he has asked";
    return Until([&] { return !done.isEmpty(); });
  }
  static bool Until(const std::function<bool()>& condition) {
    return HandleEventsUntil(condition, kPatienceMs);
  }
  void Respond(QTcpSocket& client, const QByteArray& path) {
    if (path == "/never") return;
    if (path == "/stuck") {
      client.write("HTTP/1.1 200 OK\r\nContent-Length: 30\r\n\r\nhttps://s.test/a");
    } else if (path == "/cut") {
      PictureServer::Answer(client, "200 OK", "Content-Length: 30\r\n", "https://s.test/a");
    } else if (path == "/drip") {
      client.write("HTTP/1.1 200 OK\r\n\r\nhttps://s.test/");
      auto* const drip = new QTimer(&client);
      QObject::connect(drip, &QTimer::timeout, &client, [&client] { client.write("a"); });
      drip->start(20);
    } else if (path == "/loop") {
      PictureServer::Answer(client, "302 Found", "Location: /loop\r\n");
    } else if (path == "/moved") {
      PictureServer::Answer(client, "301 Moved", "Location: " + server.Address("/good").toLatin1() + "\r\n",
                            "https://s.test/wrong");
    } else if (path == "/elsewhere") {
      PictureServer::Answer(client, "302 Found", "Location: file:///etc/passwd\r\n");
    } else {
      PictureServer::Answer(client, statuses.contains(path) ? statuses[path] : "200 OK", {}, bodies[path]);
    }
  }

  std::map<QByteArray, QByteArray> bodies{{"/good", "https://s.test/a\n"}};
  std::map<QByteArray, QByteArray> statuses;
  PictureServer server{[this](QTcpSocket& client, const QByteArray& path) { Respond(client, path); }};
  QNetworkAccessManager network;
  ShortLink link{network};
  ShortLink hasty{network, {.stepMs = 200}};
  ShortLink weary{network, {.totalMs = 500}};
  QStringList done;
};

TEST_F(ShortLinkTest, ALinkIsWhatTheAnswerBeginsWith) {
  const QByteArray longest = "https://s.test/" + QByteArray(2048 - 15, 'x');
  bodies = {{"/good", "https://s.test/a"},
            {"/line", "https://s.test/a\r\nhttps://s.test/b"},
            {"/blank", "https://s.test/a and more"},
            {"/bell", "https://s.test\a/a\x7F"},
            {"/long", longest}};
  for (const char* const path : {"/good", "/line", "/blank", "/bell"}) {
    ASSERT_TRUE(Answers(path));
    EXPECT_EQ(done, QStringList{"https://s.test/a"}) << path;
  }
  ASSERT_TRUE(Answers("/long"));
  EXPECT_EQ(done, QStringList{longest});
  EXPECT_FALSE(link.IsAsking());
}

TEST_F(ShortLinkTest, AnythingElseIsNoLink) {
  bodies = {{"/page", "<html>https://s.test/a</html>"},
            {"/empty", ""},
            {"/http", "http://s.test/a"},
            {"/capitals", "HTTPS://s.test/a"},
            {"/nothing", "https://"},
            {"/chinese", "https://s.test/\xE4\xB8\xAD"},
            {"/broken", "https://s.test/\xFF\xFE"},
            {"/long", "https://s.test/" + QByteArray(2048 - 14, 'x')},
            {"/error", "https://s.test/a"},
            {"/missing", "https://s.test/a"},
            {"/cut", ""},
            {"/huge", "https://s.test/a\n" + QByteArray(10 << 20, 'x')}};
  statuses = {{"/error", "500 Oops"}, {"/missing", "404 Not Found"}};
  for (const auto& [path, body] : bodies) {
    ASSERT_TRUE(Answers(path));
    EXPECT_EQ(done, QStringList{QString()}) << path.toStdString();
  }
}

TEST_F(ShortLinkTest, AStepThatTakesTooLongEndsTheWaiting) {
  for (const char* const path : {"/never", "/stuck"}) {
    ASSERT_TRUE(Answers(hasty, path)) << path;
    EXPECT_EQ(done, QStringList{QString()}) << path;
  }
  ASSERT_TRUE(Answers(weary, "/drip"));
  EXPECT_EQ(done, QStringList{QString()}) << "no step takes long, but all of them do";
}

TEST_F(ShortLinkTest, RedirectsAreFollowedWithinReason) {
  ASSERT_TRUE(Answers("/moved"));
  EXPECT_EQ(done, QStringList{"https://s.test/a"});
  const int before = server.Requests();
  ASSERT_TRUE(Answers("/loop"));
  EXPECT_EQ(done, QStringList{QString()});
  EXPECT_EQ(server.Requests() - before, 6);
  ASSERT_TRUE(Answers("/elsewhere"));
  EXPECT_EQ(done, QStringList{QString()});
}

TEST_F(ShortLinkTest, WhereNobodyAnswersThereIsNoLink) {
  for (const char* const request : {"http://127.0.0.1:1/", "", "file:///etc/passwd", "https://[/"}) {
    link.Ask(request);
    ASSERT_TRUE(Until([&] { return !done.isEmpty(); })) << request;
    EXPECT_EQ(std::exchange(done, {}), QStringList{QString()}) << request;
  }
}

TEST_F(ShortLinkTest, ANewQuestionTakesThePlaceOfTheOldOne) {
  link.Ask(server.Address("/never"));
  ASSERT_TRUE(Answers("/good"));
  EXPECT_EQ(done, QStringList{"https://s.test/a"}) << "only one answer";
  bodies["/good"] = "https://s.test/b";
  ASSERT_TRUE(Answers("/good"));
  EXPECT_EQ(done, QStringList{"https://s.test/b"}) << "nothing is kept";
}

TEST_F(ShortLinkTest, WhatIsDroppedNeverAnswers) {
  link.Ask(server.Address("/good"));
  link.Drop();
  EXPECT_FALSE(link.IsAsking());
  {
    ShortLink other(network);
    QObject::connect(&other, &ShortLink::Done, [] { ADD_FAILURE() << "it is gone"; });
    other.Ask(server.Address("/good"));
  }
  ASSERT_TRUE(Answers(hasty, "/good"));
  EXPECT_EQ(done.size(), 1) << "by now the answer to a question asked later has come";
}

}  // namespace
}  // namespace quillet
