// The menus of the menu bar, in both its faces: the client's own, and in work mode those of a plain text
// editor. Made by the main window, which says when it is work mode. User-interface thread.
#pragma once

#include <QAction>
#include <QList>

class QMenuBar;
class QWidget;

namespace quillet {

class CommandMenus;
enum class CommandMenu;

enum class MenuFace { kOwn, kEditor };

class WorkMenus {
 public:
  // Fills `bar`; the client's own menus are shown at first. All shortcuts work behind either face. Both
  // outlive the object.
  WorkMenus(QMenuBar& bar, CommandMenus& menus);

  void Show(MenuFace face);

 private:
  QAction* Add(CommandMenu which);

  QMenuBar& bar_;
  CommandMenus& menus_;
  QList<QAction*> own_;
  QList<QAction*> editor_;  // made when they are shown first
};

// What the editor that the window looks like says about itself.
void ShowEditorAbout(QWidget& parent);

}  // namespace quillet
