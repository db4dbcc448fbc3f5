// A web server on a free loopback port, in the thread that made it: what it answers is the test's.
#pragma once

#include <functional>
#include <utility>

#include <QTcpServer>
#include <QTcpSocket>

namespace quillet {

class PictureServer {
 public:
  // Called once per request; `path` as in the request line.
  using Handler = std::function<void(QTcpSocket& client, const QByteArray& path)>;

  explicit PictureServer(Handler handler) : handler_(std::move(handler)) {
    server_.listen(QHostAddress::LocalHost);
    QObject::connect(&server_, &QTcpServer::newConnection, [this] {
      QTcpSocket* const client = server_.nextPendingConnection();
      ++connections_;
      QObject::connect(client, &QTcpSocket::disconnected, [this, client] {
        if (!client->property("answered").toBool()) ++cut_;
      });
      QObject::connect(client, &QTcpSocket::readyRead, client, [this, client] { OnReadyRead(*client); });
    });
  }

  QString Address(const QString& path) const {
    return QStringLiteral("http://127.0.0.1:%1%2").arg(server_.serverPort()).arg(path);
  }
  int Requests() const { return requests_; }
  int Connections() const { return connections_; }
  // Clients that went without a whole answer.
  int Cut() const { return cut_; }
  quint16 Port() const { return server_.serverPort(); }

  // The body's true length is told unless `headers` tell another.
  static void Answer(QTcpSocket& client, const QByteArray& status, const QByteArray& headers,
                     const QByteArray& body = {}) {
    client.write("HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers);
    if (!headers.contains("Content-Length"))
      client.write("Content-Length: " + QByteArray::number(body.size()) + "\r\n");
    client.write("\r\n" + body);
    client.setProperty("answered", true);
    client.disconnectFromHost();
  }

 private:
  void OnReadyRead(QTcpSocket& client) {
    const QByteArray request = client.property("request").toByteArray() + client.readAll();
    client.setProperty("request", request);
    if (!request.endsWith("\r\n\r\n")) return;
    ++requests_;
    handler_(client, request.split(' ').at(1));
  }

  Handler handler_;
  int requests_ = 0;
  int connections_ = 0;
  int cut_ = 0;
  QTcpServer server_;
};

}  // namespace quillet
