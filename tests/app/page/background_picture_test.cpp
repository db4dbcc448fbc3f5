#include "app/page/background_picture.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QTimer>
#include <QtEndian>

#include "app/window/tour/tour.h"
#include "tests/support/picture_server.h"
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
  for (const char* const format : {"png", "bmp", "jpg", "ppm"}) {
    const QByteArray good = Encoded(Drawn(50, 30), format);
    for (qsizetype at = 1; at < good.size(); at += 1 + at / 16) {
      QByteArray bytes = good;
      bytes[at] = static_cast<char>(~bytes[at]);
      for (const QByteArray& damaged : {bytes, good.left(at)}) {
        const DecodedPicture decoded = DecodePictureBytes(damaged, kWanted);
        ASSERT_EQ(decoded.image.isNull(), !decoded.problem.isEmpty());
        ASSERT_LE(std::max(decoded.image.width(), decoded.image.height()), kLongestPictureSide);
      }
    }
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
  struct Case {
    const char *status, *headers, *body, *reason;
  };
  const Case cases[] = {{"404 Not Found", "", "no", "404"},
                        {"200 OK", "Content-Type: text/html\r\n", "<p>", "網頁"},
                        {"200 OK", "Content-Type: image/png\r\n", "text", "格式"},
                        {"200 OK", "", "", "沒有送來"},
                        {"200 OK", "Content-Length: 5000\r\n", "\x89PNG", "斷了"},
                        {"200 OK", "Content-Length: 2000000\r\n", "\x89PNG", "1 MB"},
                        {"no HTTP", "", "", ""},
                        {"302 Found", "Location: file:///etc/hosts\r\n", "", "不安全"},
                        {"302 Found", "Location: data:image/gif;base64,R0==\r\n", "", "不安全"},
                        {"302 Found", "", "", "302"},
                        {"302 Found", "Location: /again\r\n", "", "一再"}};
  const Case* now = cases;
  PictureServer server([&now](QTcpSocket& client, const QByteArray&) {
    PictureServer::Answer(client, now->status, now->headers, now->body);
  });
  int requests = 0;
  for (now = cases; now != std::end(cases); ++now) {
    requests = server.Requests();
    ExpectRefused(server.Address(QStringLiteral("/%1").arg(now - cases)), QString::fromUtf8(now->reason));
  }
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
  BackgroundPicture nervous(nullptr, {.silenceMs = 100, .totalMs = 60'000, .bytes = 1 << 20, .redirects = 3});
  PictureServer dribbling(Dribbling());
  PictureServer silent([](QTcpSocket&, const QByteArray&) {});
  for (const auto& [slow, server] : {std::pair{&hasty, &dribbling}, {&nervous, &silent}}) {
    Watch(*slow);
    slow->SetSource(server->Address(QStringLiteral("/")));
    EXPECT_TRUE(HandleEventsUntil([&] { return !reasons.isEmpty(); }, kLongMs));
    EXPECT_TRUE(std::exchange(reasons, {}).value(0).contains(QStringLiteral("太久")));
  }
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
    for (const int events : {0, 3}) {
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
