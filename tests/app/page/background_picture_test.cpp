#include "app/page/background_picture.h"

#include <gtest/gtest.h>
#include <random>

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QTimer>
#include <QtEndian>

#include "app/window/tour/tour.h"
#include "tests/app/page/picture_server.h"
#include "tests/support/scratch_folder.h"

namespace quillet {
namespace {

constexpr int kLongMs = 60000;
const std::atomic<bool> kWanted{false};

QImage Drawn(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      image.setPixel(x, y, qRgb(x * 255 / width, y * 255 / height, (x ^ y) & 0xFF));
  return image;
}

QByteArray Encoded(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  EXPECT_TRUE(image.save(&buffer, format)) << format;
  return bytes;
}

// A bitmap whose header promises other pixels than it has.
QByteArray BitmapThatClaims(qint32 width, qint32 height) {
  QByteArray bytes = Encoded(Drawn(8, 8), "bmp");
  qToLittleEndian(width, bytes.data() + 18);
  qToLittleEndian(height, bytes.data() + 22);
  return bytes;
}

class BackgroundPictureTest : public testing::Test {
 protected:
  BackgroundPictureTest() { Watch(picture); }

  void Watch(BackgroundPicture& watched) {
    QObject::connect(&watched, &BackgroundPicture::Loaded, [this] { ++loaded; });
    QObject::connect(&watched, &BackgroundPicture::Failed,
                     [this](const QString& source, const QString& reason) {
                       failedSource = source;
                       reasons << reason;
                     });
  }

  QString Write(const QString& name, const QByteArray& bytes) const {
    const QString path = QString::fromStdString(folder.Path().string()) + u'/' + name;
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    return path;
  }
  // Whether the source became a picture; the outcome must come, and come once.
  bool Loads(const QString& source) {
    const int outcomes = Outcomes();
    const int loadedBefore = loaded;
    picture.SetSource(source);
    EXPECT_EQ(Outcomes(), outcomes) << "told from inside the call";
    EXPECT_TRUE(HandleEventsUntil([&] { return Outcomes() > outcomes; }, kLongMs)) << qPrintable(source);
    EXPECT_EQ(Outcomes(), outcomes + 1);
    EXPECT_EQ(picture.Picture().isNull(), loaded == loadedBefore);
    return loaded > loadedBefore;
  }
  void ExpectRefused(const QString& source, const QString& reason) {
    EXPECT_FALSE(Loads(source)) << qPrintable(source);
    EXPECT_EQ(failedSource, source);
    EXPECT_TRUE(!reasons.isEmpty() && reasons.last().contains(reason))
        << qPrintable(source.left(100)) << ": " << qPrintable(reasons.join(u'|'));
  }
  int Outcomes() const { return loaded + static_cast<int>(reasons.size()); }

