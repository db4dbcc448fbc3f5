// The menus that stand in the menu bar in work mode: those of a plain text editor, in place of the client's
// own. Made by the main window, which says when it is work mode. User-interface thread.
#pragma once

#include <functional>

#include <QAction>
#include <QList>

class QMenuBar;
class QWidget;

namespace quillet {

enum class MenuFace { kOwn, kEditor };

class WorkMenus {
 public:
  // What an editor has as well: the window's own actions, and what it does behind other words.
  struct Items {
    QAction* quit;
    QAction* copy;
    QAction* paste;
    QAction* selectAll;
    QAction* fullScreen;
    std::function<void()> leave;  // work mode
    std::function<void()> about;
  };
  // What is in `bar` now are the client's own menus; they are shown at first. Their shortcuts work behind
  // either face as long as a window has them too. `bar` outlives the object.
  WorkMenus(QMenuBar& bar, const Items& items);

  void Show(MenuFace face);

 private:
  QList<QAction*> own_;
  QList<QAction*> editor_;
};

// What the editor that the window looks like says about itself.
void ShowEditorAbout(QWidget& parent);

}  // namespace quillet
