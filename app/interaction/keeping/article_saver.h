// Saves the article that is shown whole, as it reads in the window, to a file that the user chooses. What is
// not yet read of it follows as soon as it is: he need not wait. The view's hands own one. User-interface
// thread.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include <QObject>

#include "app/document/user_settings.h"
#include "app/messages/panel_text.h"
#include "app/page/shown_text.h"
#include "app/session/connection.h"

namespace quillet {

class ArticleSaver : public QObject {
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
  ArticleSaver(const Parts& parts, Handlers handlers);

  // Asks where to, and saves.
  void Save();
  // More of the article may have been read.
  void OnScreen();

 private:
  enum class Form { kText, kHtml };
  // An article whose end is yet to come.
  struct Order {
    std::filesystem::path file;
    Form form = Form::kText;
    std::u16string title;
    int lines = 0;  // that the file holds
  };

  bool IsWhole() const { return parts_.article.Reading().Lines().IsComplete(); }
  // False when the file could not be written, which has been told.
  bool Write(Order& order);
  std::string BytesOf(const Order& order) const;
  void GiveUpRest();

  const Parts parts_;
  const Handlers handlers_;
  std::optional<Order> unfinished_;
  QString folder_;  // of the last file; empty: none yet
  Form form_ = Form::kText;
};

}  // namespace quillet
