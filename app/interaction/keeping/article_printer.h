// Prints the article that is shown whole, as it reads in the window. What is not yet read of it is waited for
// in the background. The view's hands own one. User-interface thread.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include <QObject>
#include <QPrinter>

#include "app/document/user_settings.h"
#include "app/messages/panel_text.h"
#include "app/page/shown_text.h"
#include "app/session/connection.h"

namespace quillet {

class ArticlePrinter : public QObject {
  Q_OBJECT

 public:
  // All outlive the object.
  struct Parts {
    const Connection& connection;
    const UserSettings& settings;
    const ShownText& text;
    ArticleView& article;
    QWidget& window;
  };
  struct Handlers {
    std::function<void(const QString&)> tell;
    std::function<void(const PanelText&)> notice;
  };
  ArticlePrinter(const Parts& parts, Handlers handlers);

  // Asks on which printer, and prints.
  void Print();
  // More of the article may have been read.
  void OnScreen();

 private:
  // Once the article has been read.
  void PrintIfWhole();
  void GiveUp();

  const Parts parts_;
  const Handlers handlers_;
  std::unique_ptr<QPrinter> waiting_;  // for the article's end; null: nothing is to be printed
  QString title_;
};

}  // namespace quillet
