// The places, read on a thread of their own from the moment the object is made, so that a window's first
// frame does not wait for them. The owner makes every call and ends the object, on one thread.
#pragma once

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "render/places/ip_location_db.h"

namespace quillet {

class PlacesOnWorker {
 public:
  // Those of LoadIpLocationDb. Returns at once; where the system has no thread to give, with the places read.
  explicit PlacesOnWorker(const std::vector<std::filesystem::path>& folders);
  PlacesOnWorker(const PlacesOnWorker&) = delete;
  PlacesOnWorker& operator=(const PlacesOnWorker&) = delete;
  // Waits for the file that is being read, at most.
  ~PlacesOnWorker() = default;

  // Waits until all is read, some milliseconds after the construction.
  const IpLocationDb& Places();
  // What is wrong with the files, a line each for the developer. Waits too.
  const std::vector<std::string>& Remarks();

 private:
  const IpLocationLoad& Loaded();

  IpLocationLoad load_;
  std::jthread worker_;  // the last, so that it ends before what it writes
};

}  // namespace quillet
