// Asks for a file to write to, in one of several kinds. User-interface thread.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <vector>

#include <QString>
#include <QWidget>

namespace quillet {

struct SaveKind {
  QString name;
  QString ending;  // of the file's name, with its dot
};

struct SaveQuestion {
  QString title;
  QString name;    // proposed, without an ending
  QString folder;  // proposed; empty: the user's documents
  std::vector<SaveKind> kinds;
  std::size_t kind = 0;  // proposed
};

struct SaveAnswer {
  std::filesystem::path file;
  // What the file's name ends with decides, else what is chosen beside it.
  std::size_t kind = 0;
};

// Returns when the user has answered; nothing when he does not want it. A file that is there may be replaced:
// he has been asked.
std::optional<SaveAnswer> AskWhereToSave(QWidget& window, const SaveQuestion& question);

}  // namespace quillet
