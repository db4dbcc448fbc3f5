// Pictures of the dialogs, filled as a person who has used the program for a while would see them.
// User-interface thread.
#pragma once

#include <QString>

namespace quillet {

// "51-options-display.png" and so on into the folder, which exists. False when one could not be written.
bool SaveDialogPictures(const QString& folder);

}  // namespace quillet
