#include "bbs/article/page_request.h"

#include <algorithm>

#include "core/key_sequence.h"

namespace quillet {

void PageRequest::Begin(int key, const ReaderPlace& from, std::int64_t now) {
  key_ = key;
  from_ = from;
  at_ = now;
  pending_ = true;
  late_ = false;
}

void PageRequest::Abandon() {
  late_ = late_ || pending_;
  pending_ = false;
}

void PageRequest::Forget() {
  pending_ = late_ = false;
}

bool PageRequest::Answers(const ReaderPlace& page, std::int64_t now) {
  const bool answers = (pending_ && page != from_) || (late_ && now - at_ < kLate && LeadsTo(page));
  if (answers) Forget();
  return answers;
}

bool PageRequest::LeadsTo(const ReaderPlace& page) const {
  const int moved = page.place.top - from_.place.top;
  switch (key_) {
    case kKeyPageDown:
      return moved == ArticleLines::kPageStep || (page.atEnd && moved > 0 && moved < ArticleLines::kPageStep);
    case kKeyPageUp:
      return moved == -std::min(ArticleLines::kPageStep, from_.place.top);
    case kKeyHome:
      return page.place.top == 0;
    case kKeyEnd:
      return page.atEnd;
    default:
      return false;
  }
}

}  // namespace quillet
