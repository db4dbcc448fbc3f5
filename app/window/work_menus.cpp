#include "app/window/work_menus.h"

#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>

#include "app/interaction/command_menus.h"

namespace quillet {

WorkMenus::WorkMenus(QMenuBar& bar, CommandMenus& menus) : bar_(bar), menus_(menus) {
  for (const CommandMenu which : {CommandMenu::kConnection, CommandMenu::kEdit, CommandMenu::kLook,
                                  CommandMenu::kArticle, CommandMenu::kSettings, CommandMenu::kHelp})
    own_.append(Add(which));
}

QAction* WorkMenus::Add(CommandMenu which) {
  QMenu* const menu = bar_.addMenu(QStringView(TitleOf(which)).toString());
  menus_.Fill(*menu, which);
  return menu->menuAction();
}

void WorkMenus::Show(MenuFace face) {
  if (face == MenuFace::kEditor && editor_.isEmpty())
    for (const CommandMenu which : {CommandMenu::kEditorFile, CommandMenu::kEditorEdit,
                                    CommandMenu::kEditorLook, CommandMenu::kEditorHelp})
      editor_.append(Add(which));
  for (QAction* const menu : own_)
    menu->setVisible(face == MenuFace::kOwn);
  for (QAction* const menu : editor_)
    menu->setVisible(face == MenuFace::kEditor);
}

void ShowEditorAbout(QWidget& parent) {
  QMessageBox box(QMessageBox::NoIcon, u"關於記事本"_qs, u"記事本"_qs, QMessageBox::NoButton, &parent);
  box.addButton(u"關閉"_qs, QMessageBox::AcceptRole);
  box.exec();
  parent.activateWindow();
}

}  // namespace quillet
