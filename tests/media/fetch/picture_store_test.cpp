#include "media/fetch/picture_store.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTimer>

#include "tests/support/drawn_pictures.h"
#include "tests/support/event_wait.h"
#include "tests/support/picture_server.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/wine.h"

namespace quillet {
namespace {

constexpr QSize kBounds(200, 200);

// What a server says of a path, in place of a picture.
struct Answer {
  QByteArray status = "200 OK";
  QByteArray headers = {};
  QByteArray body = {};
};

class PictureStoreTest : public testing::Test {
 protected:
  PictureStoreTest() {
    options.hosts.shorteners[0] = u"short.example";
    options.hosts.photoShort = u"photo.example";
    options.hosts.images = u"images.example";
    options.hosts.video = {.host = u"video.example",
                           .shortHost = u"vid.example",
                           .thumbnail = u"https://pics.example/thumb/{id}.jpg",
                           .info = u"https://pics.example/info?{id}"};
    for (const char* const host :
         {"pics.example", "short.example", "photo.example", "images.example", "i.images.example"})
      options.loopbackHosts.push_back({QString::fromLatin1(host), server.Port()});
    options.limits.silenceMs = 60'000;
  }

  void Open() {
    store = std::make_unique<PictureStore>(options);
    QObject::connect(store.get(), &PictureStore::Changed,
                     [this](const QString& link) { stages[link] << store->Look(link, kBounds).stage; });
  }
  static QString Link(const QString& path) { return QStringLiteral("https://pics.example/") + path; }
  void Wish(const QStringList& links, Motion motion = Motion::kStill) {
    std::vector<PictureWish> wishes;
    for (const QString& link : links)
      wishes.push_back({link, kBounds, motion});
    store->SetWishes(PictureUser::kArticle, wishes);
  }
  // Until it is ready, or has failed.
  PictureNow Await(const QString& link) {
    if (!store) Open();
    Wish({link});
    return AwaitWished(link);
  }
  PictureNow AwaitWished(const QString& link) {
    EXPECT_TRUE(WaitWithEvents([&] { return store->Look(link, kBounds).stage >= PictureStage::kReady; }))
        << qPrintable(link.left(100));
    return store->Look(link, kBounds);
  }
  void ExpectFault(const QString& link, PictureFault fault) {
    const PictureNow now = Await(link);
    EXPECT_EQ(now.stage, fault == PictureFault::kNone ? PictureStage::kReady : PictureStage::kFailed)
        << qPrintable(link.left(100));
    EXPECT_EQ(static_cast<int>(now.fault), static_cast<int>(fault)) << qPrintable(link.left(100));
    EXPECT_EQ(now.image.isNull(), fault != PictureFault::kNone);
  }
  void UseCache() { options.cacheFolder = QString::fromStdString((folder.Path() / "cache").string()); }

