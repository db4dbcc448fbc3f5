#include "media/fetch/guarded_door.h"

#include <gtest/gtest.h>

#include <QNetworkAccessManager>
#include <QNetworkReply>

#include "tests/support/event_wait.h"
#include "tests/support/picture_server.h"

namespace quillet {
namespace {

class GuardedDoorTest : public testing::Test {
 protected:
  QNetworkReply::NetworkError Ask(const QNetworkProxy& proxy, const QString& host) {
    QNetworkAccessManager network;
    network.setProxy(proxy);
    const QString address = server.Address(QStringLiteral("/")).replace(QStringLiteral("127.0.0.1"), host);
    const std::unique_ptr<QNetworkReply> reply(network.get(QNetworkRequest(QUrl(address))));
    EXPECT_TRUE(WaitWithEvents([&] { return reply->isFinished(); }));
    body = reply->readAll();
    return reply->error();
  }

  const QByteArray large = QByteArray(3'000'000, 'x');
  QByteArray heard;
  PictureServer server{[this](QTcpSocket& client, const QByteArray&) {
    heard = client.property("request").toByteArray().toLower();
    PictureServer::Answer(client, "200 OK", "", large);
  }};
  QByteArray body;
};

TEST_F(GuardedDoorTest, LetsThroughAllThatIsSaidWhereTheRuleDoes) {
  GuardedDoor door([](const QHostAddress& address) { return address.isLoopback(); });
  for (const QString& host : {QStringLiteral("127.0.0.1"), QStringLiteral("localhost")}) {
    EXPECT_EQ(Ask(door.Proxy(), host), QNetworkReply::NoError);
    EXPECT_EQ(body, large);
    EXPECT_TRUE(heard.startsWith("get / ") && !heard.contains("proxy")) << heard.constData();
  }
  EXPECT_NE(Ask(door.Proxy(), QStringLiteral("nobody.invalid")), QNetworkReply::NoError);
  EXPECT_FALSE(door.HasRefused(QStringLiteral("nobody.invalid")));
}

TEST_F(GuardedDoorTest, AHostThatDoesNotStopIsHungUpOn) {
  GuardedDoor door([](const QHostAddress&) { return true; }, 1'000'000);
  EXPECT_EQ(Ask(door.Proxy(), QStringLiteral("127.0.0.1")), QNetworkReply::RemoteHostClosedError);
  EXPECT_LT(body.size(), large.size() / 2);
}

TEST_F(GuardedDoorTest, NothingReachesAHostThatTheRuleRefusesByAnyOfItsNames) {
  GuardedDoor door([](const QHostAddress& address) { return !address.isLoopback(); });
  for (const QString& host :
       {QStringLiteral("127.0.0.1"), QStringLiteral("localhost"), QStringLiteral("[::1]"),
        QStringLiteral("[::ffff:127.0.0.1]"), QStringLiteral("0x7f.1")})
    EXPECT_NE(Ask(door.Proxy(), host), QNetworkReply::NoError) << qPrintable(host);
  EXPECT_TRUE(door.HasRefused(QStringLiteral("localhost")));
  EXPECT_EQ(server.Connections(), 0);
}

TEST_F(GuardedDoorTest, OtherProgramsAndOtherRequestsAreKeptOut) {
  GuardedDoor door([](const QHostAddress&) { return true; });
  QNetworkProxy proxy = door.Proxy();
  const QByteArray header = proxy.rawHeaderList().first();
  const QByteArray known = "\r\n" + header + ": " + proxy.rawHeader(header) + "\r\n\r\n";
  proxy.setRawHeader(header, "Bearer guess");
  EXPECT_NE(Ask(proxy, QStringLiteral("127.0.0.1")), QNetworkReply::NoError);
  const QByteArray target = "127.0.0.1:" + QByteArray::number(server.Port());
  for (const QByteArray& words :
       {"CONNECT " + target + " HTTP/1.1\r\n\r\n", "\r\nCONNECT " + target + " HTTP/1.1" + known,
        "GET http://" + target + "/ HTTP/1.1" + known, "CONNECT 127.0.0.1 HTTP/1.1" + known,
        "CONNECT 127.0.0.1:70000 HTTP/1.1" + known, "CONNECT :80 HTTP/1.1" + known, known}) {
    QTcpSocket stranger;
    stranger.connectToHost(proxy.hostName(), proxy.port());
    stranger.write(words);
    EXPECT_TRUE(WaitWithEvents([&] { return stranger.state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_TRUE(stranger.readAll().startsWith("HTTP/1.1 40")) << words.constData();
  }
  EXPECT_EQ(server.Connections(), 0);
}

}  // namespace
}  // namespace quillet
