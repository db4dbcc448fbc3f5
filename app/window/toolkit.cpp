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

void PrepareToolkit() {
  QApplication::setStyle(new ToolkitStyle);
  auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
  if (translator->load(QLocale(QLocale::Chinese, QLocale::Taiwan), "qtbase", "_",
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(translator.release());
  // Han characters have their Taiwanese forms whatever the system's language is.
  QFont font = QApplication::font();
  font.setFamilies(font.families() +
                   QStringList{"Microsoft JhengHei UI", "Noto Sans CJK TC", "Noto Sans TC"});
  QApplication::setFont(font);
  QApplication::setWindowIcon(MakeWindowIcon());
}

}  // namespace quillet
