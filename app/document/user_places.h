// Where one run of the program keeps what the user sets: the registry and the two folders of the files.
// User-interface thread.
#pragma once

#include <memory>

#include <QTemporaryDir>

#include "platform/registry.h"
#include "settings/files/data_files.h"

namespace quillet {

struct UserPlaces {
  std::unique_ptr<Registry> registry;  // never null
  DataFiles::Folders folders;
  std::unique_ptr<QTemporaryDir> scratch;  // removed with all it holds; null for the user's own places
};

// The user's own: beside the program, unless it is an installed one, and the user's data folder.
UserPlaces OwnPlaces();

// Built-in settings, forgotten at the end: for a walk whose pictures must not depend on what a user has set,
// and that must leave no trace in it.
UserPlaces PlacesForOneRun();

}  // namespace quillet
