#include "app/document/place_book.h"

#include <utility>

#include <QLoggingCategory>

namespace quillet {
namespace {

Q_LOGGING_CATEGORY(placesLog, "quillet.places")

}  // namespace

PlaceBook::PlaceBook(std::vector<std::filesystem::path> folders) : folders_(std::move(folders)) {}

void PlaceBook::Begin() {
  if (!program_) program_.emplace(folders_);
}

void PlaceBook::OpenSite(const std::filesystem::path& ownFolder) {
  if (ownFolder == ownFolder_) return;
  ownFolder_ = ownFolder;
  own_ = ownFolder.empty() ? nullptr : std::make_unique<Tables>(std::vector{ownFolder});
}

std::u16string PlaceBook::Lookup(std::uint32_t address, ProxyDetection detection) {
  if (!own_) Begin();
  Tables& tables = own_ ? *own_ : *program_;
  if (!std::exchange(tables.isTold, true))
    for (const std::string& remark : tables.read.Remarks())
      qCWarning(placesLog, "%s", remark.c_str());
  return tables.read.Places().LookupIpLocation(address, detection);
}

}  // namespace quillet