  ScratchFolder folder;
  BackgroundPicture picture{nullptr,
                            {.silenceMs = 20'000, .totalMs = 60'000, .bytes = 1 << 20, .redirects = 3}};
  int loaded = 0;
  QStringList reasons;
  QString failedSource;
};

TEST_F(BackgroundPictureTest, AFileBecomesItsPictureWhateverItsNameAndFormat) {
  const QImage drawn = Drawn(60, 40);
  for (const char* const format : {"png", "bmp", "jpg"}) {
    ASSERT_TRUE(
        Loads(Write(QStringLiteral("山 水 %1.txt").arg(QLatin1String(format)), Encoded(drawn, format))));
    EXPECT_EQ(picture.Picture().size(), drawn.size());
    if (format == std::string_view("jpg")) continue;
    EXPECT_EQ(picture.Picture(), drawn) << format;
  }
  picture.SetSource({});
  EXPECT_TRUE(picture.Picture().isNull());
}

TEST_F(BackgroundPictureTest, ALargePictureIsScaledDownAndATurnedOneTurned) {
  ASSERT_TRUE(Loads(Write(QStringLiteral("wide.png"), Encoded(Drawn(7680, 100), "png"))));
  EXPECT_EQ(picture.Picture().size(), QSize(kLongestPictureSide, 50));
  ASSERT_TRUE(Loads(Write(QStringLiteral("thread.png"), Encoded(Drawn(1, 9000), "png"))));
  EXPECT_EQ(picture.Picture().size(), QSize(1, kLongestPictureSide));

  QByteArray turned = Encoded(Drawn(5000, 50), "jpg");
  // An Exif segment of one entry: the camera was held so that the picture needs a quarter turn.
  turned.insert(2, QByteArray::fromHex("ffe10022457869660000"
                                       "4d4d002a00000008"
                                       "0001"
                                       "011200030000000100060000"
                                       "00000000"));
  ASSERT_TRUE(Loads(Write(QStringLiteral("turned.jpg"), turned)));
  EXPECT_EQ(picture.Picture().height(), kLongestPictureSide);
  EXPECT_LT(picture.Picture().width(), 60);
}

TEST_F(BackgroundPictureTest, WhatIsNoPlainPictureFileIsRefusedWithItsReason) {
  ExpectRefused(Write(QStringLiteral("empty.png"), {}), QStringLiteral("空的"));
  ExpectRefused(Write(QStringLiteral("text.png"), "GIF, but only in words"), QStringLiteral("格式"));
  ExpectRefused(Write(QStringLiteral("drawing.svg"), "<svg xmlns='http://www.w3.org/2000/svg'><g/></svg>"),
                QStringLiteral("格式"));
  ExpectRefused(QString::fromStdString(folder.Path().string()), QStringLiteral("資料夾"));
  ExpectRefused(QString::fromStdString((folder.Path() / "none.png").string()), QStringLiteral("找不到"));
  ExpectRefused(QStringLiteral("~/不在這裡.png"), QStringLiteral("找不到"));
  ExpectRefused(QStringLiteral("ftp://127.0.0.1/a.png"), QStringLiteral("找不到"));
  for (const QString& device : {QStringLiteral("/dev/zero"), QStringLiteral("/dev/urandom")})
    if (QFile::exists(device)) ExpectRefused(device, QStringLiteral("不是一般的檔案"));
}

TEST_F(BackgroundPictureTest, PicturesOfTooManyPixelsAreRefusedBeforeTheyTakeMemory) {
  QImage huge(20000, 20000, QImage::Format_Mono);
  huge.fill(0);
  ExpectRefused(Write(QStringLiteral("huge.png"), Encoded(huge, "png")), QStringLiteral("20000×20000"));
  ExpectRefused(Write(QStringLiteral("claims.bmp"), BitmapThatClaims(16'000, 16'000)),
                QStringLiteral("一億"));
  ExpectRefused(Write(QStringLiteral("memory.bmp"), BitmapThatClaims(9500, 9500)), QStringLiteral("256 MB"));
  ExpectRefused(Write(QStringLiteral("short.bmp"), BitmapThatClaims(0, 0)), QStringLiteral("損壞"));
}

TEST_F(BackgroundPictureTest, DamagedBytesBecomeAPictureOrAReasonNeverBoth) {
  std::mt19937 engine(20);
  const auto below = [&](qsizetype limit) {
    return static_cast<qsizetype>(engine() % static_cast<unsigned>(limit));
  };
  for (const char* const format : {"png", "bmp", "jpg", "ppm"}) {
    const QByteArray good = Encoded(Drawn(50, 30), format);
    int refused = 0;
    for (int round = 0; round < 200; ++round) {
      QByteArray bytes = good.left(round % 2 == 0 ? good.size() : 1 + below(good.size()));
      // Half of the changes hit the header.
      for (qsizetype change = below(8); change > 0; --change)
        bytes[below(std::min<qsizetype>(bytes.size(), change % 2 == 0 ? 64 : bytes.size()))] =
            static_cast<char>(below(256));
      const DecodedPicture decoded = DecodePictureBytes(bytes, kWanted);
      ASSERT_EQ(decoded.image.isNull(), !decoded.problem.isEmpty());
      ASSERT_LE(std::max(decoded.image.width(), decoded.image.height()), kLongestPictureSide);
      refused += decoded.image.isNull();
    }
    EXPECT_GT(refused, 10) << format;
  }
}

TEST_F(BackgroundPictureTest, AnAddressBecomesItsPicture) {
  const QImage drawn = Drawn(300, 200);
  PictureServer server([&](QTcpSocket& client, const QByteArray& path) {
    if (path == "/moved")
      return PictureServer::Answer(client, "302 Found", "Location: /picture\r\n", "over there");
    PictureServer::Answer(client, "200 OK", "Content-Type: image/png\r\n", Encoded(drawn, "png"));
  });
  ASSERT_TRUE(Loads(server.Address(QStringLiteral("/picture"))));
  EXPECT_EQ(picture.Picture(), drawn);
  const int requests = server.Requests();
  picture.SetSource(server.Address(QStringLiteral("/picture")));
  ASSERT_TRUE(Loads(
      server.Address(QStringLiteral("/moved")).replace(QStringLiteral("http"), QStringLiteral("HTTP"))));
  EXPECT_EQ(picture.Picture(), drawn);
  EXPECT_EQ(server.Requests(), requests + 2) << "the same source is not asked for again";
}

TEST_F(BackgroundPictureTest, AServersMischiefIsRefusedWithItsReason) {
  PictureServer server([&](QTcpSocket& client, const QByteArray& path) {
    if (path == "/404") return PictureServer::Answer(client, "404 Not Found", {}, "no");
    if (path == "/page") return PictureServer::Answer(client, "200 OK", "Content-Type: text/html\r\n", "<p>");
    if (path == "/text")
      return PictureServer::Answer(client, "200 OK", "Content-Type: image/png\r\n", "text");
    if (path == "/none") return PictureServer::Answer(client, "200 OK", "Content-Length: 0\r\n");
    if (path == "/short")
      return PictureServer::Answer(client, "200 OK", "Content-Length: 5000\r\n", "\x89PNG");
    if (path == "/claims")
      return PictureServer::Answer(client, "200 OK", "Content-Length: 2000000\r\n", "\x89PNG");
    if (path == "/nothttp") {
      client.write(QByteArray(3000, 'x'));
      return client.disconnectFromHost();
    }
    if (path == "/local")
      return PictureServer::Answer(client, "302 Found", "Location: file:///etc/hosts\r\n");
    if (path == "/data")
      return PictureServer::Answer(client, "302 Found", "Location: data:image/gif;base64,R0==\r\n");
    if (path == "/nowhere") return PictureServer::Answer(client, "302 Found", {});
    PictureServer::Answer(client, "302 Found", "Location: /again\r\n");
  });
  ExpectRefused(server.Address(QStringLiteral("/404")), QStringLiteral("404"));
  ExpectRefused(server.Address(QStringLiteral("/page")), QStringLiteral("網頁"));
  ExpectRefused(server.Address(QStringLiteral("/text")), QStringLiteral("格式"));
  ExpectRefused(server.Address(QStringLiteral("/none")), QStringLiteral("沒有送來"));
  ExpectRefused(server.Address(QStringLiteral("/short")), QStringLiteral("斷了"));
  ExpectRefused(server.Address(QStringLiteral("/claims")), QStringLiteral("1 MB"));
  ExpectRefused(server.Address(QStringLiteral("/nothttp")), QString());
  ExpectRefused(server.Address(QStringLiteral("/local")), QStringLiteral("不安全"));
  ExpectRefused(server.Address(QStringLiteral("/data")), QStringLiteral("不安全"));
  ExpectRefused(server.Address(QStringLiteral("/nowhere")), QStringLiteral("302"));
  const int requests = server.Requests();
  ExpectRefused(server.Address(QStringLiteral("/again")), QStringLiteral("一再"));
  EXPECT_EQ(server.Requests() - requests, 4) << "the first one and three redirects";
  ExpectRefused(QStringLiteral("http://"), QStringLiteral("網址"));
  ExpectRefused(QStringLiteral("https://a b:c:d/"), QStringLiteral("網址"));
  ExpectRefused(QStringLiteral("http://127.0.0.1:1/a.png"), QStringLiteral("拒絕"));
}

TEST_F(BackgroundPictureTest, ATransferThatBreaksOffIsNeverTakenForWhole) {
  PictureServer server([&](QTcpSocket& client, const QByteArray&) {
    client.write("HTTP/1.1 200 OK\r\nContent-Length: 5000\r\n\r\n\x89PNG");
    // Apart from the last bytes: the toolkit takes that end for the right one every second time.
    client.flush();
    QTimer::singleShot(1, &client, [&client] { client.disconnectFromHost(); });
  });
  for (int round = 0; round < 16; ++round)
    ExpectRefused(server.Address(QStringLiteral("/%1").arg(round)), QStringLiteral("斷了"));
}

TEST_F(BackgroundPictureTest, ABodyWithoutEndIsCutOff) {
  PictureServer server([&](QTcpSocket& client, const QByteArray&) {
    client.write("HTTP/1.1 200 OK\r\nContent-Type: image/png\r\n\r\n");
    const auto more = [&client] {
      if (client.bytesToWrite() < 100'000) client.write(QByteArray(100'000, '\x89'));
    };
    QObject::connect(&client, &QTcpSocket::bytesWritten, &client, more);
    more();
  });
  ExpectRefused(server.Address(QStringLiteral("/")), QStringLiteral("1 MB"));
}

// Answers the first bytes of a picture and then only one byte now and then.
PictureServer::Handler Dribbling() {
  return [](QTcpSocket& client, const QByteArray&) {
    client.write("HTTP/1.1 200 OK\r\nContent-Type: image/png\r\n\r\n\x89PNG");
    auto* const drip = new QTimer(&client);
    QObject::connect(drip, &QTimer::timeout, &client, [&client] { client.write("x"); });
    drip->start(5);
  };
}

TEST_F(BackgroundPictureTest, AServerThatIsTooSlowIsGivenUp) {
  BackgroundPicture hasty(nullptr, {.silenceMs = 60'000, .totalMs = 200, .bytes = 1 << 20, .redirects = 3});
  Watch(hasty);
  PictureServer dribbling(Dribbling());
  hasty.SetSource(dribbling.Address(QStringLiteral("/")));
  EXPECT_TRUE(HandleEventsUntil([&] { return reasons.size() == 1; }, kLongMs));

  BackgroundPicture nervous(nullptr, {.silenceMs = 100, .totalMs = 60'000, .bytes = 1 << 20, .redirects = 3});
  Watch(nervous);
  PictureServer silent([](QTcpSocket&, const QByteArray&) {});
  nervous.SetSource(silent.Address(QStringLiteral("/")));
  EXPECT_TRUE(HandleEventsUntil([&] { return reasons.size() == 2; }, kLongMs));
  for (const QString& reason : reasons)
    EXPECT_TRUE(reason.contains(QStringLiteral("太久"))) << qPrintable(reason);
}

TEST_F(BackgroundPictureTest, OnlyTheLastSourceIsHeardOf) {
  PictureServer dribbling(Dribbling());
  const QString large = Write(QStringLiteral("large.png"), Encoded(Drawn(3000, 2000), "png"));
  const QString small = Write(QStringLiteral("small.png"), Encoded(Drawn(30, 20), "png"));
  for (int round = 0; round < 5; ++round) {
    picture.SetSource(large);
    picture.SetSource(dribbling.Address(QStringLiteral("/%1").arg(round)));
    HandleEventsUntil([&] { return dribbling.Requests() > round; }, kLongMs);
    picture.SetSource(large);
    ASSERT_TRUE(Loads(small));
    EXPECT_EQ(picture.Picture().width(), 30);
  }
  picture.SetSource(large);
  picture.SetSource({});
  // Whatever is still under way ends before this one, which waits for a worker in the same queue.
  ASSERT_TRUE(Loads(small));
  EXPECT_EQ(loaded, 6);
  EXPECT_TRUE(reasons.isEmpty());
}

TEST_F(BackgroundPictureTest, CanBeDestroyedAtAnyMoment) {
  PictureServer dribbling(Dribbling());
  const QString large = Write(QStringLiteral("large.png"), Encoded(Drawn(3000, 2000), "png"));
  for (const QString& source : {large, dribbling.Address(QStringLiteral("/"))})
    for (const int events : {0, 1, 3, 10}) {
      auto doomed = std::make_unique<BackgroundPicture>();
      Watch(*doomed);
      doomed->SetSource(source);
      for (int i = 0; i < events; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
      doomed.reset();
      const int outcomes = Outcomes();
      ASSERT_TRUE(Loads(Write(QStringLiteral("%1.png").arg(events), Encoded(Drawn(3, 3), "png"))));
      EXPECT_EQ(Outcomes(), outcomes + 1);
    }
}

}  // namespace
}  // namespace quillet
