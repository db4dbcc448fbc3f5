// What pictures cost: from the click to the picture, beside a bare fetch and decode of the same file with the
// toolkit's own classes, by turns, from a server on loopback; and the memory that it takes to walk through
// 500 pictures of 12 megapixels.
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include <QBuffer>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QImageReader>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include "media/fetch/picture_store.h"
#include "tests/support/drawn_pictures.h"
#include "tests/support/picture_server.h"

#include "bench/statistics.h"

namespace quillet {
namespace {

constexpr QSize kBounds(1280, 480);
constexpr QSize kTwelveMegapixels(4000, 3000);

double MillisecondsOf(const QElapsedTimer& timer) {
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double ThreadWorkMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// Notes the longest time that one event takes: as long as that a window would stand still. On a busy machine
// most of it may be others', so the thread's own work is noted too.
class TimedApplication : public QCoreApplication {
 public:
  using QCoreApplication::QCoreApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    if (QThread::currentThread() != thread()) return QCoreApplication::notify(receiver, event);
    QElapsedTimer timer;
    timer.start();
    const double workBefore = ThreadWorkMilliseconds();
    const bool isTaken = QCoreApplication::notify(receiver, event);
    longest = std::max(longest, MillisecondsOf(timer));
    longestWork = std::max(longestWork, ThreadWorkMilliseconds() - workBefore);
    return isTaken;
  }

  double longest = 0, longestWork = 0;
};

// Gives every path the same picture, on a thread of its own.
class ServerThread : public QThread {
 public:
  explicit ServerThread(QByteArray file) : file_(std::move(file)) {
    start();
    port_ = told_.get_future().get();
  }
  ~ServerThread() override {
    quit();
    wait();
  }
  quint16 Port() const { return port_; }

 protected:
  void run() override {
    PictureServer server([this](QTcpSocket& client, const QByteArray&) {
      PictureServer::Answer(client, "200 OK", "Content-Type: image/jpeg\r\n", file_);
    });
    told_.set_value(server.Port());
    exec();
  }

 private:
  QByteArray file_;
  std::promise<quint16> told_;
  quint16 port_ = 0;
};

PictureStoreOptions OptionsFor(const ServerThread& server, const QString& cache) {
  PictureStoreOptions options;
  options.loopbackHosts = {{QStringLiteral("pics.example"), server.Port()}};
  options.cacheFolder = cache;
  return options;
}

QString LinkOf(const QString& name) {
  return QStringLiteral("https://pics.example/%1.jpg").arg(name);
}

// Milliseconds until it is there.
double ShowPictures(PictureStore& store, const QStringList& links) {
  QElapsedTimer timer;
  timer.start();
  QEventLoop loop;
  const QMetaObject::Connection watch =
      QObject::connect(&store, &PictureStore::Changed, &loop, [&](const QString& link) {
        if (link == links.first() && store.Look(link, kBounds).stage >= PictureStage::kReady) loop.quit();
      });
  std::vector<PictureWish> wishes;
  for (const QString& link : links)
    wishes.push_back({link, kBounds, Motion::kStill});
  store.SetWishes(PictureUser::kArticle, wishes);
  if (store.Look(links.first(), kBounds).stage < PictureStage::kReady) loop.exec();
  QObject::disconnect(watch);
  if (store.Look(links.first(), kBounds).image.isNull())
    std::printf("%s failed\n", qPrintable(links.first()));
  return MillisecondsOf(timer);
}

// So that it is not done in the bare way's time.
void AwaitKept(PictureStore& store) {
  constexpr int kPatienceMs = 5000;
  QEventLoop loop;
  QObject::connect(&store, &PictureStore::DiskCacheCounted, &loop, &QEventLoop::quit);
  QTimer::singleShot(kPatienceMs, &loop, &QEventLoop::quit);
  loop.exec();
}

double ShowBare(QNetworkAccessManager& network, quint16 port, const QString& name) {
  QElapsedTimer timer;
  timer.start();
  QEventLoop loop;
  const std::unique_ptr<QNetworkReply> reply(
      network.get(QNetworkRequest(QUrl(QStringLiteral("http://127.0.0.1:%1/%2.jpg").arg(port).arg(name)))));
  QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
  loop.exec();
  QByteArray file = reply->readAll();
  QBuffer buffer(&file);
  QImageReader reader(&buffer);
  reader.setScaledSize(reader.size().scaled(kBounds, Qt::KeepAspectRatio));
  const QImage image = reader.read();
  if (image.isNull()) std::printf("the bare way failed\n");
  return MillisecondsOf(timer);
}

void CompareClick(TimedApplication& application) {
  constexpr int kRounds = 40;
  const ServerThread server(
      PictureFileBytes(DrawnPicture(kTwelveMegapixels.width(), kTwelveMegapixels.height()), "jpg"));
  const QTemporaryDir folder;
  PictureStore store(OptionsFor(server, folder.filePath(QStringLiteral("cache"))));
  QNetworkAccessManager network;
  ShowPictures(store, {LinkOf(QStringLiteral("first"))});
  AwaitKept(store);
  std::printf("opening the first picture holds the window for at most %.1f ms\n", application.longest);
  ShowBare(network, server.Port(), QStringLiteral("first"));
  std::vector<double> ours, bare, ratios;
  for (int round = 0; round < kRounds; ++round) {
    application.longest = 0;
    ours.push_back(ShowPictures(store, {LinkOf(QString::number(round))}));
    AwaitKept(store);
    bare.push_back(ShowBare(network, server.Port(), QString::number(round)));
    ratios.push_back(ours.back() / bare.back());
  }
  std::printf(
      "from the click to a picture of 12 megapixels: %.1f ms, bare %.1f; %.2f times as long (medians of "
      "%d)\n",
      PercentilesOf(ours).median, PercentilesOf(bare).median, PercentilesOf(ratios).median, kRounds);
}

// In MB; `key` as /proc/self/status has it.
double MemoryNow(const std::string& key) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with(key)) return std::stod(line.substr(key.size())) / 1024;
  return 0;
}

void WalkThrough(TimedApplication& application) {
  constexpr int kPictures = 500, kInSight = 3;
  const ServerThread server(
      PictureFileBytes(DrawnPicture(kTwelveMegapixels.width(), kTwelveMegapixels.height()), "jpg"));
  const QTemporaryDir folder;
  PictureStore store(OptionsFor(server, folder.filePath(QStringLiteral("cache"))));
  std::ofstream("/proc/self/clear_refs") << 5;  // the peak begins anew
  const double before = MemoryNow("VmRSS:");
  application.longest = application.longestWork = 0;
  for (int picture = 0; picture < kPictures; ++picture) {
    QStringList links;
    for (int i = picture; i < std::min(picture + kInSight, kPictures); ++i)
      links << LinkOf(QString::number(i));
    ShowPictures(store, links);
  }
  std::printf(
      "%d pictures of 12 megapixels: at most %.0f MB more than before (the bound is %lld MB),"
      " no event longer than %.1f ms, %.1f ms of them work\n",
      kPictures, MemoryNow("VmHWM:") - before,
      static_cast<long long>(PictureStoreOptions().memoryBytes >> 20), application.longest,
      application.longestWork);
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  quillet::TimedApplication application(argc, argv);
  quillet::CompareClick(application);
  quillet::WalkThrough(application);
  return 0;
}
