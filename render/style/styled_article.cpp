#include "render/style/styled_article.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "bbs/screen_fields.h"
#include "core/byte_words.h"
#include "render/row_edit.h"
#include "render/style/line_style.h"
#include "render/style/list_treatment.h"
#include "render/style/push_clock.h"

namespace quillet {
namespace {

constexpr std::size_t kHeaderLines = 4;  // the rule under it too

std::uint64_t AddToPrint(std::uint64_t print, const ScreenRow& bytes) {
  constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
  for (std::size_t at = 0; at < kRowStride; at += 8)
    print = std::rotl((print ^ LoadWord(bytes.data() + at)) * kFactor, 29);
  return print;
}

std::uint64_t PrintOf(const ArticleLine& line) {
  return AddToPrint(AddToPrint(0, line.text), line.attr);
}

bool IsPlain(const ScreenRow& attr) {
  return std::all_of(attr.begin(), attr.begin() + kCols, [](std::uint8_t a) { return a == kAttrBlank; });
}

}  // namespace

void StyledArticle::Follow(const ArticleLines& lines, std::int64_t postTime, const StyleRules& rules) {
  const std::size_t known = lines_.size();
  std::size_t same = known;
  if (source_ != &lines || version_ != lines.Version() || postTime_ != postTime) {
    const bool isLater = postTime_ != postTime;
    postTime_ = postTime;
    same = ReadLines(lines, isLater, rules.now);
    source_ = &lines;
    version_ = lines.Version();
  }
  const bool listsDiffer = AskLists(rules);
  if (!listsDiffer && same == known && lines_.size() == known) return;
  ShowFrom(listsDiffer ? 0 : same);
  FindFirstPush();
}

PageRow StyledArticle::Row(const ArticleLines& lines, int index, const StyleRules& rules) const {
  const int line = LineOf(index);
  if (line < 0 || line >= lines.Count()) return {};
  const ArticleLine& cells = lines.At(line);
  PageRow row = PlainRow(cells.text, cells.attr);
  const Facts& facts = lines_[static_cast<std::size_t>(line)];
  if (facts.writer == kNobody || !cells.push) {
    if (line == 0) StyleHeaderAuthor(row, author_, rules);
    ColourKeywords(row, rules.keywords);
    return row;
  }
  PushInPage push;
  push.line = *cells.push;
  push.id = writers_[static_cast<std::size_t>(facts.writer)].id;
  push.time = facts.time;
  const int above = LineOf(index - 1);
  push.followsOwnId = above >= 0 && lines_[static_cast<std::size_t>(above)].writer == facts.writer;
  StylePushLine(row, push, rules);
  return row;
}

const std::u16string* StyledArticle::PusherIn(int index) const {
  const int line = LineOf(index);
  if (line < 0 || !IsPush(static_cast<std::size_t>(line))) return nullptr;
  return &writers_[static_cast<std::size_t>(lines_[static_cast<std::size_t>(line)].writer)].id;
}

bool StyledArticle::HidesIn(int index, const StyleRules& rules) const {
  const std::u16string* const id = PusherIn(index);
  return id != nullptr && PushTreatmentOf(rules, *id) >= PushTreatment::kHideText;
}

bool StyledArticle::KeepsPicturesClosed(int index, const StyleRules& rules) const {
  const std::u16string* const id = PusherIn(index);
  return id != nullptr && ListedPushTreatmentOf(rules, *id) >= PushTreatment::kNoPictures;
}

int StyledArticle::LineOf(int index) const {
  return index >= 0 && index < Count() ? shown_[static_cast<std::size_t>(index)] : -1;
}

int StyledArticle::IndexOf(int line) const {
  return static_cast<int>(std::lower_bound(shown_.begin(), shown_.end(), line) - shown_.begin());
}

// Reads the lines that are new or different, for an article tells only that it changed, not where. Returns
// the first of them.
std::size_t StyledArticle::ReadLines(const ArticleLines& lines, bool isLater, std::int64_t now) {
  const std::size_t known = lines_.size();
  const auto count = static_cast<std::size_t>(lines.Count());
  lines_.resize(count);
  std::size_t first = std::min(known, count);
  // With another time or header above it, a line reads differently too.
  bool readAgain = isLater;
  for (std::size_t at = 0; at < count; ++at) {
    const ArticleLine& line = lines.At(static_cast<int>(at));
    const bool isKnown = at < known;
    if (isKnown && !readAgain && lines_[at].print == PrintOf(line)) continue;
    if (at == 0) readAgain = true;
    const Facts facts = Read(line, at, now);
    if (isKnown && facts.earliest != lines_[at].earliest) readAgain = true;
    lines_[at] = facts;
    first = std::min(first, at);
  }
  colouredLines_ = static_cast<int>(
      std::count_if(lines_.begin(), lines_.end(), [](const Facts& facts) { return facts.isColoured; }));
  return first;
}

StyledArticle::Facts StyledArticle::Read(const ArticleLine& line, std::size_t at, std::int64_t now) {
  Facts facts;
  facts.print = PrintOf(line);
  facts.earliest = at == 0 ? postTime_ : lines_[at - 1].earliest;
  if (at == 0) author_ = FieldText(line.text, line.author);
  if (line.push) {
    ReadPush(line.text, *line.push, facts, now);
  } else {
    facts.isOrigin = line.note == NoteLine::kOrigin;
    facts.isColoured = IsAuthorsOwn(line, at) && !IsPlain(line.attr);
  }
  return facts;
}

void StyledArticle::ReadPush(const ScreenRow& text, const PushLine& push, Facts& facts, std::int64_t now) {
  facts.writer = WriterOf(PushId(text, push));
  if (!push.stamp) return;
  PushClock clock(facts.earliest);
  facts.time = clock.TimeOf(*push.stamp, now);
  facts.earliest = clock.Earliest();
}

// Header, quotes and the BBS's notes have the BBS's own colours.
bool StyledArticle::IsAuthorsOwn(const ArticleLine& line, std::size_t at) const {
  const bool isHeader = !author_.empty() && at < kHeaderLines;
  const std::string_view cells = BytesOf(line.text);
  return !isHeader && line.note == NoteLine::kNone && !cells.starts_with(": ") && !cells.starts_with("> ");
}

int StyledArticle::WriterOf(std::u16string id) {
  const auto [at, isNew] = writerOf_.try_emplace(std::move(id), static_cast<int>(writers_.size()));
  if (isNew) writers_.push_back({at->first});
  return at->second;
}

// Returns whether other lines are left out than before.
bool StyledArticle::AskLists(const StyleRules& rules) {
  bool differs = false;
  for (Writer& writer : writers_) {
    const bool isRemoved = PushTreatmentOf(rules, writer.id) == PushTreatment::kRemove;
    differs |= isRemoved != writer.isRemoved;
    writer.isRemoved = isRemoved;
  }
  return differs;
}

void StyledArticle::ShowFrom(std::size_t line) {
  shown_.resize(static_cast<std::size_t>(IndexOf(static_cast<int>(line))));
  for (; line < lines_.size(); ++line)
    if (!IsPush(line) || !writers_[static_cast<std::size_t>(lines_[line].writer)].isRemoved)
      shown_.push_back(static_cast<int>(line));
}

void StyledArticle::FindFirstPush() {
  const auto origin =
      std::find_if(lines_.rbegin(), lines_.rend(), [](const Facts& facts) { return facts.isOrigin; });
  const auto behind = static_cast<int>(lines_.rend() - origin);
  const auto push = std::find_if(shown_.begin() + IndexOf(behind), shown_.end(),
                                 [&](int line) { return IsPush(static_cast<std::size_t>(line)); });
  firstPush_ = push == shown_.end() ? -1 : static_cast<int>(push - shown_.begin());
}

}  // namespace quillet
