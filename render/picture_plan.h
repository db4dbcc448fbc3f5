// Which pictures of an article are open, the rows that they take, and in which order they are wanted. Knows
// the links of the open article, what the user has opened and closed, and what has been told of each picture.
// Used by the article's pictures. Pure.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bbs/link_places.h"
#include "render/picture_fit.h"
#include "render/picture_rows.h"

namespace quillet {

enum class PictureOpens : std::uint8_t { kByItself, kByHand };

// A link that may show a picture.
struct PictureSpot {
  int line = 0;   // of the article
  int first = 0;  // the link's column
  std::string link{};
  LinkKind kind = LinkKind::kPicture;
  PictureSize size = PictureSize::kNormal;
  PictureOpens opens = PictureOpens::kByItself;

  bool operator==(const PictureSpot&) const = default;
};

enum class PictureKnown : std::uint8_t {
  kNothing,
  kSize,
  kFailure,
  kNoPicture  // the link has turned out to show none
};

// Lines of the article around what the window shows, each with the last one of its kind.
struct PictureSight {
  int firstAbove = 0;  // kAbove windows above it
  int first = 0;
  int last = 0;
  int lastBelow = 0;  // kBelow windows below it

  bool operator==(const PictureSight&) const = default;
  static constexpr int kAbove = 1;
  static constexpr int kBelow = 2;
};

class PicturePlan {
 public:
  // Another article's links are to come.
  void Forget();
  // In the order of their lines. What is known of a link is kept while it is in the article again, so often
  // and in whatever line: only its place in the order of the same links counts.
  void SetSpots(std::vector<PictureSpot> spots);
  // How far pictures open that open by themselves.
  void SetScope(PictureScope scope) {
    if (std::exchange(scope_, scope) != scope) ++version_;
  }
  // Returns whether anything is different.
  bool Learn(std::size_t spot, PictureKnown known, PixelSize natural);

  // Another number when anything below may have another answer.
  unsigned Version() const { return version_; }
  std::size_t Count() const { return spots_.size(); }
  const PictureSpot& At(std::size_t spot) const { return spots_[spot]; }
  // Those of a line: the first one, and the one behind the last.
  std::size_t FirstFrom(int line) const;
  bool IsOpen(std::size_t spot) const;
  PictureKnown Known(std::size_t spot) const { return StateOf(spot).known; }
  // Empty until it is known.
  PixelSize NaturalSize(std::size_t spot) const { return StateOf(spot).natural; }

  // The user's: of one, and of all in these lines, which open unless all of them are.
  void SetOpen(std::size_t spot, bool open) {
    StateOf(spot).chosen = open ? Chosen::kOpen : Chosen::kClosed;
    ++version_;
  }
  bool AllOpen(int firstLine, int lastLine) const;
  void SetAllOpen(int firstLine, int lastLine, bool open);

  // These lines are in sight: what opens by itself there stays open. Returns whether anything has opened.
  bool See(int firstLine, int lastLine);

  // In device pixels.
  PixelSize ShownSize(std::size_t spot, const PictureRoom& room) const;
  // 0 where it is closed.
  int RowsOf(std::size_t spot, const PictureRoom& room) const;
  std::vector<PictureBand> Bands(const PictureRoom& room) const;
  // Most urgent first: what is in sight, what is below it, what is above; then, where all pages open by
  // themselves, the next ones of which nothing is known, kMostAhead at most.
  std::vector<std::size_t> Wanted(const PictureSight& sight) const;

  static constexpr int kMostAhead = 64;

 private:
  enum class Chosen : std::uint8_t { kNothing, kOpen, kClosed };
  struct State {
    Chosen chosen = Chosen::kNothing;
    bool wasSeen = false;
    PictureKnown known = PictureKnown::kNothing;
    PixelSize natural;
  };

  std::size_t NextIdOf(const std::string& link);
  State& StateOf(std::size_t spot) { return states_[ids_[spot]]; }
  const State& StateOf(std::size_t spot) const { return states_[ids_[spot]]; }
  bool MayOpen(std::size_t spot) const;
  void AddWanted(int firstLine, int lastLine, std::vector<std::size_t>& wanted) const;

  std::vector<PictureSpot> spots_;
  std::vector<std::size_t> ids_;  // of each spot, an index of states_
  std::vector<State> states_;
  // A link's places in the article, top to bottom: an index of states_ each.
  struct Occurrences {
    std::vector<std::size_t> ids;
    std::size_t taken = 0;  // in this round of giving them out
    unsigned round = 0;
  };
  std::unordered_map<std::string, Occurrences> occurrencesOf_;
  unsigned round_ = 0;
  PictureScope scope_ = PictureScope::kNone;
  unsigned version_ = 0;
};

}  // namespace quillet
