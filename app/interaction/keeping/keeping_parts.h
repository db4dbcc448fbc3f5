// What those work with who keep the article that is shown: in a file, or on paper.
#pragma once

#include <functional>

#include <QString>
#include <QWidget>

#include "app/document/user_settings.h"
#include "app/messages/panel_text.h"
#include "app/page/shown_text.h"
#include "app/session/connection.h"

namespace quillet {

// All outlive who is given them.
struct KeepingParts {
  const Connection& connection;
  const UserSettings& settings;
  const ShownText& text;
  ArticleView& article;
  QWidget& window;
};

struct KeepingHandlers {
  std::function<void(const QString&)> tell;  // in a line that goes by itself
  std::function<void(const PanelText&)> notice;
};

}  // namespace quillet
