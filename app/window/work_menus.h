// The menus of the menu bar, in both its faces: the client's own, and in work mode those of a plain text
// editor. Made by the main window, which says when it is work mode. User-interface thread.
#pragma once

#include <QAction>
#include <QList>

class QMenuBar;
class QWidget;

namespace quillet {

class CommandMenus;

enum class MenuFace { kOwn, kEditor };

class WorkMenus {
 public:
  // Fills `bar`; the client's own menus are shown at first. All shortcuts work behind either face. `bar`
  // outlives the object.
  WorkMenus(QMenuBar& bar, CommandMenus& menus);

  void Show(MenuFace face);

 private:
  QList<QAction*> own_;
  QList<QAction*> editor_;
};

// What the editor that the window looks like says about itself.
void ShowEditorAbout(QWidget& parent);

}  // namespace quillet
