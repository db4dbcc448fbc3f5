#include "render/link_signs.h"

#include <algorithm>

#include "render/style_colours.h"

namespace quillet {
namespace {

constexpr int kGap = 1;
constexpr int kSignCells = 2;
constexpr std::uint8_t kNoSign = 0;

std::uint8_t SignOf(LinkKind kind) {
  if (kind == LinkKind::kPicture || kind == LinkKind::kPicturePage) return kPictureSign;
  return kind == LinkKind::kVideo ? kVideoSign : kNoSign;
}

// On the grounds that the sign's colour is made for.
bool IsFree(const PageCell& cell) {
  return cell.byte == ' ' && cell.style == 0 && (cell.back == kPlainGround || cell.back == kPushGround);
}

bool IsHidden(const PageCell& cell) {
  return (cell.style & CS_HIDDEN) != 0;
}

}  // namespace

void LayLinkSigns(const LinkPlaces& links, PageRow& row) {
  auto* const cells = row.cells.begin();
  for (const LinkPlace& link : links) {
    const std::uint8_t sign = SignOf(link.kind);
    const int first = link.last + kGap;
    const int end = first + kSignCells + kGap;
    if (sign == kNoSign || end > kAgeCol) continue;
    if (!std::all_of(cells + link.last, cells + end, IsFree) ||
        std::any_of(cells + link.first, cells + link.last, IsHidden))
      continue;
    std::for_each(cells + first, cells + first + kSignCells, [=](PageCell& cell) { cell.fore = sign; });
  }
}

}  // namespace quillet
