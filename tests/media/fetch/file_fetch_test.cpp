#include "media/fetch/file_fetch.h"

#include <gtest/gtest.h>

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>

#include "demo/wires/certificate_authority.h"
#include "tests/support/event_wait.h"
#include "tests/support/wine.h"

namespace quillet {
namespace {

TEST(FileFetchTest, ACertificateThatNobodyVouchesForIsToldAndNothingIsSaidToItsHost) {
  if (IsWine()) GTEST_SKIP() << "its TLS cannot be a server";
  const demo::ServerCertificate made = demo::CertificateAuthority().Issue();
  QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
  tls.setLocalCertificate(QSslCertificate(QByteArray::fromStdString(made.certificate)));
  tls.setPrivateKey(QSslKey(QByteArray::fromStdString(made.key), QSsl::Ec));
  ASSERT_FALSE(tls.localCertificate().isNull() || tls.privateKey().isNull());
  QSslServer server;
  server.setSslConfiguration(tls);
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  QByteArray heard;
  QObject::connect(&server, &QTcpServer::newConnection, [&] {
    QTcpSocket* const client = server.nextPendingConnection();
    QObject::connect(client, &QTcpSocket::readyRead, [&heard, client] { heard += client->readAll(); });
  });
  WebClient web(Reach::kAnyHost);
  for (const FetchStrategy strategy : {FetchStrategy::kOneConnection, FetchStrategy::kManyConnections}) {
    web.SetStrategy(strategy);
    FileFetch fetch(web, QUrl(QStringLiteral("https://localhost:%1/").arg(server.serverPort())), {});
    std::optional<FetchedFile> done;
    QObject::connect(&fetch, &FileFetch::Done, [&](const FetchedFile& file) { done = file; });
    ASSERT_TRUE(WaitWithEvents([&] { return done.has_value(); }));
    EXPECT_EQ(static_cast<int>(done->fault), static_cast<int>(PictureFault::kNotSecure));
  }
  EXPECT_EQ(heard, "");
}

}  // namespace
}  // namespace quillet
