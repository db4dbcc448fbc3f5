// Which faces the grid is drawn with: the face the user chose, then a fixed chain of faces that have Chinese
// characters on a grid, then whatever Qt finds. Used by the glyph rasteriser. User-interface thread.
#pragma once

#include <optional>
#include <vector>

#include <QRawFont>
#include <QString>
#include <QStringList>

namespace quillet {

// The installed families to try, best first; never empty.
QStringList FaceFamilies(const QString& preferred);

// A glyph of a face that has one for the character.
struct FaceGlyph {
  QRawFont font;
  quint32 index = 0;

  // How far the next one stands behind it, in the font's pixels; 0 where the face does not say.
  double Advance() const;
};

// The faces of a chain at one em size. A face is opened when the first character asks for it.
class SizedFaces {
 public:
  SizedFaces(QStringList families, double emPixels);

  // Empty when no installed face has the character.
  std::optional<FaceGlyph> Find(char16_t unit);
  // The same, but faces without Chinese characters come last: their symbols are made for narrow cells.
  std::optional<FaceGlyph> FindWide(char16_t unit);

 private:
  const QRawFont& Face(qsizetype index);
  bool IsChinese(qsizetype index);
  std::optional<FaceGlyph> FindByMerging(char16_t unit) const;

  QStringList families_;
  double emPixels_;
  std::vector<QRawFont> faces_;
};

}  // namespace quillet
