#include "app/interaction/key_input.h"

#include <utility>

#include "app/interaction/key_adapter.h"

namespace quillet {

WindowState KeyInput::StateForKeys() const {
  WindowState state{.selectionShown = parts_.selection.IsShown(),
                    .revealShown = parts_.composer.IsRevealing(),
                    .activityRuns = parts_.automations.Current() != Activity::kNone,
                    .articleShown = parts_.article.IsShown(),
                    .article = parts_.article.Paging(),
                    .articleOpen = parts_.connection.Seen().articleOpen,
                    .addressesShown = parts_.places.HasAddresses(),
                    .commandsOffered = parts_.composer.Offers(Command::kBookmark),
                    .idUnderPointer = !parts_.targets.IdUnderPointer().empty(),
                    .addBlackHotKey = parts_.settings.addBlackHotKey,
                    .preventArticleChange = parts_.settings.preventUpDownChangeArticle,
                    .search = parts_.search.Use()};
  parts_.overlays.TellKeys(state);
  return state;
}

KeyDecision KeyInput::Decide(const QKeyEvent& event) const {
  return DecideKeyMessage(ToKeyPress(event), event.isAutoRepeat() ? KeyPhase::kRepeat : KeyPhase::kFirst,
                          parts_.page, StateForKeys());
}

bool KeyInput::PreTranslateMessage(const QKeyEvent& event) {
  const KeyDecision decision = Decide(event);
  if (decision.route != KeyRoute::kToolkit && decision.route != KeyRoute::kSearch) parts_.search.OnOtherKey();
  if (const std::optional<bool> consumed = PerformInWindow(decision)) return *consumed;
  if (decision.paging.kind != PagingAction::Kind::kToBbs && parts_.article.ApplyPaging(decision.paging))
    return true;
  return SendOn(decision, event);
}

std::optional<bool> KeyInput::PerformInWindow(const KeyDecision& decision) {
  switch (decision.route) {
    case KeyRoute::kToolkit:
      return false;
    case KeyRoute::kSwallowed:
      return true;
    case KeyRoute::kNotice:
    case KeyRoute::kPicture:
    case KeyRoute::kSideList:
    case KeyRoute::kQuestion:
      return parts_.overlays.OnKey(decision);
    case KeyRoute::kSearch:
      parts_.search.Perform(decision.search);
      return true;
    case KeyRoute::kSelection:
      Select(decision.select);
      return true;
    case KeyRoute::kReveal:
      parts_.composer.EndReveal();
      handlers_.linesChanged();
      return true;
    case KeyRoute::kActivity:
      return parts_.automations.Stop();
    case KeyRoute::kNames:
      ChangeName(decision.name, decision.flagColour);
      return true;
    case KeyRoute::kCommand:
    case KeyRoute::kArticle:
    case KeyRoute::kBbs:
      break;
  }
  return std::nullopt;
}

bool KeyInput::SendOn(const KeyDecision& decision, const QKeyEvent& event) {
  handlers_.typing();
  if (decision.route == KeyRoute::kBbs) {
    if (auto keys = parts_.composer.OnKey(ToKeyPress(event), parts_.screen, parts_.page)) {
      if (!keys->empty()) parts_.keys.SendBytes(*std::move(keys));
      handlers_.linesChanged();
      return true;
    }
  }
  const bool taken = parts_.keys.Perform(decision.action);
  // The next Ctrl+C is the BBS's again.
  const bool copiesByBbsKey = decision.action.command == Command::kCopy && event.key() == Qt::Key_C &&
                              !event.modifiers().testFlag(Qt::ShiftModifier);
  if (decision.route != KeyRoute::kCommand || copiesByBbsKey) parts_.selection.Clear();
  return taken;
}

void KeyInput::OnComposed(const QString& text) {
  if (text.isEmpty() || parts_.overlays.KeepsTyping()) return;
  handlers_.typing();
  parts_.keys.SendText(text.toStdU16String());
  parts_.selection.Clear();
}

void KeyInput::Select(SelectStep step) {
  const ScreenSnapshot& screen = parts_.screen;
  if (step == SelectStep::kClear)
    parts_.selection.Clear();
  else
    parts_.selection.Step(step, parts_.composer.PageRowOf(screen.cursorRow), screen.cursorCol);
}

void KeyInput::ChangeName(NameKey key, int colour) {
  const QString told = parts_.names.Press(parts_.targets.IdUnderPointer(), key, colour);
  if (!told.isEmpty()) handlers_.tell(told);
}

}  // namespace quillet