  const QByteArray jpeg = PictureFileBytes(DrawnPicture(400, 300), "jpg");
  std::map<QByteArray, Answer> answers;  // by path
  std::function<bool(QTcpSocket&, const QByteArray& path)> answer = [](QTcpSocket&, const QByteArray&) {
    return false;
  };
  QList<QByteArray> paths;
  PictureServer server{[this](QTcpSocket& client, const QByteArray& path) {
    paths << path;
    if (answer(client, path)) return;
    const auto found = answers.find(path);
    if (found == answers.end())
      return PictureServer::Answer(client, "200 OK", "Content-Type: image/jpeg\r\n", jpeg);
    PictureServer::Answer(client, found->second.status, found->second.headers, found->second.body);
  }};
  ScratchFolder folder;
  PictureStoreOptions options;
  std::unique_ptr<PictureStore> store;
  std::map<QString, QList<PictureStage>> stages;
};

TEST_F(PictureStoreTest, ALinkBecomesItsPictureScaledToItsPlace) {
  const PictureNow now = Await(Link(QStringLiteral("山 a.b.jpg")));
  EXPECT_EQ(now.stage, PictureStage::kReady);
  EXPECT_EQ(now.size, QSize(400, 300));
  EXPECT_EQ(now.image.size(), QSize(200, 150));
  EXPECT_EQ(now.received, jpeg.size());
  EXPECT_FALSE(now.isAnimation || now.isVideo);
  const PictureFile file = store->FileOf(Link(QStringLiteral("山 a.b.jpg")));
  EXPECT_EQ(file.bytes, jpeg);
  EXPECT_EQ(file.name, QStringLiteral("picture-山_a.jpg"));
  store->SetWishes(PictureUser::kViewer,
                   {{Link(QStringLiteral("山 a.b.jpg")), QSize(1000, 1000), Motion::kStill}});
  EXPECT_TRUE(WaitWithEvents([&] {
    return store->Look(Link(QStringLiteral("山 a.b.jpg")), QSize(1000, 1000)).image.width() == 400;
  }));
  EXPECT_EQ(store->Look(Link(QStringLiteral("山 a.b.jpg")), kBounds).image.width(), 200);
  EXPECT_EQ(server.Requests(), 1);
}

TEST_F(PictureStoreTest, AHostHearsNothingButWhatItIsAskedFor) {
  QByteArray request;
  answers["/a.jpg"] = {"302 Found", "Location: /b.jpg\r\nSet-Cookie: a=b\r\n"};
  answer = [&](QTcpSocket& client, const QByteArray&) {
    request = client.property("request").toByteArray().toLower();
    return false;
  };
  Await(Link(QStringLiteral("a.jpg")));
  EXPECT_EQ(paths.last(), "/b.jpg");
  EXPECT_TRUE(request.contains("\r\nuser-agent: quill downloader\r\n"));
  EXPECT_TRUE(request.contains("\r\nhost: pics.example\r\n"));
  EXPECT_FALSE(request.contains("cookie") || request.contains("referer") || request.contains("origin"));
}

TEST_F(PictureStoreTest, TheSizeIsToldLongBeforeTheFileHasCome) {
  QTcpSocket* held = nullptr;
  answer = [&](QTcpSocket& client, const QByteArray&) {
    client.write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(jpeg.size()) + "\r\n\r\n" +
                 jpeg.left(1000));
    held = &client;
    return true;
  };
  Open();
  const QString link = Link(QStringLiteral("a.jpg"));
  Wish({link});
  ASSERT_TRUE(WaitWithEvents([&] { return store->Look(link, kBounds).stage == PictureStage::kSized; }));
  EXPECT_EQ(store->Look(link, kBounds).size, QSize(400, 300));
  EXPECT_EQ(store->Look(link, kBounds).expected, jpeg.size());
  EXPECT_TRUE(store->Look(link, kBounds).image.isNull());
  held->write(jpeg.mid(1000));
  EXPECT_EQ(AwaitWished(link).stage, PictureStage::kReady);
}

TEST_F(PictureStoreTest, WhatHasComeIsShownWhereThatIsWanted) {
  answer = [&](QTcpSocket& client, const QByteArray&) {
    client.write("HTTP/1.1 200 OK\r\n\r\n" + jpeg.left(jpeg.size() / 2));
    return true;
  };
  Open();
  store->SetBehavior({FetchStrategy::kManyConnections, PartialPictures::kShown});
  const QString link = Link(QStringLiteral("a.jpg"));
  Wish({link});
  ASSERT_TRUE(WaitWithEvents([&] { return !store->Look(link, kBounds).image.isNull(); }));
  EXPECT_EQ(store->Look(link, kBounds).stage, PictureStage::kSized);
}

TEST_F(PictureStoreTest, PagesAndShortLinksLeadToTheirPicture) {
  const QByteArray html = "Content-Type: text/html; charset=big5\r\n";
  answers["/p/1"] = {"200 OK", html, "<img src='/icon1.jpg'><img src='/album/1.jpg'>"};
  answers["/2"] = {"301 Moved", "Location: https://images.example/X2\r\n"};
  answers["/3"] = {"302 Found", "Location: https://pics.example/page\r\n"};
  answers["/page"] = {"200 OK", html, "<meta property=og:image content='//pics.example/named.png'>"};
  answers["/page.jpg"] = answers["/page"];
  answers["/4"] = {"302 Found", "Location: https://vid.example/abc-EFG_123\r\n"};
  answers["/info?abc-EFG_123"] = {"200 OK", "", R"({"title":"甲\n乙","duration":61.5})"};
  const auto leadsTo = [&](const char* link, const QByteArray& path) {
    EXPECT_EQ(Await(QString::fromLatin1(link)).stage, PictureStage::kReady) << link;
    EXPECT_TRUE(paths.contains(path)) << link;
    paths.clear();
  };
  leadsTo("https://photo.example/p/1", "/album/1.jpg");
  leadsTo("http://short.example/2", "/X2.jpg");
  leadsTo("https://short.example/3", "/named.png");
  leadsTo("https://pics.example/page.jpg", "/named.png");
  leadsTo("https://images.example/abc", "/abc.jpg");
  leadsTo("https://vid.example/abc-EFG_123", "/thumb/abc-EFG_123.jpg");
  const QString video = QStringLiteral("https://vid.example/abc-EFG_123");
  EXPECT_TRUE(WaitWithEvents([&] { return store->Look(video, kBounds).seconds == 61; }));
  EXPECT_EQ(store->Look(video, kBounds).title, QStringLiteral("甲 乙"));
  leadsTo("https://short.example/4", "/thumb/abc-EFG_123.jpg");
  EXPECT_TRUE(store->Look(QStringLiteral("https://short.example/4"), kBounds).isVideo);
}

TEST_F(PictureStoreTest, AServersMischiefIsRefusedWithItsReason) {
  const QByteArray html = "Content-Type: text/html\r\n";
  options.limits.bytes = 1 << 20;
  QByteArray bomb = PictureFileBytes(DrawnPicture(8, 8), "png");
  qToBigEndian<quint32>(50'000, bomb.data() + 16);
  qToBigEndian<quint32>(50'000, bomb.data() + 20);
  struct Case {
    Answer answer;
    PictureFault fault;
  };
  const Case cases[] = {
      {{"404 Not Found", "", "no"}, PictureFault::kAnsweredWithError},
      {{"200 OK", html, "<p>"}, PictureFault::kNoPictureInPage},
      {{"200 OK", html, "<meta property=og:image content=/0.jpg>"}, PictureFault::kAnsweredWithError},
      {{"200 OK", html, "<meta property=og:image content=/1.jpg>"}, PictureFault::kNoPictureInPage},
      {{"200 OK", html, "<meta property=og:image content=http://127.0.0.1/a.jpg>"},
       PictureFault::kPrivateAddress},
      {{"200 OK", "Content-Type: image/svg+xml\r\n", "<svg xmlns='http://www.w3.org/2000/svg'/>"},
       PictureFault::kUnknownFormat},
      {{"200 OK", "", ""}, PictureFault::kEmpty},
      {{"200 OK", "Content-Length: 5000\r\n", jpeg.left(1000)}, PictureFault::kCutShort},
      {{"200 OK", "Content-Length: 2000000\r\n", jpeg}, PictureFault::kTooManyBytes},
      {{"200 OK", "", jpeg + QByteArray(2'000'000, 'x')}, PictureFault::kTooManyBytes},
      {{"200 OK", "", bomb}, PictureFault::kTooManyPixels},
      {{"200 OK", "", jpeg.left(100)}, PictureFault::kDamaged},
      {{"302 Found", "Location: http://pics.example/a.jpg\r\n", ""}, PictureFault::kLessSecure},
      {{"302 Found", "Location: file:///etc/hosts\r\n", ""}, PictureFault::kLessSecure},
      {{"302 Found", "Location: https://a@pics.example/\r\n", ""}, PictureFault::kLessSecure},
      {{"302 Found", "Location: /again.jpg\r\n", ""}, PictureFault::kTooManyRedirects},
      {{"302 Found", "Location: https://localhost:" + QByteArray::number(server.Port()) + "/\r\n", ""},
       PictureFault::kPrivateAddress},
      {{"302 Found", "Location: https://pics.example:" + QByteArray::number(server.Port()) + "/\r\n", ""},
       PictureFault::kHostNotFound},
      {{"302 Found", "", ""}, PictureFault::kAnsweredWithError},
      {{"200 OK", "Content-Length: 10\r\n", jpeg}, PictureFault::kDamaged},
      {{"200 OK", "Content-Length: 0\r\n", jpeg}, PictureFault::kEmpty},
      {{"200 OK", "Content-Length: 99999999999999999999\r\n", jpeg}, PictureFault::kNone},
      {{"200 OK", "Content-Length: -5\r\n", jpeg}, PictureFault::kNone},
      {{"200 OK", "Transfer-Encoding: chunked\r\nContent-Length: 1\r\n", "7fffffff\r\n" + jpeg},
       PictureFault::kCutShort},
      {{"200 OK", "Content-Encoding: deflate\r\n", qCompress(QByteArray(5'000'000, 'x')).mid(4)},
       PictureFault::kUnknownFormat},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i)
    answers["/" + QByteArray::number(i) + ".jpg"] = cases[i].answer;
  answers["/again.jpg"] = {"302 Found", "Location: /again.jpg\r\n"};
  for (std::size_t i = 0; i < std::size(cases); ++i)
    ExpectFault(Link(QStringLiteral("%1.jpg").arg(i)), cases[i].fault);
}

TEST_F(PictureStoreTest, NoAnswerGoesOnForEver) {
  options.limits.bytes = 1 << 20;
  options.limits.totalMs = 500;
  answer = [&](QTcpSocket& client, const QByteArray& path) {
    auto* const more = new QTimer(&client);
    QObject::connect(more, &QTimer::timeout, &client, [&client, isFast = path == "/fast.jpg"] {
      if (client.bytesToWrite() < 1'000'000) client.write(QByteArray(isFast ? 100'000 : 1, 'x'));
    });
    more->start(1);
    client.write(path == "/head.jpg" ? "HTTP/1.1 200 OK\r\nA: " : "HTTP/1.1 200 OK\r\n\r\n" + jpeg);
    return true;
  };
  ExpectFault(Link(QStringLiteral("head.jpg")), PictureFault::kTooSlow);
  ExpectFault(Link(QStringLiteral("slow.jpg")), PictureFault::kTooSlow);
  options.limits.totalMs = 60'000;
  Open();
  ExpectFault(Link(QStringLiteral("fast.jpg")), PictureFault::kTooManyBytes);
  // A server under Wine is not told of every client that is gone.
  EXPECT_TRUE(IsWine() || WaitWithEvents([&] { return server.Cut() == 3; }));
}

TEST_F(PictureStoreTest, WhatMayNotBeAskedIsNot) {
  ExpectFault(QStringLiteral("https://pics.example/page"), PictureFault::kNotAPicture);
  ExpectFault(QStringLiteral("https://pics.example/%1.jpg").arg(QString(65536, u'a')),
              PictureFault::kBadAddress);
  ExpectFault(QStringLiteral("ftp://pics.example/a.jpg"), PictureFault::kBadAddress);
  for (const QString& host : {QStringLiteral("127.0.0.1"), QStringLiteral("localhost"),
                              QStringLiteral("[::1]"), QStringLiteral("127.1"), QStringLiteral("2130706433"),
                              QStringLiteral("[::ffff:7f00:1]"), QStringLiteral("[64:ff9b::7f00:1]")})
    for (const QString& scheme : {QStringLiteral("http"), QStringLiteral("https")})
      ExpectFault(QStringLiteral("%1://%2:%3/a.jpg").arg(scheme, host).arg(server.Port()),
                  PictureFault::kPrivateAddress);
  EXPECT_EQ(server.Connections(), 0);
}

TEST_F(PictureStoreTest, SixAtOnceInTheirOrderAndNothingThatHasBeenLeft) {
  answer = [](QTcpSocket&, const QByteArray&) { return true; };  // nothing, ever
  Open();
  QStringList links;
  for (int i = 0; i < 10'000; ++i)
    links << Link(QStringLiteral("%1.jpg").arg(i));
  Wish(links);
  ASSERT_TRUE(WaitWithEvents([&] { return server.Requests() == 6; }));
  const QSet<QByteArray> first{"/0.jpg", "/1.jpg", "/2.jpg", "/3.jpg", "/4.jpg", "/5.jpg"};
  EXPECT_EQ(QSet<QByteArray>(paths.begin(), paths.end()), first);
  answer = [](QTcpSocket&, const QByteArray&) { return false; };
  Wish({links[7], links[3]});
  EXPECT_EQ(AwaitWished(links[7]).stage, PictureStage::kReady);
  EXPECT_EQ(server.Requests(), 7);
  EXPECT_EQ(store->Look(links[3], kBounds).stage, PictureStage::kWaiting);
  EXPECT_TRUE(WaitWithEvents([&] { return server.Cut() == 5; })) << "those that nobody lists any more";
}

TEST_F(PictureStoreTest, ASilentServerIsGivenUpAndTriedAgainOnlyWhenAsked) {
  QByteArray said;
  answer = [&](QTcpSocket& client, const QByteArray&) {
    client.write(said);
    return true;
  };
  options.limits.silenceMs = 300;
  for (const char* const text : {"", "HTTP/1.1 200 OK\r\nA: ", "HTTP/1.1 200 OK\r\n\r\n"}) {
    said = text;
    ExpectFault(Link(QStringLiteral("%1.jpg").arg(said.size())), PictureFault::kTooSlow);
  }
  said = "HTTP/1.1 200 OK\r\n\r\n\xFF\xD8";
  const QString link = Link(QStringLiteral("a.jpg"));
  ExpectFault(link, PictureFault::kTooSlow);
  answer = [](QTcpSocket&, const QByteArray&) { return false; };
  Wish({link, Link(QStringLiteral("b.jpg"))});
  AwaitWished(Link(QStringLiteral("b.jpg")));
  EXPECT_EQ(paths.count("/a.jpg"), 1);
  store->TryAgain(link);
  EXPECT_EQ(Await(link).stage, PictureStage::kReady);
}

TEST_F(PictureStoreTest, MemoryHoldsWhatWasListedLastAndTheMostUrgent) {
  options.memoryBytes = 3 * 200 * 150 * 4;
  Open();
  QStringList links;
  for (int i = 0; i < 6; ++i)
    links << Link(QStringLiteral("%1.jpg").arg(i));
  for (const QString& link : links)
    Await(link);
  Await(links[5]);
  EXPECT_TRUE(store->Look(links[0], kBounds).image.isNull());
  EXPECT_FALSE(store->Look(links[5], kBounds).image.isNull());
  EXPECT_EQ(Await(links[0]).stage, PictureStage::kReady);
  Wish(links);
  AwaitWished(links[0]);
  AwaitWished(links[1]);
  int held = 0;
  for (const QString& link : links)
    held += store->Look(link, kBounds).image.isNull() ? 0 : 1;
  EXPECT_LE(held, 3);
}

TEST_F(PictureStoreTest, FilesAreKeptOnTheDiskAndADamagedOneIsFetchedAnew) {
  UseCache();
  const QString link = Link(QStringLiteral("a.jpg"));
  Await(link);
  ASSERT_TRUE(WaitWithEvents([&] { return store->DiskCacheSize() > jpeg.size(); }));
  store.reset();
  EXPECT_EQ(Await(link).stage, PictureStage::kReady);
  EXPECT_EQ(server.Requests(), 1);
  EXPECT_EQ(store->FileOf(link).bytes, jpeg);
  store.reset();
  const QDir cache(options.cacheFolder);
  ASSERT_EQ(cache.entryList(QDir::Files).size(), 1);
  const std::filesystem::path kept = cache.filePath(cache.entryList(QDir::Files).first()).toStdString();
  PutFile(kept, FileAt(kept).substr(0, 2000));
  EXPECT_EQ(Await(link).stage, PictureStage::kReady);
  EXPECT_EQ(server.Requests(), 2);
  ASSERT_TRUE(WaitWithEvents([&] { return store->DiskCacheSize() > jpeg.size(); }));
  PutFile(folder.Path() / "cache" / "mine.txt", "mine");
  store->EmptyDiskCache();
  ASSERT_TRUE(WaitWithEvents([&] { return store->DiskCacheSize() == 0; }));
  EXPECT_EQ(cache.entryList(QDir::Files), QStringList(QStringLiteral("mine.txt")));
}

TEST_F(PictureStoreTest, TheDiskKeepsNoMoreThanItMayAndNothingWhereThereIsNoFolder) {
  UseCache();
  options.diskBytes = jpeg.size() * 5 / 2;
  for (int i = 0; i < 5; ++i)
    Await(Link(QStringLiteral("%1.jpg").arg(i)));
  ASSERT_TRUE(WaitWithEvents([&] { return store->DiskCacheSize() > 2 * jpeg.size(); }));
  store.reset();
  EXPECT_LE(QDir(options.cacheFolder).entryList(QDir::Files).size(), 2);
  PutFile(folder.Path() / "file", "");
  options.cacheFolder = QString::fromStdString((folder.Path() / "file" / "cache").string());
  EXPECT_EQ(Await(Link(QStringLiteral("0.jpg"))).stage, PictureStage::kReady);
  EXPECT_EQ(store->FileOf(Link(QStringLiteral("0.jpg"))).bytes, jpeg);
}

TEST_F(PictureStoreTest, AnAnimationMovesWhileItIsToPlay) {
  answers["/a.gif"] = {"200 OK", "", AnimatedGif(4)};
  const QString link = Link(QStringLiteral("a.gif"));
  EXPECT_TRUE(Await(link).isAnimation);
  const auto moves = [&] {
    QSet<QRgb> colours;
    return WaitWithEvents([&] {
      colours << store->Look(link, kBounds).image.pixel(0, 0);
      return colours.size() == 4;
    });
  };
  Wish({link}, Motion::kPlays);
  EXPECT_TRUE(moves());
  Wish({link});
  // Behind this picture nothing of the animation is under way.
  Await(Link(QStringLiteral("b.jpg")));
  stages.clear();
  Await(Link(QStringLiteral("c.jpg")));
  EXPECT_FALSE(stages.contains(link));
  Wish({link}, Motion::kPlays);
  EXPECT_TRUE(moves());
}

TEST_F(PictureStoreTest, CanBeDestroyedAtAnyMoment) {
  for (const int events : {0, 1, 5, 50}) {
    UseCache();
    Open();
    QStringList links;
    for (int i = 0; i < 20; ++i)
      links << Link(QStringLiteral("%1-%2.jpg").arg(events).arg(i));
    Wish(links);
    for (int i = 0; i < events; ++i)
      QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    store.reset();
  }
}

}  // namespace
}  // namespace quillet
