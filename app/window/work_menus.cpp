#include "app/window/work_menus.h"

#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>

namespace quillet {

WorkMenus::WorkMenus(QMenuBar& bar, const Items& items) : own_(bar.actions()) {
  const auto add = [&](const QString& title) {
    QMenu* const menu = bar.addMenu(title);
    editor_.append(menu->menuAction());
    return menu;
  };
  QMenu* const file = add(u"檔案(&F)"_qs);
  // As in an editor whose text is as it was saved.
  for (const QString& text : {u"儲存檔案(&S)"_qs, u"列印…(&P)"_qs})
    file->addAction(text)->setEnabled(false);
  file->addSeparator();
  file->addAction(items.quit);
  QMenu* const edit = add(u"編輯(&E)"_qs);
  edit->addActions({items.copy, items.paste});
  edit->addSeparator();
  edit->addAction(items.selectAll);
  QMenu* const look = add(u"檢視(&V)"_qs);
  look->addAction(items.fullScreen);
  // For whoever has forgotten the keys; the keys themselves are those of the client's own entry.
  QObject::connect(look->addAction(u"一般檢視(&N)\tAlt+W"_qs), &QAction::triggered, items.leave);
  QMenu* const help = add(u"說明(&H)"_qs);
  QObject::connect(help->addAction(u"關於記事本(&A)"_qs), &QAction::triggered, items.about);
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
