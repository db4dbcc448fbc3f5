#include "app/window/work_menus.h"

#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>

#include "app/interaction/command_menus.h"

namespace quillet {

WorkMenus::WorkMenus(QMenuBar& bar, CommandMenus& menus) {
  const auto add = [&](QList<QAction*>& face, CommandMenu which) {
    const std::u16string_view title = TitleOf(which);
    QMenu* const menu = bar.addMenu(QStringView(title).toString());
    menus.Fill(*menu, which);
    face.append(menu->menuAction());
  };
  for (const CommandMenu which : {CommandMenu::kConnection, CommandMenu::kEdit, CommandMenu::kLook,
                                  CommandMenu::kArticle, CommandMenu::kSettings, CommandMenu::kHelp})
    add(own_, which);
  for (const CommandMenu which : {CommandMenu::kEditorFile, CommandMenu::kEditorEdit,
                                  CommandMenu::kEditorLook, CommandMenu::kEditorHelp})
    add(editor_, which);
  Show(MenuFace::kOwn);
}

void WorkMenus::Show(MenuFace face) {
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
