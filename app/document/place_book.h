// The places that addresses belong to, for whatever site is open: the program's tables, read by a worker, and
// those of a site whose visitors are of a world of its own. User-interface thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "render/places/places_on_worker.h"

namespace quillet {

class PlaceBook {
 public:
  // `folders`: the program's data folder, then the user's, whose files take the place of the program's.
  explicit PlaceBook(std::vector<std::filesystem::path> folders);

  // Lets the worker read, which it does not by itself: its five megabytes are felt by whoever draws
  // meanwhile. Once the first frame is shown; later calls do nothing, and neither is it needed before a
  // Lookup.
  void Begin();
  // The site that is open has tables of its own in that folder; empty: it has none.
  void OpenSite(const std::filesystem::path& ownFolder);
  // As IpLocationDb. Waits for the worker, some milliseconds after Begin at most.
  std::u16string Lookup(std::uint32_t address, ProxyDetection detection);

 private:
  // Whose faults have been told.
  struct Tables {
    explicit Tables(const std::vector<std::filesystem::path>& folders) : read(folders) {}
    PlacesOnWorker read;
    bool isTold = false;
  };

  const std::vector<std::filesystem::path> folders_;
  std::optional<Tables> program_;
  std::filesystem::path ownFolder_;
  std::unique_ptr<Tables> own_;
};

}  // namespace quillet
