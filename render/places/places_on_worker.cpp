#include "render/places/places_on_worker.h"

#include <exception>
#include <system_error>
#include <utility>

namespace quillet {
namespace {

// An empty result when memory runs out: places are no reason to end a program.
IpLocationLoad LoadOrNothing(const std::vector<std::filesystem::path>& folders, const std::stop_token& stop) {
  try {
    return LoadIpLocationDb(folders, stop);
  } catch (const std::exception& fault) {
    return {.places = {}, .remarks = {std::string("places are not read: ") + fault.what()}};
  }
}

}  // namespace

PlacesOnWorker::PlacesOnWorker(const std::vector<std::filesystem::path>& folders) {
  try {
    worker_ =
        std::jthread([this, folders](const std::stop_token& stop) { load_ = LoadOrNothing(folders, stop); });
  } catch (const std::system_error&) {
    load_ = LoadOrNothing(folders, {});
  }
}

const IpLocationDb& PlacesOnWorker::Places() {
  return Loaded().places;
}

const std::vector<std::string>& PlacesOnWorker::Remarks() {
  return Loaded().remarks;
}

const IpLocationLoad& PlacesOnWorker::Loaded() {
  if (worker_.joinable()) worker_.join();
  return load_;
}

}  // namespace quillet
