// What the settings that offer a choice can be. The lists of setting_table.cpp say which of them a setting
// offers, in which order (which is their numbers in the file) and in which words. Any thread.
#pragma once

namespace quillet {

// How one leaves a site while logged in.
enum class LeaveMode { kAsk, kLogOut, kDirectly };

// What fetches pictures.
enum class DownloadEngine { kWinInet, kWinHttp };
// On which pages pictures open by themselves, and how large.
enum class PictureScope { kNone, kCurrentPage, kAllPages };
enum class PictureSize { kNone, kThumbnail, kNormal, kFullWidth };

// The grid's size in percent of the largest that the window has room for. Smaller ones are read by nobody.
inline constexpr int kLeastZoom = 40;
inline constexpr int kMostZoom = 100;

enum class BackdropStyle { kNone, kStretch, kCrop, kMovingCrop };

// What the black lists do to push lines and to titles; each includes the ones before it.
enum class PushTreatment { kNone, kNoPictures, kHideText, kMaskId, kRemove };
enum class TitleTreatment { kNone, kHideText, kMaskId };

// The order of the hot articles.
enum class HotSortMode { kByBoard, kNewestFirst, kByPopularity };

// What a gesture of the mouse does; none of them offers everything.
enum class MouseScheme {
  kNothing,
  kWeb,
  kWheel,      // what the wheel does by itself
  kNeighbour,  // the article before, the article after
  kUpDown,
  kPages,
  kEnds,
  kBF,
  kThread,
  kAuthor,
  kRead
};

}  // namespace quillet
