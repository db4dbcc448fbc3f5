#include "render/picture_plan.h"

#include <algorithm>

namespace quillet {
namespace {

// Until its size is known, and where it has failed.
constexpr int kRowsOfWords = 1;

// Nobody has said that it is one.
bool IsGuessed(LinkKind kind) {
  return kind == LinkKind::kShortened || kind == LinkKind::kPicturePage;
}

}  // namespace

void PicturePlan::Forget() {
  const unsigned version = version_;
  *this = PicturePlan();
  version_ = version + 1;
}

void PicturePlan::SetSpots(std::vector<PictureSpot> spots) {
  spots_ = std::move(spots);
  ++version_;
  ++round_;
  ids_.clear();
  ids_.reserve(spots_.size());
  for (const PictureSpot& spot : spots_)
    ids_.push_back(NextIdOf(spot.link));
}

std::size_t PicturePlan::NextIdOf(const std::string& link) {
  Occurrences& same = occurrencesOf_[link];
  if (std::exchange(same.round, round_) != round_) same.taken = 0;
  if (same.taken == same.ids.size()) {
    same.ids.push_back(states_.size());
    states_.emplace_back();
  }
  return same.ids[same.taken++];
}

bool PicturePlan::Learn(std::size_t spot, PictureKnown known, PixelSize natural) {
  State& state = StateOf(spot);
  if (state.known == known && state.natural == natural) return false;
  // What has been seen once keeps its room while it is fetched anew.
  if (known == PictureKnown::kNothing && state.known == PictureKnown::kSize) return false;
  state.known = known;
  state.natural = natural;
  ++version_;
  return true;
}

std::size_t PicturePlan::FirstFrom(int line) const {
  const auto found = std::lower_bound(spots_.begin(), spots_.end(), line,
                                      [](const PictureSpot& spot, int wanted) { return spot.line < wanted; });
  return static_cast<std::size_t>(found - spots_.begin());
}

bool PicturePlan::MayOpen(std::size_t spot) const {
  const State& state = StateOf(spot);
  if (state.chosen != Chosen::kNothing) return state.chosen == Chosen::kOpen;
  return scope_ != PictureScope::kNone && spots_[spot].opens == PictureOpens::kByItself;
}

// Out of sight it opens as soon as its rows are known, so that nothing moves when it comes into sight.
bool PicturePlan::IsOpen(std::size_t spot) const {
  if (!MayOpen(spot)) return false;
  const State& state = StateOf(spot);
  if (state.chosen == Chosen::kOpen || state.known == PictureKnown::kSize) return true;
  const bool misguessed = state.known == PictureKnown::kNoPicture && IsGuessed(spots_[spot].kind);
  return state.wasSeen && !misguessed;
}

bool PicturePlan::AllOpen(int firstLine, int lastLine) const {
  const std::size_t end = FirstFrom(lastLine + 1);
  for (std::size_t spot = FirstFrom(firstLine); spot < end; ++spot)
    if (!IsOpen(spot)) return false;
  return true;
}

void PicturePlan::SetAllOpen(int firstLine, int lastLine, bool open) {
  const std::size_t end = FirstFrom(lastLine + 1);
  for (std::size_t spot = FirstFrom(firstLine); spot < end; ++spot)
    SetOpen(spot, open);
}

bool PicturePlan::See(int firstLine, int lastLine) {
  bool opens = false;
  const std::size_t end = FirstFrom(lastLine + 1);
  for (std::size_t spot = FirstFrom(firstLine); spot < end; ++spot) {
    if (!MayOpen(spot) || StateOf(spot).wasSeen) continue;
    const bool wasOpen = IsOpen(spot);
    StateOf(spot).wasSeen = true;
    ++version_;
    opens |= !wasOpen && IsOpen(spot);
  }
  return opens;
}

PixelSize PicturePlan::ShownSize(std::size_t spot, const PictureRoom& room) const {
  return FitPicture(spots_[spot].size, StateOf(spot).natural, room);
}

int PicturePlan::RowsOf(std::size_t spot, const PictureRoom& room) const {
  if (!IsOpen(spot)) return 0;
  if (StateOf(spot).known != PictureKnown::kSize) return kRowsOfWords;
  return RowsFor(ShownSize(spot, room).height, room.rowHeight);
}

std::vector<PictureBand> PicturePlan::Bands(const PictureRoom& room) const {
  std::vector<PictureBand> bands;
  for (std::size_t spot = 0; spot < spots_.size(); ++spot) {
    const int rows = RowsOf(spot, room);
    if (rows == 0) continue;
    if (bands.empty() || bands.back().line != spots_[spot].line) bands.push_back({spots_[spot].line, 0});
    bands.back().rows += rows;
  }
  return bands;
}

void PicturePlan::AddWanted(int firstLine, int lastLine, std::vector<std::size_t>& wanted) const {
  const std::size_t end = FirstFrom(lastLine + 1);
  for (std::size_t spot = FirstFrom(firstLine); spot < end; ++spot)
    if (MayOpen(spot)) wanted.push_back(spot);
}

std::vector<std::size_t> PicturePlan::Wanted(const PictureSight& sight) const {
  std::vector<std::size_t> wanted;
  AddWanted(sight.first, sight.last, wanted);
  AddWanted(sight.last + 1, sight.lastBelow, wanted);
  AddWanted(sight.firstAbove, sight.first - 1, wanted);
  if (scope_ != PictureScope::kAllPages) return wanted;
  const std::size_t most = wanted.size() + kMostAhead;
  for (std::size_t spot = 0; spot < spots_.size() && wanted.size() < most; ++spot) {
    const bool isNear = spots_[spot].line >= sight.firstAbove && spots_[spot].line <= sight.lastBelow;
    if (!isNear && MayOpen(spot) && StateOf(spot).known == PictureKnown::kNothing) wanted.push_back(spot);
  }
  return wanted;
}

}  // namespace quillet
