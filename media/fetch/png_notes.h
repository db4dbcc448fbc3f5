// What a PNG file says beyond its pixels: texts, profiles of colours, hints. A few kilobytes of that may
// unpack to gigabytes before the first pixel is read, and nothing of it is shown. Pure; any thread.
#pragma once

#include <QByteArray>

namespace quillet {

// The same file where there is nothing of that. What is no PNG comes back as it is.
QByteArray WithoutNotes(const QByteArray& png);

}  // namespace quillet
