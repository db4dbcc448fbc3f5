// Turns a picture file, or the bytes of one, into an image no larger than a window needs. The file is
// anybody's: its bytes and pixels are limited, and nothing but a plain file is opened. Any thread but the
// user interface's; blocks as long as reading and decoding take.
#pragma once

#include <atomic>

#include <QByteArray>
#include <QImage>
#include <QString>

namespace quillet {

// Either an image (RGB32 or ARGB32_Premultiplied) or, for the user and in his language, why there is none.
struct DecodedPicture {
  QImage image;
  QString problem;
};

// Once `dropped` is true nobody wants the result: what is returned then is returned early and means nothing.
DecodedPicture DecodePictureFile(const QString& path, const std::atomic<bool>& dropped);
DecodedPicture DecodePictureBytes(const QByteArray& bytes, const std::atomic<bool>& dropped);

// A picture's longer side, in pixels, is scaled down to this: the width of the largest common display.
inline constexpr int kLongestPictureSide = 3840;

}  // namespace quillet
