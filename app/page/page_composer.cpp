#include "app/page/page_composer.h"

#include <algorithm>
#include <utility>

#include "platform/clock.h"
#include "render/link_signs.h"
#include "render/style/styled_screen.h"
#include "settings/files/track_words.h"

namespace quillet {
namespace {

// Prompts take the status line and the row above it.
constexpr int kPromptRow = kBottomRow - 1;
// The pages on which something is revealed; going from one kind to another ends it.
constexpr std::uint32_t kRevealingPages = PF_READING | PF_ARTICLE_LIST;

bool IsSameRow(const ScreenSnapshot& one, const ScreenSnapshot& other, int row) {
  const auto index = static_cast<std::size_t>(row);
  return std::equal(one.text[index].begin(), one.text[index].begin() + kCols, other.text[index].begin()) &&
         std::equal(one.attr[index].begin(), one.attr[index].begin() + kCols, other.attr[index].begin());
}

}  // namespace

PageComposer::PageComposer(const Parts& parts) : parts_(parts), article_(parts.article) {
  RefreshRules();
}

void PageComposer::RefreshRules() {
  rules_.settings = &parts_.settings.Fields();
  rules_.names = &parts_.settings.Names();
  rules_.titleWords = &parts_.settings.TitleWords();
  Keywords keywords(WordsOfTrackRules(parts_.settings.Map().TrackLines()));
  if (keywords != rules_.keywords) keywordMarks_.Forget();
  rules_.keywords = std::move(keywords);
  rules_.myId = parts_.seen.loginId;
  rules_.reveal = reveal_.Shown();
  rules_.now = SecondsNow();
  article_.SetRules(rules_);
}

void PageComposer::PressReveal(std::int64_t now) {
  reveal_.Press(now);
  RefreshRules();
}

bool PageComposer::EndReveal() {
  if (reveal_.Shown() == Reveal::kNothing) return false;
  reveal_.Reset();
  RefreshRules();
  return true;
}

std::string PageComposer::OnScreen(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  const std::uint32_t kind = page.flags & kRevealingPages;
  if (kind != pageKind_) EndReveal();
  pageKind_ = kind;
  if (rules_.myId != parts_.seen.loginId) RefreshRules();
  if (article_.IsShown())
    covered_ = Covered{screen, page};
  else if (!parts_.seen.articleOpen)
    covered_.reset();
  return sight_.OnScreen(screen, page);
}

void PageComposer::Compose(const ScreenSnapshot& screen, const UnderstoodPage& page, bool caretShown,
                           FrameState& frame) {
  rules_.now = SecondsNow();
  frame.progress = 0;
  if (article_.IsShown()) {
    article_.Compose(frame);
    captions_ = article_.Captions();
    rowOf_.fill(-1);
  } else {
    ComposeScreen(screen, page, frame);
    if (IsPromptOverArticle(screen)) KeepArticleAbovePrompt(screen, frame);
  }
  PlaceCaret(screen, page, caretShown, frame);
}

void PageComposer::PlaceCaret(const ScreenSnapshot& screen, const UnderstoodPage& page, bool caretShown,
                              FrameState& frame) const {
  frame.caretRow = -1;
  if (!caretShown || !screen.CursorInside() || article_.IsShown()) return;
  frame.caretRow = PageRowOf(screen.cursorRow);
  frame.caretCol = screen.cursorCol;
  frame.caretShape = page.typing == Typing::kText ? CaretShape::kBlock : CaretShape::kLine;
}

void PageComposer::ComposeScreen(const ScreenSnapshot& screen, const UnderstoodPage& page,
                                 FrameState& frame) {
  captions_.clear();
  const StyledScreen styled = StyleScreen(screen, page, rules_, parts_.seen.article.postTime);
  frame.page = styled.page;
  rowOf_ = styled.rowOf;
  if (page.content == PageContent::kArticle) LaySigns(page, frame.page);
  if (sight_.IsNarrow()) MoveIntoSight(PageRowOf(screen.cursorRow), frame.page);
  if (!OffersCommands(page)) return;
  const Conditions holds = Conditions().AddIf(parts_.bookmarks.HasOpenArticle(), Condition::kBookmarked);
  ArticleBar bar = MakeArticleBarOver(frame.page[kBottomRow],
                                      {.offers = MakeCaptions(holds), .hovered = NumberOf(hovered_)});
  frame.page[kBottomRow] = std::move(bar.row);
  captions_ = std::move(bar.areas);
}

// Behind the links of the text, not of what is asked below it.
void PageComposer::LaySigns(const UnderstoodPage& understood, Page& page) const {
  for (int row = 0; row < kBottomRow; ++row) {
    const int screenRow = ScreenRowAt(row);
    if (screenRow < 0 || understood.IsPromptRow(screenRow)) continue;
    LayLinkSigns(understood.Line(screenRow).links, page[static_cast<std::size_t>(row)]);
  }
}

bool PageComposer::SetRowsInSight(int rows) {
  const int above = rows - 1;
  if (above == sight_.Rows()) return false;
  sight_.SetRows(above);
  article_.SetLinesInSight(above);
  return true;
}

// The bottom row stays; the row that is cut by the window's edge shows what stands above.
void PageComposer::MoveIntoSight(int cursorRow, Page& page) {
  const int first = kBottomRow - sight_.Rows();
  const int shift = sight_.TopFor(cursorRow) - first;
  const Page before = page;
  const auto rowBefore = rowOf_;
  for (int row = 0; row < kBottomRow; ++row) {
    const auto to = static_cast<std::size_t>(row);
    const auto from = static_cast<std::size_t>(std::max(row + shift, 0));
    page[to] = row + shift < 0 ? PageRow{} : before[from];
    rowOf_[to] = row < first ? -1 : rowBefore[from];
  }
}

bool PageComposer::IsPromptOverArticle(const ScreenSnapshot& screen) const {
  if (!covered_ || article_.LineCount() == 0 || !parts_.settings.Fields().webArticle) return false;
  for (int row = 0; row < kPromptRow; ++row)
    if (!IsSameRow(screen, covered_->screen, row)) return false;
  // What is asked is about the BBS's page, and is seen over no other.
  const std::optional<int> top = article_.Reading().Lines().TopOf(covered_->screen, covered_->page);
  return top && article_.StandsLikePage(*top, kLinesShown);
}

void PageComposer::KeepArticleAbovePrompt(const ScreenSnapshot& screen, FrameState& frame) {
  PageRow above = std::move(frame.page[kPromptRow]);
  PageRow prompt = std::move(frame.page[kBottomRow]);
  article_.Compose(frame);
  if (!IsSameRow(screen, covered_->screen, kPromptRow)) frame.page[kPromptRow] = std::move(above);
  frame.page[kBottomRow] = std::move(prompt);
  for (int row = 0; row < kRows; ++row)
    rowOf_[static_cast<std::size_t>(row)] = row < kPromptRow ? -1 : row;
}

bool PageComposer::OffersCommands(const UnderstoodPage& page) const {
  return page.Shows(PF_READING) && parts_.seen.article.IsArticle() &&
         !parts_.settings.Fields().hideTopLeftIcons;
}

bool PageComposer::Offers(Command command) const {
  return std::any_of(
      captions_.begin(), captions_.end(),
      [number = NumberOf(command)](const CaptionArea& area) { return area.command == number; });
}

Command PageComposer::CommandAt(int row, int col) const {
  return row == kBottomRow ? CaptionCommandAt(captions_, col) : Command::kNone;
}

bool PageComposer::SetHovered(Command command) {
  if (command == hovered_) return false;
  hovered_ = command;
  article_.SetHovered(command);
  return true;
}

int PageComposer::PageRowOf(int screenRow) const {
  const auto* const found = std::find(rowOf_.begin(), rowOf_.end(), screenRow);
  return found == rowOf_.end() ? -1 : static_cast<int>(found - rowOf_.begin());
}

}  // namespace quillet
