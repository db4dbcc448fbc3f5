// Where a picture that is looked at stands in its room, and how large: fitted, in its actual size, zoomed at
// a point, moved about. Device pixels throughout. Pure.
#pragma once

#include "render/picture_fit.h"

namespace quillet {

struct ZoomPoint {
  double x = 0;
  double y = 0;
};

// Of the whole picture; where it is zoomed its edges may lie outside of the room.
struct ZoomPlace {
  int left = 0;
  int top = 0;
  PixelSize size;

  bool Holds(ZoomPoint at) const {
    return at.x >= left && at.y >= top && at.x < left + size.width && at.y < top + size.height;
  }
  bool operator==(const ZoomPlace&) const = default;
};

class PictureZoom {
 public:
  // Another picture, or its size has become known: fitted. An empty size is none, and everything stays put.
  void SetPicture(PixelSize natural);
  // What is fitted stays fitted; of anything else the middle of what is in sight stays there. `scale`: device
  // pixels that a picture's pixel takes at most while it is fitted.
  void SetRoom(PixelSize room, double scale);

  void Fit();
  // One of the picture's pixels becomes one of the screen's, and what is at the point stays there; from there
  // back to fitted.
  void ToggleActualSize(ZoomPoint at);
  // Steps of a wheel or of keys, to be seen larger where positive; parts of a step count. Halts at the actual
  // size on its way.
  void ZoomBy(double steps, ZoomPoint at);
  // No edge of it leaves the room's edge behind; what is smaller than the room stays in the middle.
  void MoveBy(double right, double down);

  bool IsFitted() const { return isFitted_; }
  // It reaches beyond the room, so that there is something to move.
  bool CanMove() const;
  // Device pixels that a picture's pixel takes.
  double Factor() const { return factor_; }
  ZoomPlace Place() const;
  ZoomPoint Middle() const { return {room_.width / 2.0, room_.height / 2.0}; }
  // In which bounds it has to be decoded to be shown now: as it is fitted, or some doublings of that, so that
  // not every step asks for another image; never larger than the picture, nor than kMostPixels.
  PixelSize WantedBounds() const;

  static constexpr double kStep = 1.25;
  static constexpr double kMostFactor = 16;
  // What decoding may take: 160 MB.
  static constexpr double kMostPixels = 40e6;

 private:
  double FittedFactor() const;
  double LeastFactor() const;
  void SetFactor(double factor, ZoomPoint at);
  void KeepInRoom();

  PixelSize natural_;
  PixelSize room_{1, 1};
  double scale_ = 1;
  bool isFitted_ = true;
  double factor_ = 1;
  double left_ = 0;  // of the picture in the room
  double top_ = 0;
};

}  // namespace quillet
