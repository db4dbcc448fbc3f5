// What the window says of pictures that are not shown. Pure.
#pragma once

#include <QString>

#include "media/fetch/picture_fault.h"

namespace quillet {

// Why, as part of a sentence; empty where nothing failed.
QString DescribePictureFault(PictureFault fault);

}  // namespace quillet
