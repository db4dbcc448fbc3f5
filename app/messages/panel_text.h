// What a panel over the screen says, and what Enter and Esc do while it does. A value; any thread.
#pragma once

#include <QString>
#include <QStringList>

namespace quillet {

enum class PanelAction {
  kNone,
  kReconnect,
  kAskAddress,
  kAcceptHostKey,
  kAskLogin,
  kCancel,
  kStopRetrying,
  kDismiss
};
enum class PanelTone { kCalm, kBusy, kEnded, kProblem };

struct PanelText {
  QString title;  // empty: no panel
  QStringList lines;
  QString hint;  // the keys that lead on
  PanelTone tone = PanelTone::kCalm;
  PanelAction onEnter = PanelAction::kNone;
  PanelAction onEscape = PanelAction::kNone;
  bool takesAnyKey = false;  // any other key that is typed to the site does what Enter does

  bool operator==(const PanelText&) const = default;
};

}  // namespace quillet
