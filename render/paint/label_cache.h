// The texts and shapes of marks, drawn once with the system's own text layout and kept as coverage tiles:
// ages, tags, flags. Used by the row marks. User-interface thread.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <QFont>
#include <QImage>
#include <QStringList>

#include "render/paint/canvas.h"

namespace quillet {

// A coverage tile that owns its bytes.
class OwnedTile {
 public:
  OwnedTile() = default;
  // From an 8-bit grey image; each byte becomes `opacity` of what it was.
  explicit OwnedTile(const QImage& image, double opacity = 1);

  Tile View() const { return {bytes_.data(), width_, width_, height_}; }
  int Width() const { return width_; }
  int Height() const { return height_; }

 private:
  std::vector<std::uint8_t> bytes_;
  int width_ = 0;
  int height_ = 0;
};

struct Label {
  OwnedTile ink;
  int baseline = 0;  // from the tile's top
};

enum class MarkShape {
  kBox,      // with rounded corners
  kPennant,  // flies to the right and narrows to a point
};

class LabelCache {
 public:
  void SetFaces(const QStringList& families, bool smooth);

  // The text in `em` pixels, at most `room` pixels wide: what is too long ends in "…". Null when there is no
  // room for anything, or no text. Good until the next call.
  const Label* Elided(const std::u16string& text, int em, int room, double opacity);
  // The text in `em` pixels, pushed together to fit `room`, each em of it to no less than `narrowest` pixels;
  // null when it does not fit.
  const Label* Condensed(const std::u16string& text, int em, double narrowest, int room, double opacity);
  // Neither side is below 1. Good until the next call.
  const OwnedTile& Shape(MarkShape shape, QSize size);

 private:
  struct Key {
    std::u16string text;
    int em;
    int room;
    bool elided;
    double opacity;
    bool operator<(const Key& other) const {
      return std::tie(text, em, room, elided, opacity) <
             std::tie(other.text, other.em, other.room, other.elided, other.opacity);
    }
  };

  QFont FontOf(int em) const;
  double WidthPerEm(std::u16string_view text);
  const Label* Keep(const Key& key, const QString& text, int em);

  QStringList families_;
  bool smooth_ = true;
  std::map<Key, Label> labels_;
  std::map<std::tuple<MarkShape, int, int>, OwnedTile> shapes_;
  std::map<std::u16string, double, std::less<>> widths_;
};

}  // namespace quillet
