// The commands of the hands: what each does, what they depend on, and the menu of the right button.
#include "app/interaction/context_menu.h"
#include "app/messages/article_messages.h"
#include "app/messages/push_messages.h"
#include "app/window/view_hands.h"
#include "bbs/page_flags.h"
#include "input/mouse_scheme.h"
#include "input/page_commands.h"
#include "platform/clock.h"
#include "settings/setting_table.h"

namespace quillet {

void ViewHands::OfferCommands() {
  runner_.AddState([this](CommandState& state) { AddStateTo(state); });
  edit_.Offer(runner_);
  articleCommands_.Offer(runner_);
  runner_.On(Command::kLogin, [this] { parts_.login.Show(); });
  runner_.On(Command::kChooseLink, [this] { ShowLinks(Command::kOpenLink); });
  runner_.On(Command::kChooseLinkCopy, [this] { ShowLinks(Command::kCopyLink); });
  runner_.On(Command::kReveal, [this] { Reveal(); });
  runner_.On(Command::kTogglePlaces, [this] { TogglePlaces(); });
  runner_.On(Command::kSideButtons, [this] { parts_.sideButtons.SwitchKeyboard(); });
  runner_.On(Command::kSearch, [this] { search_.Perform(SearchStep::kAsk); });
  runner_.On(Command::kSearchNext, [this] { search_.Perform(SearchStep::kNext); });
  runner_.On(Command::kSearchPrevious, [this] { search_.Perform(SearchStep::kPrevious); });
  runner_.On(Command::kSessionLog, [this] { log_.Toggle(); });
  runner_.On(Command::kSaveArticle, [this] { saver_.Save(); });
  runner_.On(Command::kPrintArticle, [this] { printer_.Print(); });
  runner_.On(Command::kHotList, [this] { parts_.sideList.Toggle(ArticleListKind::kHot); });
  runner_.On(Command::kTrackedList, [this] { parts_.sideList.Toggle(ArticleListKind::kTracked); });
  runner_.On(Command::kBookmarkList, [this] { parts_.sideList.Toggle(ArticleListKind::kBookmarks); });
  runner_.On(Command::kCompactLists, [this] { parts_.sideList.SetCompact(!parts_.sideList.IsCompact()); });
  OfferPictureCommands();
  OfferPageCommands();
}

// Those that are nothing but a key of the BBS's page.
void ViewHands::OfferPageCommands() {
  // A key that the client keeps for itself, for those who need it on the BBS.
  runner_.On(Command::kSendControlV,
             [this] { keys_.SendBytes(std::string(SiteKeyOf(Command::kSendControlV))); });
  for (const CommandRow& row : AllCommands()) {
    if (SiteKeyOf(row.command).empty() || runner_.Has(row.command)) continue;
    runner_.On(row.command, [this, command = row.command] {
      const Picture picture = parts_.composer.ShowsArticle() ? Picture::kArticle : Picture::kScreen;
      pointer_.Act(DecidePageCommand(command, picture));
    });
  }
}

void ViewHands::AddStateTo(CommandState& state) const {
  const bool connected = connection_.IsConnected();
  const bool local = parts_.article.IsShown();
  const ArticleInfo& open = connection_.Seen().article;
  const bool reading = parts_.page.Shows(PF_READING) && open.IsArticle();
  const bool bookmarked = parts_.doc.GetBookmarks().HasOpenArticle();
  const bool busy = automations_.IsBusy();
  const bool asksCode = open.code.empty() && !bookmarked;
  const bool begun = connected || connection_.IsClosed();
  state.holds.AddIf(connected, Condition::kConnected)
      .AddIf(connection_.IsConnecting(), Condition::kConnecting)
      .AddIf(connected || connection_.IsConnecting(), Condition::kHasLine)
      .AddIf(begun, Condition::kBegun)
      .AddIf(local || reading, Condition::kArticle)
      .AddIf(local, Condition::kLocalArticle)
      .AddIf(local && parts_.article.HasPushes(), Condition::kHasPushes)
      .AddIf(parts_.pictures.HasPicturesInSight(), Condition::kHasPictures)
      .AddIf(bookmarked, Condition::kBookmarked)
      .AddIf(busy, Condition::kAutomation)
      .AddIf(busy && asksCode, Condition::kCodeOutOfReach)
      .AddIf(selection_.IsShown(), Condition::kSelection)
      .AddIf(web_.HasEngine(SearchEngine::kFirst), Condition::kFirstEngine)
      .AddIf(web_.HasEngine(SearchEngine::kSecond), Condition::kSecondEngine)
      .AddIf(settings_.Fields().ipToName, Condition::kPlaces)
      .AddIf(parts_.sideButtons.isVisible(), Condition::kHasSideButtons)
      .AddIf(parts_.sideList.IsCompact(), Condition::kCompactLists)
      .AddIf(log_.IsOn(), Condition::kLogging);
  // What lies over the page keeps hands away from it.
  if (!parts_.overlays.IsCovered() && !parts_.sideList.Shown())
    state.page = PageUnderHands(local ? Picture::kArticle : Picture::kScreen, parts_.page);
}

void ViewHands::Refuse(Refusal refusal) {
  switch (refusal) {
    case Refusal::kBusy:
      return Tell(DescribeNoPush(NoPushReason::kBusy));
    case Refusal::kGone:
      return Tell(u"選取的文字已經不在畫面上"_qs);
    case Refusal::kNotConnected:
    case Refusal::kNotNow:
      return Tell(DescribeNoCommand(refusal == Refusal::kNotNow));
    case Refusal::kNone:
      break;
  }
}

CommandWords ViewHands::WordsForCommands(const CommandTarget& target) const {
  return {.firstEngine = web_.EngineName(SearchEngine::kFirst).toStdU16String(),
          .secondEngine = web_.EngineName(SearchEngine::kSecond).toStdU16String(),
          .selection = AsPartOfEntry(selection_.Text()),
          .id = target.id};
}

void ViewHands::ShowMenuOfPlace(const QPoint& at, std::optional<CellPosition> cell,
                                const std::optional<ArticlePictures::Place>& picture) {
  CommandTarget target = cell && !picture ? targets_.At(*cell) : CommandTarget{};
  if (picture)
    target = TargetOf(*picture);
  else if (cell)
    AddPictureOfLink(cell->row, target);
  ShowContextMenu(parts_.view, at, runner_, target, WordsForCommands(target));
}

void ViewHands::ShowLinks(Command use) {
  const QPointF at = parts_.surface.CellRect(1, 1).topLeft();
  ShowLinkMenu(parts_.view, parts_.view.mapToGlobal(at.toPoint()), links_.LinksInSight(),
               [this, use](const TextLink& link) { runner_.Run(use, {.link = link, .id = {}}); });
}

void ViewHands::TogglePlaces() {
  const bool on = !settings_.Fields().ipToName;
  settings_.Set(&Settings::ipToName, on);
  Tell(on ? u"推文IP轉地理位置：開"_qs : u"推文IP轉地理位置：關"_qs);
}

void ViewHands::Reveal() {
  parts_.composer.PressReveal(SteadyMilliseconds());
  handlers_.linesChanged();
}

}  // namespace quillet
