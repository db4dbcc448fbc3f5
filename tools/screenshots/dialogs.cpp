#include "tools/screenshots/dialogs.h"

#include <QApplication>
#include <QDir>
#include <QPalette>
#include <QTabWidget>

#include "app/document/user_places.h"
#include "app/messages/link_messages.h"
#include "app/messages/picture_messages.h"
#include "settings/dialog/add_black_dlg.h"
#include "settings/dialog/options_dlg.h"

namespace quillet {
namespace {

constexpr char16_t kNoted[] = u"kitten";

void Fill(SettingsStore& store) {
  const auto note = [&](const char16_t* id, const char16_t* text) {
    store.Names().Set(id, ParseEntryText(text));
  };
  note(u"spammer", u"整天貼廣告");
  note(u"troll99", u"C1:見人就吵");
  note(kNoted, u"_W26:貓板的好心人，常回新手的問題");
  note(u"nightowl", u"W:半夜的文章都是他寫的");
  store.TitleWords() = {u"代購", u"[問卷]", u"懶人包"};
  store.Map().SetTrackLines({u"board=Cats && title=照片", u"author=nightowl"});
}

QPalette DarkPalette() {
  const QColor window(0x2B, 0x2B, 0x2E), base(0x1E, 0x1E, 0x20), text(0xE6, 0xE6, 0xE6);
  const QColor faint(0x8A, 0x8A, 0x8E), accent(0x3D, 0x7D, 0xCA);
  QPalette palette(text, window, window.lighter(115), window.darker(150), window.darker(120), text, Qt::white,
                   base, window);
  palette.setColor(QPalette::Button, QColor(0x3A, 0x3A, 0x3E));
  palette.setColor(QPalette::PlaceholderText, faint);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(0x6C, 0xB0, 0xFF));
  palette.setColor(QPalette::ToolTipBase, base);
  palette.setColor(QPalette::ToolTipText, text);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, faint);
  return palette;
}

bool Save(QWidget& dialog, const QString& folder, const QString& name) {
  dialog.show();
  // Widgets that are shown for the first time ask for another layout, which may ask once more.
  for (int round = 0; round < 3; ++round)
    QCoreApplication::processEvents();
  return dialog.grab().save(QDir(folder).filePath(name + ".png"));
}

bool SaveTabs(SettingsStore& store, const QString& folder) {
  const QStringList names = {"display", "behavior", "lists", "hot-track", "mouse"};
  CQuillOptionDlg dialog(store, {.becomeDefaultBrowser = [] {},
                                 .aboutDefaultBrowser = DescribeLinkHandlerButton(false),
                                 .emptyPictureCache = [] {}});
  dialog.ShowPictureCache(ByteCountText(qint64{34} << 20));
  bool saved = true;
  for (int i = 0; i < names.size(); ++i) {
    dialog.Tabs().setCurrentIndex(i);
    saved = Save(dialog, folder, QStringLiteral("5%1-options-%2").arg(i + 1).arg(names[i])) && saved;
  }
  return saved;
}

bool SaveDark(SettingsStore& store, const QString& folder) {
  QApplication::setPalette(DarkPalette());
  CQuillOptionDlg dialog(store, {});
  bool saved = Save(dialog, folder, "57-options-dark");
  dialog.Tabs().setCurrentIndex(2);
  saved = Save(dialog, folder, "58-options-dark-lists") && saved;
  AddBlackDlg addBlack(store, QString::fromUtf16(kNoted));
  return Save(addBlack, folder, "59-options-dark-add-black") && saved;
}

}  // namespace

bool SaveDialogPictures(const QString& folder) {
  const UserPlaces places = PlacesForOneRun();
  DataFiles files(*places.registry, places.folders);
  files.Prepare();
  SettingsStore store(files, "bbs.example");
  store.Load();
  Fill(store);
  bool saved = SaveTabs(store, folder);
  {
    AddBlackDlg addBlack(store, QString::fromUtf16(kNoted));
    saved = Save(addBlack, folder, "56-options-add-black") && saved;
  }
  return SaveDark(store, folder) && saved;
}

}  // namespace quillet
