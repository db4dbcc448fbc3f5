// Saves the article that is shown whole, as it reads in the window, to a file that the user chooses. What is
// not yet read of it follows as soon as it is: he need not wait. The view's hands own one. User-interface
// thread.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include <QObject>

#include "app/interaction/keeping/keeping_parts.h"

namespace quillet {

class ArticleSaver : public QObject {
  Q_OBJECT

 public:
  ArticleSaver(const KeepingParts& parts, KeepingHandlers handlers);

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

  const KeepingParts parts_;
  const KeepingHandlers handlers_;
  std::optional<Order> unfinished_;
  QString folder_;  // of the last file; empty: none yet
  Form form_ = Form::kText;
};

}  // namespace quillet
