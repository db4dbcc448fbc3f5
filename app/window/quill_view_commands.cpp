// The view's commands: what each does there, what they depend on, and the menu of the right button.
#include "app/interaction/context_menu.h"
#include "app/messages/article_messages.h"
#include "app/messages/push_messages.h"
#include "app/window/quill_view.h"
#include "bbs/page_flags.h"
#include "input/mouse_scheme.h"
#include "input/page_commands.h"
#include "platform/clock.h"
#include "settings/setting_table.h"

namespace quillet {

void CQuillView::OfferCommands() {
  runner_.AddState([this](CommandState& state) { AddStateTo(state); });
  edit_.Offer(runner_);
  commands_.Offer(runner_);
  runner_.On(Command::kLogin, [this] { AskLogin(); });
  runner_.On(Command::kChooseLink, [this] { ShowLinks(Command::kOpenLink); });
  runner_.On(Command::kChooseLinkCopy, [this] { ShowLinks(Command::kCopyLink); });
  runner_.On(Command::kReveal, [this] { Reveal(); });
  runner_.On(Command::kTogglePlaces, [this] { TogglePlaces(); });
  runner_.On(Command::kSideButtons, [this] { sideButtons_.SwitchKeyboard(); });
  runner_.On(Command::kSearch, [this] { search_.Perform(SearchStep::kAsk); });
  runner_.On(Command::kSearchNext, [this] { search_.Perform(SearchStep::kNext); });
  runner_.On(Command::kSearchPrevious, [this] { search_.Perform(SearchStep::kPrevious); });
  runner_.On(Command::kHotList, [this] { sideList_.Toggle(ArticleListKind::kHot); });
  runner_.On(Command::kTrackedList, [this] { sideList_.Toggle(ArticleListKind::kTracked); });
  runner_.On(Command::kBookmarkList, [this] { sideList_.Toggle(ArticleListKind::kBookmarks); });
  runner_.On(Command::kCompactLists, [this] { sideList_.SetCompact(!sideList_.IsCompact()); });
  OfferPageCommands();
}

// Those that are nothing but a key of the BBS's page.
void CQuillView::OfferPageCommands() {
  // A key that the client keeps for itself, for those who need it on the BBS.
  runner_.On(Command::kSendControlV, [this] { SendBytes(std::string(SiteKeyOf(Command::kSendControlV))); });
  for (const CommandRow& row : AllCommands()) {
    if (SiteKeyOf(row.command).empty() || runner_.Has(row.command)) continue;
    runner_.On(row.command, [this, command = row.command] {
      const Picture picture = composer_.ShowsArticle() ? Picture::kArticle : Picture::kScreen;
      pointer_.Act(DecidePageCommand(command, picture));
    });
  }
}

void CQuillView::AddStateTo(CommandState& state) const {
  const bool connected = connection_.IsConnected();
  const bool local = article_.IsShown();
  const ArticleInfo& open = connection_.Seen().article;
  const bool reading = page_.Shows(PF_READING) && open.IsArticle();
  const bool bookmarked = doc_.GetBookmarks().HasOpenArticle();
  const bool busy = automations_.IsBusy();
  const bool asksCode = open.code.empty() && !bookmarked;
  const bool begun = connected || connection_.IsClosed();
  state.holds.AddIf(connected, Condition::kConnected)
      .AddIf(connection_.IsConnecting(), Condition::kConnecting)
      .AddIf(connected || connection_.IsConnecting(), Condition::kHasLine)
      .AddIf(begun, Condition::kBegun)
      .AddIf(local || reading, Condition::kArticle)
      .AddIf(local, Condition::kLocalArticle)
      .AddIf(local && article_.HasPushes(), Condition::kHasPushes)
      .AddIf(bookmarked, Condition::kBookmarked)
      .AddIf(busy, Condition::kAutomation)
      .AddIf(busy && asksCode, Condition::kCodeOutOfReach)
      .AddIf(selection_.IsShown(), Condition::kSelection)
      .AddIf(web_.HasEngine(SearchEngine::kFirst), Condition::kFirstEngine)
      .AddIf(web_.HasEngine(SearchEngine::kSecond), Condition::kSecondEngine)
      .AddIf(!RowOf(&Settings::ipToName).Acts(), Condition::kPlacesIdle)
      .AddIf(sideButtons_.isVisible(), Condition::kHasSideButtons)
      .AddIf(sideList_.IsCompact(), Condition::kCompactLists);
  // What lies over the page keeps hands away from it.
  if (!overlays_.IsCovered() && !sideList_.Shown())
    state.page = PageUnderHands(local ? Picture::kArticle : Picture::kScreen, page_);
}

void CQuillView::Refuse(Command command, Refusal refusal) {
  switch (refusal) {
    case Refusal::kBusy:
      return toast_.Show(DescribeNoPush(NoPushReason::kBusy));
    case Refusal::kNotYet:
      return toast_.Show(DescribeActsNotYet(QString::fromStdU16String(NameOf(command, {}))));
    case Refusal::kGone:
      return toast_.Show(u"選取的文字已經不在畫面上"_qs);
    case Refusal::kNotConnected:
    case Refusal::kNotNow:
      return toast_.Show(DescribeNoCommand(refusal == Refusal::kNotNow));
    case Refusal::kNone:
      break;
  }
}

CommandTarget CQuillView::TargetAt(CellPosition cell) const {
  return {.link = links_.LinkAt(cell.row, cell.col), .id = IdAtCell(cell.row, cell.col)};
}

CommandTarget CQuillView::TargetNow() const {
  return {.link = links_.Current(), .id = IdInQuestion().toStdU16String()};
}

CommandWords CQuillView::WordsForCommands(const CommandTarget& target) const {
  return {.firstEngine = web_.EngineName(SearchEngine::kFirst).toStdU16String(),
          .secondEngine = web_.EngineName(SearchEngine::kSecond).toStdU16String(),
          .selection = AsPartOfEntry(selection_.Text()),
          .id = target.id};
}

void CQuillView::ShowMenuOfPlace(const QPoint& at, std::optional<CellPosition> cell) {
  const CommandTarget target = cell ? TargetAt(*cell) : CommandTarget{};
  ShowContextMenu(*this, at, runner_, target, WordsForCommands(target));
}

void CQuillView::ShowLinks(Command use) {
  const QPointF at = surface_.CellRect(1, 1).topLeft();
  ShowLinkMenu(*this, mapToGlobal(at.toPoint()), links_.LinksInSight(),
               [this, use](const TextLink& link) { runner_.Run(use, {.link = link, .id = {}}); });
}

void CQuillView::TogglePlaces() {
  const bool on = !settings_.Fields().ipToName;
  settings_.Set(&Settings::ipToName, on);
  toast_.Show(on ? u"推文IP轉地理位置：開"_qs : u"推文IP轉地理位置：關"_qs);
}

void CQuillView::Reveal() {
  composer_.PressReveal(SteadyMilliseconds());
  ShowOtherLines();
}

}  // namespace quillet
