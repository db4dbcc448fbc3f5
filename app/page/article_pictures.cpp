#include "app/page/article_pictures.h"

#include <algorithm>
#include <set>
#include <utility>

#include "core/charset.h"
#include "render/paint/scaled_copy.h"
#include "render/style/article_parts.h"
#include "render/style_colours.h"

namespace quillet {
namespace {

// Where words begin that stand in a picture's place.
constexpr int kWordsCol = 2;
// Placeholders of what has come into sight push other links out of it: no more rounds than this.
constexpr int kMostRounds = 2;
// How often is asked whether the article rests.
constexpr int kMotionMs = 16;

bool ShowsPicture(LinkKind kind) {
  return kind != LinkKind::kWeb && kind != LinkKind::kArticleCode;
}

bool SaysNoPicture(PictureFault fault) {
  return fault == PictureFault::kNotAPicture || fault == PictureFault::kNoPictureInPage ||
         fault == PictureFault::kUnknownFormat;
}

PictureKnown KnownOf(const PictureNow& now) {
  switch (now.stage) {
    case PictureStage::kWaiting:
      return PictureKnown::kNothing;
    case PictureStage::kSized:
    case PictureStage::kReady:
      return PictureKnown::kSize;
    case PictureStage::kFailed:
      return SaysNoPicture(now.fault) ? PictureKnown::kNoPicture : PictureKnown::kFailure;
  }
  return PictureKnown::kNothing;
}

void PutWords(const std::u16string& words, PageRow& row) {
  std::size_t col = kWordsCol;
  for (const char byte : ToBig5(words).substr(0, kCols - kWordsCol))
    row.cells[col++] = {.byte = static_cast<std::uint8_t>(byte), .fore = kQuietText};
}

// An image that was scaled for the same bounds, and rounded otherwise, is drawn as it is.
PixelSize DrawnSize(PixelSize wanted, const QImage& image) {
  const bool isThat = IsNearlyAsLarge(image.size(), {wanted.width, wanted.height});
  return isThat ? PixelSize{image.width(), image.height()} : wanted;
}

int ColumnsOfWords(const std::u16string& words) {
  return kWordsCol + static_cast<int>(ToBig5(words).size());
}

}  // namespace

ArticlePictures::ArticlePictures(const Parts& parts) : parts_(parts) {
  connect(&parts_.store, &PictureStore::Changed, this, &ArticlePictures::OnChanged);
  soon_.setSingleShot(true);
  connect(&soon_, &QTimer::timeout, this, &ArticlePictures::TellSoon);
  connect(&parts_.article, &ArticleView::OtherArticle, this, [this] {
    plan_.Forget();
    learned_.clear();
    opened_.reset();
    source_ = {};
  });
}

bool ArticlePictures::IsOff() const {
  return parts_.settings.work || !parts_.article.IsShown();
}

// ---- Following the article

void ArticlePictures::Follow(const PictureRoom& room, Seen seen) {
  if (IsOff()) return Close();
  isOn_ = true;
  room_ = room;
  plan_.SetScope(parts_.settings.showPicMode);
  const Source source{parts_.article.Reading().Lines().Version(), parts_.article.RulesVersion(),
                      parts_.article.LineCount()};
  if (std::exchange(source_, source) != source) ReadSpots();
  // Most frames show what the last one did.
  if (followed_ == StateNow(seen)) return;
  LayBands();
  PictureSight sight = Sight();
  bool opens = true;
  for (int round = 0; round < kMostRounds && (opens = plan_.See(sight.first, sight.last)); ++round) {
    LayBands();
    sight = Sight();
  }
  by_ = ArticleView::BandsBy::kThemselves;
  Want(sight, seen);
  followed_.reset();
  if (!opens) followed_ = StateNow(seen);
}

ArticlePictures::Followed ArticlePictures::StateNow(Seen seen) const {
  return {.plan = plan_.Version(),
          .room = room_,
          .sight = Sight(),
          .seen = seen,
          .moves = parts_.settings.autoPlayGif};
}

// What is open stays so for when the article is back.
void ArticlePictures::Close() {
  if (parts_.settings.work) parts_.article.SetBands({}, ArticleView::BandsBy::kThemselves);
  if (!std::exchange(isOn_, false)) return;
  followed_.reset();
  wishes_.clear();
  parts_.store.SetWishes(PictureUser::kArticle, {});
}

void ArticlePictures::ReadSpots() {
  opened_.reset();
  plan_.SetSpots(SpotsOf());
  LearnAll();
}

std::vector<PictureSpot> ArticlePictures::SpotsOf() const {
  const ArticleView& article = parts_.article;
  const std::vector<LinePart> lineParts = PartsOf(article.Reading().Lines());
  std::vector<PictureSpot> spots;
  for (int index = 0; index < article.LineCount(); ++index) {
    const ArticleLine* const line = article.ShownLine(index);
    if (line == nullptr || line->links.IsEmpty() || article.Dressed().HidesIn(index, article.Rules()))
      continue;
    const LinePart part = lineParts[static_cast<std::size_t>(article.SourceLine(index))];
    AddSpotsOf(index, PictureSizeOf(part, parts_.settings), spots);
  }
  return spots;
}

// One that does not open by itself opens in its natural size by hand.
void ArticlePictures::AddSpotsOf(int index, PictureSize size, std::vector<PictureSpot>& spots) const {
  const ArticleView& article = parts_.article;
  const ArticleLine& line = *article.ShownLine(index);
  const bool isClosed =
      size == PictureSize::kNone || article.Dressed().KeepsPicturesClosed(index, article.Rules());
  for (const LinkPlace& place : line.links) {
    if (!ShowsPicture(place.kind)) continue;
    const std::string_view link =
        BytesOf(line.text).substr(place.first, static_cast<std::size_t>(place.last - place.first));
    spots.push_back({.line = article.SourceLine(index),
                     .first = place.first,
                     .link = std::string(link),
                     .kind = place.kind,
                     .size = size == PictureSize::kNone ? PictureSize::kNormal : size,
                     .opens = isClosed ? PictureOpens::kByHand : PictureOpens::kByItself});
  }
}

// The store is asked once for each link; it tells what changes later.
void ArticlePictures::LearnAll() {
  for (std::size_t spot = 0; spot < plan_.Count(); ++spot) {
    const std::string& link = plan_.At(spot).link;
    const auto [known, isNew] = learned_.try_emplace(link);
    if (isNew) known->second = AskStore(link, {});
    plan_.Learn(spot, known->second.known, known->second.natural);
  }
}

ArticlePictures::Learned ArticlePictures::AskStore(const std::string& link, const Learned& before) const {
  const PictureNow now = parts_.store.Look(QString::fromStdString(link), {});
  if (now.stage == PictureStage::kWaiting && before.known == PictureKnown::kSize) return before;
  return {KnownOf(now), {now.size.width(), now.size.height()}};
}

void ArticlePictures::OnChanged(const QString& link) {
  const std::string bytes = link.toStdString();
  const auto known = learned_.find(bytes);
  if (known == learned_.end()) return;
  known->second = AskStore(bytes, known->second);
  bool learns = false;
  bool inSight = false;
  const PictureSight sight = Sight();
  for (std::size_t spot = 0; spot < plan_.Count(); ++spot) {
    if (plan_.At(spot).link != bytes) continue;
    learns |= plan_.Learn(spot, known->second.known, known->second.natural);
    inSight |= plan_.At(spot).line >= sight.first && plan_.At(spot).line <= sight.last;
  }
  if (!isOn_ || !(learns || inSight)) return;
  learnsSoon_ |= learns;
  if (!soon_.isActive()) soon_.start(0);
}

// The motion's next step draws whatever has come, and nothing is drawn between two of them.
void ArticlePictures::TellSoon() {
  if (parts_.article.IsAnimating()) return soon_.start(kMotionMs);
  if (!std::exchange(learnsSoon_, false)) {
    emit ImagesChanged();
    return;
  }
  emit RowsChanged();
  ShowOpened();
}

void ArticlePictures::ShowOpened() {
  if (!opened_ || *opened_ >= plan_.Count()) return;
  const std::size_t spot = *opened_;
  if (plan_.Known(spot) != PictureKnown::kNothing) opened_.reset();
  const ArticleView& article = parts_.article;
  const int line = article.ShownIndex(plan_.At(spot).line);
  if (!article.WillShow(line)) return;
  const int row = article.Rows().RowOf(line);
  const int last = row + article.Rows().RowsBelow(line);
  const int top = std::min(row, last + 1 - article.LinesInSight());
  if (top > article.TargetRow()) parts_.article.ScrollTo(top);
}

void ArticlePictures::LayBands() {
  parts_.article.SetBands(plan_.Bands(room_), by_);
}

// Where the motion ends: what only passes by is not asked for.
PictureSight ArticlePictures::Sight() const {
  const ArticleView& article = parts_.article;
  const int window = article.LinesInSight();
  const int top = article.TargetRow();
  const auto lineAt = [&](int row) {
    const int last = article.Rows().Count() - 1;
    return article.SourceLine(article.Rows().At(std::clamp(row, 0, std::max(last, 0))).line);
  };
  return {.firstAbove = lineAt(top - PictureSight::kAbove * window),
          .first = lineAt(top),
          .last = lineAt(top + window - 1),
          .lastBelow = lineAt(top + window - 1 + PictureSight::kBelow * window)};
}

PictureBounds ArticlePictures::BoundsOf(std::size_t spot) const {
  const PictureSize size = plan_.At(spot).size;
  const PixelSize most = MostOf(size, room_);
  return {QSize(most.width, most.height),
          size == PictureSize::kFullWidth ? PictureBounds::kAnyGrowth : room_.scale};
}

void ArticlePictures::Want(const PictureSight& sight, Seen seen) {
  const bool moves = seen == Seen::kYes && parts_.settings.autoPlayGif;
  std::vector<PictureWish> wishes;
  for (const std::size_t spot : plan_.Wanted(sight)) {
    const int line = plan_.At(spot).line;
    const bool inSight = line >= sight.first && line <= sight.last;
    wishes.push_back({.link = LinkOf(spot),
                      .bounds = BoundsOf(spot),
                      .motion = moves && inSight && plan_.IsOpen(spot) ? Motion::kPlays : Motion::kStill});
  }
  if (wishes == wishes_) return;
  wishes_ = wishes;
  parts_.store.SetWishes(PictureUser::kArticle, std::move(wishes));
}

// ---- The frame

std::optional<ArticlePictures::SpotPlace> ArticlePictures::SpotAtRow(int row) const {
  if (!isOn_ || row < 0 || row >= kLinesShown) return std::nullopt;
  const std::optional<LinePlace> place = parts_.article.PlaceAtRow(row);
  if (!place || place->below == 0) return std::nullopt;
  const int line = parts_.article.SourceLine(place->line);
  int offset = place->below - 1;
  const std::size_t end = plan_.FirstFrom(line + 1);
  for (std::size_t spot = plan_.FirstFrom(line); spot < end; ++spot) {
    const int rows = plan_.RowsOf(spot, room_);
    if (offset < rows) return SpotPlace{spot, offset, rows};
    offset -= rows;
  }
  return std::nullopt;
}

void ArticlePictures::Compose(FrameState& frame) const {
  frame.pictures.clear();
  if (IsOff()) return;
  for (int row = 0; row < kLinesShown;) {
    const std::optional<SpotPlace> place = SpotAtRow(row);
    if (place) ComposeSpot(*place, row, frame);
    row += place ? place->rows - place->offset : 1;
  }
}

void ArticlePictures::ComposeSpot(const SpotPlace& place, int row, FrameState& frame) const {
  const PictureNow now = parts_.store.Look(LinkOf(place.spot), BoundsOf(place.spot));
  const bool hasSize = plan_.Known(place.spot) == PictureKnown::kSize;
  if (hasSize) {
    const bool stands = now.isVideo || (now.isAnimation && !parts_.settings.autoPlayGif);
    frame.pictures.push_back({.firstRow = row - place.offset,
                              .rows = place.rows,
                              .size = DrawnSize(plan_.ShownSize(place.spot, room_), now.image),
                              .image = now.image,
                              .sign = stands ? PictureSign::kPlay : PictureSign::kNone});
  }
  if (now.image.isNull()) PutWords(WordsFor(place.spot, now), frame.page[static_cast<std::size_t>(row)]);
}

std::u16string ArticlePictures::WordsFor(std::size_t spot, const PictureNow& now) const {
  PictureNow told = now;
  const PixelSize natural = plan_.NaturalSize(spot);
  if (told.size.isEmpty()) told.size = QSize(natural.width, natural.height);
  return parts_.wordsFor(told).toStdU16String();
}

// ---- The hands

std::optional<ArticlePictures::Place> ArticlePictures::PictureAt(int row, int x) const {
  const std::optional<SpotPlace> place = SpotAtRow(row);
  if (!place || x < 0) return std::nullopt;
  const PictureNow now = parts_.store.Look(LinkOf(place->spot), BoundsOf(place->spot));
  const bool hasSize = plan_.Known(place->spot) == PictureKnown::kSize;
  const int width = hasSize ? plan_.ShownSize(place->spot, room_).width
                            : ColumnsOfWords(WordsFor(place->spot, now)) * room_.width / kCols;
  if (x >= width) return std::nullopt;
  const bool failed = now.stage == PictureStage::kFailed;
  const Under under = failed ? Under::kFailure : now.image.isNull() ? Under::kWaiting : Under::kPicture;
  return Place{.link = LinkOf(place->spot),
               .line = parts_.article.PlaceAtRow(row)->line,
               .firstCol = plan_.At(place->spot).first,
               .under = under};
}

std::optional<std::size_t> ArticlePictures::SpotOfLink(int row, int firstCol) const {
  return SpotInLine(parts_.article.LineAtRow(row), firstCol);
}

std::optional<std::size_t> ArticlePictures::SpotInLine(int index, int firstCol) const {
  if (!isOn_ || index < 0 || index >= parts_.article.LineCount()) return std::nullopt;
  const int line = parts_.article.SourceLine(index);
  const std::size_t end = plan_.FirstFrom(line + 1);
  for (std::size_t spot = plan_.FirstFrom(line); spot < end; ++spot)
    if (plan_.At(spot).first == firstCol) return spot;
  return std::nullopt;
}

// A link that nobody knows to show one leads to the browser, as any other.
bool ArticlePictures::CanToggle(int row, int firstCol) const {
  const std::optional<std::size_t> spot = SpotOfLink(row, firstCol);
  if (!spot) return false;
  if (plan_.IsOpen(*spot)) return true;
  const PictureKnown known = plan_.Known(*spot);
  if (plan_.At(*spot).kind == LinkKind::kShortened) return known == PictureKnown::kSize;
  return known != PictureKnown::kNoPicture;
}

void ArticlePictures::Toggle(int row, int firstCol) {
  if (const std::optional<std::size_t> spot = SpotOfLink(row, firstCol)) ToggleSpot(*spot);
}

ArticlePictures::Standing ArticlePictures::StandingInLine(int line, int firstCol) const {
  const std::optional<std::size_t> spot = SpotInLine(line, firstCol);
  if (!spot) return Standing::kNone;
  if (plan_.IsOpen(*spot)) return Standing::kOpen;
  return plan_.Known(*spot) == PictureKnown::kNoPicture ? Standing::kNone : Standing::kClosed;
}

void ArticlePictures::ToggleInLine(int line, int firstCol) {
  if (const std::optional<std::size_t> spot = SpotInLine(line, firstCol)) ToggleSpot(*spot);
}

void ArticlePictures::ToggleSpot(std::size_t spot) {
  plan_.SetOpen(spot, !plan_.IsOpen(spot));
  opened_.reset();
  if (plan_.IsOpen(spot)) opened_ = spot;
  by_ = ArticleView::BandsBy::kUser;
  emit RowsChanged();
  ShowOpened();
}

bool ArticlePictures::HasPicturesInSight() const {
  if (!isOn_) return false;
  const PictureSight sight = Sight();
  return plan_.FirstFrom(sight.first) < plan_.FirstFrom(sight.last + 1);
}

void ArticlePictures::TogglePage() {
  if (!isOn_) return;
  const PictureSight sight = Sight();
  plan_.SetAllOpen(sight.first, sight.last, !plan_.AllOpen(sight.first, sight.last));
  by_ = ArticleView::BandsBy::kUser;
  emit RowsChanged();
}

void ArticlePictures::Click(const Place& place) {
  if (place.under == Under::kFailure) parts_.store.TryAgain(place.link);
  if (place.under == Under::kPicture) emit PictureClicked(place.link);
}

std::vector<QString> ArticlePictures::OpenLinks() const {
  std::vector<QString> links;
  std::set<std::string_view> seen;
  for (std::size_t spot = 0; spot < plan_.Count(); ++spot)
    if (plan_.IsOpen(spot) && seen.insert(plan_.At(spot).link).second) links.push_back(LinkOf(spot));
  return links;
}

}  // namespace quillet
