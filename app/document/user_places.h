// Where one run of the program keeps what the user sets: the registry and the two folders of the files.
// User-interface thread.
#pragma once

#include <filesystem>
#include <memory>

#include <QTemporaryDir>

#include "platform/registry.h"
#include "settings/files/data_files.h"

namespace quillet {

struct UserPlaces {
  std::unique_ptr<Registry> registry;  // never null
  // What concerns the whole system is kept here; null: in the other one.
  std::unique_ptr<Registry> ofSystem{};
  DataFiles::Folders folders;
  std::filesystem::path cache{};           // of what can be fetched again; empty: nothing of it is kept
  std::unique_ptr<QTemporaryDir> scratch;  // removed with all it holds; null for the user's own places
};

// The user's own: beside the program, unless it is an installed one, and the user's data folder.
UserPlaces OwnPlaces();

// Everything in one folder, which is made when it is missing: of a user who is several, or tries something.
UserPlaces PlacesOfProfile(const std::filesystem::path& folder);

// Built-in settings, forgotten at the end: for a walk whose pictures must not depend on what a user has set,
// and that must leave no trace in it.
UserPlaces PlacesForOneRun();

}  // namespace quillet
