#include "app/window/toolkit.h"

#include <memory>

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include "app/window/toolkit_style.h"
#include "app/window/window_icon.h"

namespace quillet {
namespace {

// The toolkit's own words, as of its file dialogs: where the system keeps them, or in the program
// (app/CMakeLists.txt).
void InstallWords() {
  const QLocale locale(QLocale::Chinese, QLocale::Taiwan);
  auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
  for (const QString& folder :
       {QLibraryInfo::path(QLibraryInfo::TranslationsPath), QStringLiteral(":/translations")})
    if (translator->load(locale, "qtbase", "_", folder)) {
      QCoreApplication::installTranslator(translator.release());
      return;
    }
}

// Han characters have their Taiwanese forms whatever the system's language is. On Windows by one face alone,
// which is the system's own in Taiwan: behind several the toolkit reads all faces that are installed, before
// the first letter is drawn.
QFont FontOfInterface() {
  const QString ofWindows = QStringLiteral("Microsoft JhengHei UI");
  const QStringList installed = QFontDatabase::families();
  QFont font = QApplication::font();
  QStringList families = font.families();
  if (installed.contains(ofWindows))
    families = {ofWindows};
  else
    for (const QString& family : {QStringLiteral("Noto Sans CJK TC"), QStringLiteral("Noto Sans TC")})
      if (installed.contains(family) && !families.contains(family)) families.append(family);
  font.setFamilies(families);
  return font;
}

}  // namespace

void PrepareToolkit() {
  QApplication::setStyle(new ToolkitStyle);
  InstallWords();
  QApplication::setFont(FontOfInterface());
  QApplication::setWindowIcon(MakeWindowIcon());
}

}  // namespace quillet
