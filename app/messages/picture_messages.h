// What the window says of pictures that are not shown. Pure.
#pragma once

#include <QString>

#include "media/fetch/picture_wish.h"

namespace quillet {

// What stands in the place of a picture without an image: how far it has come, or why there is none.
QString DescribePictureWithoutImage(const PictureNow& now);

}  // namespace quillet
