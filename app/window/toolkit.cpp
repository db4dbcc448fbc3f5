#include "app/window/toolkit.h"

#include <memory>

#include <QApplication>
#include <QFont>
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

}  // namespace

void PrepareToolkit() {
  QApplication::setStyle(new ToolkitStyle);
  InstallWords();
  // Han characters have their Taiwanese forms whatever the system's language is.
  QFont font = QApplication::font();
  font.setFamilies(font.families() +
                   QStringList{"Microsoft JhengHei UI", "Noto Sans CJK TC", "Noto Sans TC"});
  QApplication::setFont(font);
  QApplication::setWindowIcon(MakeWindowIcon());
}

}  // namespace quillet
