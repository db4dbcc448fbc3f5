// The main window's own commands, and its menus.
#include <QMenuBar>

#include "app/window/main_frame.h"

namespace quillet {

void CMainFrame::MakeMenus() {
  OfferCommands();
  menus_ = new CommandMenus(
      view_->Commands(), [this] { return view_->WordsForMenus(); }, *this);
  workMenus_ = std::make_unique<WorkMenus>(*menuBar(), *menus_);
}

void CMainFrame::OfferCommands() {
  CommandRunner& runner = view_->Commands();
  runner.AddState([this](CommandState& state) { AddStateTo(state); });
  runner.On(Command::kConnect, [this] { AskAddress(); });
  runner.On(Command::kDemo, [this] { OpenDemo(); });
  runner.On(Command::kReconnect, [this] { Reconnect(); });
  runner.On(Command::kDisconnect, [this] { Disconnect(); });
  runner.On(Command::kQuit, [this] { close(); });
  runner.On(Command::kAskUserPage, [this] { OpenUserPage(); });
  runner.On(Command::kFullScreen, [this] { ToggleFullScreen(); });
  runner.On(Command::kWorkMode, [this] { ToggleWorkMode(); });
  runner.On(Command::kOrdinaryLayout, [this] { ApplyLayout(LayoutMode::kOrdinary); });
  runner.On(Command::kFittedLayout, [this] { ApplyLayout(LayoutMode::kFitted); });
  runner.On(Command::kNarrowLayout, [this] { ApplyLayout(LayoutMode::kNarrow); });
  runner.On(Command::kZoomIn, [this] { ApplyZoom(Zoom::kLarger); });
  runner.On(Command::kZoomOut, [this] { ApplyZoom(Zoom::kSmaller); });
  runner.On(Command::kZoomUsual, [this] { ApplyZoom(Zoom::kUsual); });
  runner.On(Command::kJump, [this] { JumpToArticle(); });
  runner.On(Command::kOptions, [this] { ShowOptions(); });
  runner.On(Command::kAskName, [this] { AskForName(); });
  runner.On(Command::kNoteName,
            [this](const CommandTarget& target) { AddToNames(QString::fromStdU16String(target.id)); });
  runner.On(Command::kKeys, [this] { ShowKeys(); });
  runner.On(Command::kAbout, [this] { ShowAbout(); });
}

void CMainFrame::AddStateTo(CommandState& state) const {
  state.holds.AddIf(settings_.Fields().work, Condition::kWorkMode)
      .AddIf(isFullScreen(), Condition::kFullScreen)
      .AddIf(layout_ == LayoutMode::kOrdinary, Condition::kOrdinaryLayout)
      .AddIf(layout_ == LayoutMode::kFitted, Condition::kFittedLayout)
      .AddIf(layout_ == LayoutMode::kNarrow, Condition::kNarrowLayout);
}

}  // namespace quillet
