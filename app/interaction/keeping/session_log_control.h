// The session log as the user begins and ends it. It goes on over a reconnection, until he ends it, the
// program ends, or its file cannot be written. The view's hands own one. User-interface thread.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include <QObject>
#include <QWidget>

#include "app/messages/panel_text.h"
#include "app/session/connection.h"
#include "app/session/session_log.h"

namespace quillet {

class SessionLogControl : public QObject {
  Q_OBJECT

 public:
  struct Handlers {
    std::function<void(const QString&)> tell;
    std::function<void(const PanelText&)> notice;
  };
  // Both references outlive the object.
  SessionLogControl(Connection& connection, QWidget& window, Handlers handlers);
  ~SessionLogControl() override;

  bool IsOn() const { return log_ != nullptr; }
  // Ends the log, or asks where to and begins one.
  void Toggle();

 signals:
  void Changed();

 private:
  void Begin(const std::filesystem::path& file, LogForm form);
  void End();
  void OnFailed(unsigned number, const std::string& reason);

  Connection& connection_;
  QWidget& window_;
  const Handlers handlers_;
  std::unique_ptr<SessionLog> log_;
  std::filesystem::path file_;
  unsigned number_ = 0;  // of the log; what an earlier one says too late is not heard
  QString folder_;
};

}  // namespace quillet
