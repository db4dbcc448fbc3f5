#include "media/fetch/store_work.h"

#include <algorithm>
#include <utility>

#include <QMetaObject>

#include "media/fetch/picture_name.h"
#include "media/fetch/worker_run.h"
#include "media/picture_link.h"

namespace quillet {
namespace {

constexpr int kMostFetches = 6;
constexpr int kMostSeeks = 8;
// For all decoders; what takes more is decoded alone.
constexpr qint64 kMostWorkBytes = qint64{48} << 20;

// One processor is the window's.
int DecoderCount() {
  return std::clamp(QThread::idealThreadCount() - 1, 2, 4);
}

std::unique_ptr<QThreadPool> PoolOf(int threads) {
  auto pool = std::make_unique<QThreadPool>();
  pool->setMaxThreadCount(threads);
  return pool;
}

qint64 BytesOf(QSize size) {
  return qint64{size.width()} * size.height() * static_cast<qint64>(sizeof(QRgb));
}

bool IsVideoLink(const QString& link, const MediaHosts& hosts) {
  std::u16string text = link.toStdU16String();
  return ClassifyLink(text, hosts) == LinkMedia::kVideo;
}

}  // namespace

StoreWork::StoreWork(PictureStoreOptions options)
    : options_(std::move(options)),
      decoders_(PoolOf(DecoderCount())),
      animators_(PoolOf(1)),
      clock_(*animators_),
      disk_(options_.cacheFolder, options_.diskBytes) {
  for (QTimer* const timer : {&turnTimer_, &tellTimer_})
    timer->setSingleShot(true);
  connect(&turnTimer_, &QTimer::timeout, this, &StoreWork::RunTurn);
  connect(&tellTimer_, &QTimer::timeout, this, &StoreWork::TellAll);
  connect(&clock_, &AnimationClock::Moved, this, &StoreWork::Tell);
  connect(&disk_, &DiskCache::Counted, this, [this](qint64 bytes) {
    if (std::exchange(diskCacheSize_, bytes) != bytes) emit DiskCacheCounted(bytes);
  });
  disk_.Count();
}

StoreWork::~StoreWork() {
  for (const QString& link : std::as_const(decoding_))
    if (const ShelvedPicture* const picture = shelf_.Find(link); picture != nullptr && picture->dropped)
      *picture->dropped = true;
  for (const QString& link : playing_.keys())
    clock_.Stop(link);
  network_.quit();
  network_.wait();
  LetGo(decoders_);
  LetGo(animators_);
}

template <typename Call>
void StoreWork::OnEngine(Call call) {
  if (engine_ == nullptr) return;
  QMetaObject::invokeMethod(
      engine_, [engine = engine_, call = std::move(call)] { call(*engine); }, Qt::QueuedConnection);
}

// For the first fetch: who never opens a picture has no thread for it.
void StoreWork::StartThreads() {
  if (engine_ != nullptr) return;
  engine_ = new FetchEngine(options_.limits);
  engine_->moveToThread(&network_);
  connect(&network_, &QThread::finished, engine_, &QObject::deleteLater);
  connect(engine_, &FetchEngine::Came, this, &StoreWork::OnCame);
  connect(engine_, &FetchEngine::Found, this, &StoreWork::OnFound);
  connect(engine_, &FetchEngine::Told, this, &StoreWork::OnTold);
  connect(engine_, &FetchEngine::Over, this, &StoreWork::OnOver);
  network_.start();
  OnEngine([options = options_, strategy = behavior_.strategy](FetchEngine& engine) {
    engine.SetHosts(options.hosts);
    engine.SetLoopbackHosts(options.loopbackHosts);
    engine.SetStrategy(strategy);
  });
}

void StoreWork::SetBehavior(const FetchBehavior& behavior) {
  behavior_ = behavior;
  OnEngine([strategy = behavior.strategy](FetchEngine& engine) { engine.SetStrategy(strategy); });
}

void StoreWork::SetHosts(const MediaHosts& hosts) {
  options_.hosts = hosts;
  OnEngine([hosts](FetchEngine& engine) { engine.SetHosts(hosts); });
}

void StoreWork::SetLoopbackHosts(const std::vector<LoopbackHost>& hosts) {
  options_.loopbackHosts = hosts;
  OnEngine([hosts](FetchEngine& engine) { engine.SetLoopbackHosts(hosts); });
}

void StoreWork::SetWishes(PictureUser user, std::vector<PictureWish> wishes) {
  std::vector<PictureWish>& own = wishes_.at(static_cast<std::size_t>(user));
  if (own == wishes) return;
  own = std::move(wishes);
  Schedule();
}

PictureNow StoreWork::Look(const QString& link, const PictureBounds& bounds) const {
  const ShelvedPicture* const picture = shelf_.Find(link);
  if (picture == nullptr) return {};
  PictureNow now = picture->now;
  now.image = clock_.FrameOf(link);
  if (now.image.isNull()) now.image = picture->Nearest(FittedSize(now.size, bounds));
  if (picture->file == FileState::kFailed) {
    now.stage = PictureStage::kFailed;
  } else if (!now.image.isNull()) {
    now.stage = PictureStage::kReady;
  } else {
    now.stage = now.size.isEmpty() ? PictureStage::kWaiting : PictureStage::kSized;
    now.image = picture->partial;
  }
  return now;
}

void StoreWork::TryAgain(const QString& link) {
  ShelvedPicture* const picture = shelf_.Find(link);
  if (picture == nullptr || picture->file != FileState::kFailed) return;
  picture->file = FileState::kUnknown;
  picture->now.fault = PictureFault::kNone;
  Tell(link);
  Schedule();
}

PictureFile StoreWork::FileOf(const QString& link) const {
  const ShelvedPicture* const picture = shelf_.Find(link);
  PictureFile file;
  if (picture != nullptr) file.bytes = picture->bytes;
  if (file.bytes.isEmpty()) file.bytes = disk_.ReadNow(link);
  if (!file.bytes.isEmpty()) file.name = PictureFileName(link, file.bytes);
  return file;
}

void StoreWork::EmptyDiskCache() {
  disk_.Empty();
}

void StoreWork::Schedule() {
  if (!turnTimer_.isActive()) turnTimer_.start(0);
}

void StoreWork::RunTurn() {
  Turn turn;
  NoteWishes(turn);
  CancelUnlisted();
  for (auto user = wishes_.rbegin(); user != wishes_.rend(); ++user)
    for (const PictureWish& wish : *user)
      Serve(wish, turn);
  KeepFiles();
  PutFilesAway(turn);
  // What is in sight does not go for one that is large.
  const qint64 work = std::min(workBytes_, options_.memoryBytes / 4);
  shelf_.Trim(std::max<qint64>(options_.memoryBytes - clock_.Bytes() - work, 0), turn_, turn.order);
}

void StoreWork::NoteWishes(Turn& turn) {
  ++turn_;
  for (auto user = wishes_.rbegin(); user != wishes_.rend(); ++user)
    for (const PictureWish& wish : *user) {
      ShelvedPicture& picture = shelf_.At(wish.link);
      if (std::exchange(picture.listedAt, turn_) != turn_) {
        picture.wanted.clear();
        picture.wantedPlaying = {};
        picture.isAfforded = false;
        turn.order.push_back(wish.link);
      }
      const QSize size = FittedSize(picture.now.size, wish.bounds);
      picture.wanted.push_back(size);
      if (wish.motion == Motion::kPlays && picture.wantedPlaying.isEmpty()) picture.wantedPlaying = size;
    }
}

void StoreWork::CancelUnlisted() {
  for (const auto& [id, link] : QHash(fetches_).asKeyValueRange()) {
    ShelvedPicture* const picture = shelf_.Find(link);
    if (picture != nullptr && picture->listedAt == turn_) continue;
    OnEngine([id = id](FetchEngine& engine) { engine.Cancel(id); });
    fetches_.remove(id);
    if (picture == nullptr) continue;
    picture->fetch = 0;
    picture->isAskedForFacts = false;
    if (picture->file == FileState::kFetching) picture->file = FileState::kNotHere;
  }
  for (const QString& link : std::as_const(decoding_))
    if (const ShelvedPicture* const picture = shelf_.Find(link);
        picture != nullptr && picture->listedAt != turn_)
      *picture->dropped = true;
  for (const QString& link : playing_.keys()) {
    const ShelvedPicture* const picture = shelf_.Find(link);
    if (picture != nullptr && picture->listedAt == turn_ && !picture->wantedPlaying.isEmpty()) continue;
    clock_.Stop(link);
    playing_.remove(link);
    Tell(link);
  }
}

// What more urgent wishes leave of the memory is what this one may take.
void StoreWork::Serve(const PictureWish& wish, Turn& turn) {
  ShelvedPicture& picture = shelf_.At(wish.link);
  if (picture.file == FileState::kFailed) return;
  turn.held += BytesOf(FittedSize(picture.now.size, wish.bounds)) + picture.bytes.size();
  const bool fits = turn.held <= options_.memoryBytes;
  picture.isAfforded = picture.isAfforded || fits;
  ServeFile(wish.link, picture, fits || disk_.IsKeeping());
  if (picture.file == FileState::kHere) ServeImage(wish, picture, fits);
}

void StoreWork::ServeFile(const QString& link, ShelvedPicture& picture, bool fits) {
  if (picture.file == FileState::kUnknown) {
    if (!disk_.HasFolder())
      picture.file = FileState::kNotHere;
    else if (seeks_ < kMostSeeks)
      Seek(link, picture);
  }
  if (picture.file == FileState::kNotHere && fits && fetches_.size() < kMostFetches) {
    picture.file = FileState::kFetching;
    Fetch(link, picture, ChaseGoal::kPicture);
  }
}

void StoreWork::ServeImage(const PictureWish& wish, ShelvedPicture& picture, bool fits) {
  if (picture.now.isVideo && !picture.isAskedForFacts && picture.fetch == 0 && fetches_.size() < kMostFetches)
    Fetch(wish.link, picture, ChaseGoal::kVideoFacts);
  const QSize size = FittedSize(picture.now.size, wish.bounds);
  const bool isDecoded = picture.ImageOf(size) != nullptr;
  const bool isToPlay =
      picture.now.isAnimation && picture.wantedPlaying == size && playing_.value(wish.link) != size;
  if (!fits || (isDecoded && !isToPlay)) return;
  // It was put away, and is on the disk unless somebody has emptied that.
  if (picture.bytes.isEmpty()) {
    picture.file = FileState::kUnknown;
    return ServeFile(wish.link, picture, fits);
  }
  if (!isDecoded && picture.decoding.isEmpty() && HasDecoderFor(picture))
    Decode(wish.link, picture, wish.bounds);
  if (isDecoded && isToPlay) {
    playing_.insert(wish.link, size);
    clock_.Play(wish.link, picture.bytes, wish.bounds);
  }
}

void StoreWork::Seek(const QString& link, ShelvedPicture& picture) {
  ++seeks_;
  picture.file = FileState::kSeeking;
  disk_.Read(link, [this, link](const QByteArray& file) {
    --seeks_;
    ShelvedPicture* const found = shelf_.Find(link);
    if (found == nullptr || found->file != FileState::kSeeking) return Schedule();
    found->isOnDisk = !file.isEmpty();
    if (file.isEmpty())
      found->file = FileState::kNotHere;
    else
      Take(link, *found, file);
    Schedule();
  });
}

void StoreWork::Fetch(const QString& link, ShelvedPicture& picture, ChaseGoal goal) {
  StartThreads();
  picture.fetch = ++lastFetch_;
  picture.isAskedForFacts = true;
  if (goal == ChaseGoal::kPicture) picture.now.received = picture.now.expected = 0;
  fetches_.insert(lastFetch_, link);
  OnEngine([id = lastFetch_, order = ChaseOrder{link, goal, behavior_.partial}](FetchEngine& engine) {
    engine.Start(id, order);
  });
}

bool StoreWork::HasDecoderFor(const ShelvedPicture& picture) const {
  return decodes_ == 0 ||
         (decodes_ < decoders_->maxThreadCount() && workBytes_ + picture.workBytes <= kMostWorkBytes);
}

void StoreWork::Decode(const QString& link, ShelvedPicture& picture, const PictureBounds& bounds) {
  ++decodes_;
  workBytes_ += picture.workBytes;
  decoding_.insert(link);
  picture.decoding = FittedSize(picture.now.size, bounds);
  picture.dropped = std::make_shared<std::atomic<bool>>(false);
  RunOnWorker(
      *decoders_, this,
      [file = picture.bytes, bounds, dropped = picture.dropped] {
        return DecodeFile(file, bounds, *dropped);
      },
      [this, link, wanted = picture.decoding, dropped = picture.dropped,
       work = picture.workBytes](const DecodedFile& decoded) {
        workBytes_ -= work;
        OnDecoded(link, dropped, wanted, decoded);
      });
}

void StoreWork::OnDecoded(const QString& link, const std::shared_ptr<std::atomic<bool>>& dropped,
                          QSize wanted, const DecodedFile& decoded) {
  --decodes_;
  decoding_.remove(link);
  Schedule();
  ShelvedPicture* const picture = shelf_.Find(link);
  if (picture == nullptr || picture->dropped != dropped) return;
  picture->decoding = {};
  if (*dropped) return;
  if (decoded.fault != PictureFault::kNone) return Fail(link, *picture, decoded.fault);
  picture->now.isAnimation = decoded.isAnimation;
  picture->partial = {};
  picture->DropOthers();
  picture->images.push_back({wanted, decoded.image});
  Tell(link);
}

// What is being decoded is waited for with a click behind it, and comes first. A damaged file is not kept.
void StoreWork::KeepFiles() {
  for (const QString& link : QSet(toKeep_)) {
    const ShelvedPicture* const picture = shelf_.Find(link);
    if (picture != nullptr && !picture->decoding.isEmpty()) continue;
    toKeep_.remove(link);
    if (picture == nullptr || picture->bytes.isEmpty()) continue;
    disk_.Keep(link, picture->bytes, [this, link](bool isKept) {
      ShelvedPicture* const kept = shelf_.Find(link);
      if (kept != nullptr) kept->isOnDisk = isKept;
      Schedule();
    });
  }
}

// Files whose pictures have been decoded, and which the disk has.
void StoreWork::PutFilesAway(const Turn& turn) {
  for (const QString& link : turn.order) {
    ShelvedPicture& picture = shelf_.At(link);
    if (picture.bytes.isEmpty() || !picture.isOnDisk || !picture.decoding.isEmpty()) continue;
    const bool isDecoded = std::all_of(picture.wanted.begin(), picture.wanted.end(),
                                       [&](QSize size) { return picture.ImageOf(size) != nullptr; });
    const bool isToPlay = picture.now.isAnimation && playing_.value(link) != picture.wantedPlaying;
    if ((isDecoded && !isToPlay) || !picture.isAfforded) picture.bytes.clear();
  }
}

void StoreWork::OnCame(quint64 id, const ChaseNews& news) {
  const QString link = fetches_.value(id);
  ShelvedPicture* const picture = shelf_.Find(link);
  if (link.isEmpty() || picture == nullptr) return;
  if (!news.size.isEmpty()) picture->now.size = news.size;
  picture->now.received = news.received;
  picture->now.expected = news.expected;
  if (!news.partial.isEmpty()) ShowPartial(link, *picture, news.partial);
  Tell(link);
}

void StoreWork::OnFound(quint64 id, const ChaseFind& find) {
  const QString link = fetches_.value(id);
  ShelvedPicture* const picture = shelf_.Find(link);
  if (link.isEmpty() || picture == nullptr) return;
  picture->now.isVideo = find.isVideo;
  if (find.fault != PictureFault::kNone) return Fail(link, *picture, find.fault);
  Take(link, *picture, find.file);
  if (disk_.HasFolder()) toKeep_.insert(link);
}

void StoreWork::OnTold(quint64 id, const VideoFacts& facts) {
  const QString link = fetches_.value(id);
  ShelvedPicture* const picture = shelf_.Find(link);
  if (link.isEmpty() || picture == nullptr) return;
  picture->now.title = facts.title;
  picture->now.seconds = facts.seconds;
  Tell(link);
}

void StoreWork::OnOver(quint64 id) {
  const QString link = fetches_.take(id);
  ShelvedPicture* const picture = shelf_.Find(link);
  if (picture != nullptr && picture->fetch == id) picture->fetch = 0;
  Schedule();
}

void StoreWork::Take(const QString& link, ShelvedPicture& picture, const QByteArray& file) {
  const PictureHeader header = ReadPictureHeader({file.constData(), static_cast<std::size_t>(file.size())});
  if (!header.IsSized() || IsTooLarge(header)) return Fail(link, picture, PictureFault::kDamaged);
  picture.file = FileState::kHere;
  picture.bytes = file;
  picture.workBytes = header.workBytes;
  picture.now.size = QSize(header.width, header.height);
  picture.now.received = picture.now.expected = file.size();
  if (!picture.now.isVideo) picture.now.isVideo = IsVideoLink(link, options_.hosts);
  Tell(link);
  Schedule();
}

// One at a time: it is only for the eye.
void StoreWork::ShowPartial(const QString& link, ShelvedPicture& picture, const QByteArray& bytes) {
  if (isShowingPartial_ || !picture.images.empty() || picture.wanted.empty()) return;
  isShowingPartial_ = true;
  RunOnWorker(
      *decoders_, this,
      [bytes, bounds = PictureBounds(picture.wanted.front(), PictureBounds::kAnyGrowth)] {
        const std::atomic<bool> wanted{false};
        return DecodeFile(bytes, bounds, wanted);
      },
      [this, link](const DecodedFile& decoded) {
        isShowingPartial_ = false;
        ShelvedPicture* const shown = shelf_.Find(link);
        if (shown == nullptr || shown->file != FileState::kFetching || decoded.image.isNull()) return;
        shown->partial = decoded.image;
        Tell(link);
      });
}

void StoreWork::Fail(const QString& link, ShelvedPicture& picture, PictureFault fault) {
  picture.file = FileState::kFailed;
  picture.now.fault = fault;
  picture.bytes.clear();
  picture.partial = {};
  Tell(link);
  Schedule();
}

void StoreWork::Tell(const QString& link) {
  toTell_.insert(link);
  if (!tellTimer_.isActive()) tellTimer_.start(0);
}

void StoreWork::TellAll() {
  for (const QString& link : std::exchange(toTell_, {}))
    emit Changed(link);
}

}  // namespace quillet
