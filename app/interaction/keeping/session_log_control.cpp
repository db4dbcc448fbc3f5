#include "app/interaction/keeping/session_log_control.h"

#include <utility>

#include <QDateTime>

#include "app/interaction/keeping/save_question.h"
#include "app/messages/keeping_messages.h"
#include "input/text/file_name.h"

namespace quillet {

SessionLogControl::SessionLogControl(Connection& connection, QWidget& window, Handlers handlers)
    : connection_(connection), window_(window), handlers_(std::move(handlers)) {}

SessionLogControl::~SessionLogControl() {
  End();
}

void SessionLogControl::Toggle() {
  if (IsOn()) {
    End();
    handlers_.tell(DescribeLogEnded(file_));
    return emit Changed();
  }
  const QString day = QDateTime::currentDateTime().toString(u" yyyy-MM-dd HHmm"_qs);
  const std::u16string name = FileNameOf((connection_.Facts().siteName + day).toStdU16String(), u"連線記錄");
  const auto answer = AskWhereToSave(
      window_, {.title = u"記錄連線內容"_qs,
                .name = QString::fromStdU16String(name),
                .folder = folder_,
                .kinds = {{u"文字（每一頁）"_qs, u".txt"_qs}, {u"原始位元組（可重播）"_qs, u".bbs"_qs}},
                .kind = 0});
  if (!answer) return;
  folder_ = QString::fromStdU16String(answer->file.parent_path().u16string());
  Begin(answer->file, static_cast<LogForm>(answer->kind));
}

void SessionLogControl::Begin(const std::filesystem::path& file, LogForm form) {
  End();
  file_ = file;
  const unsigned number = ++number_;
  log_ = std::make_unique<SessionLog>(form, [this, number](const std::string& reason) {
    QMetaObject::invokeMethod(
        this, [this, number, reason] { OnFailed(number, reason); }, Qt::QueuedConnection);
  });
  const std::string reason = log_->Open(file);
  if (reason.empty()) {
    connection_.Session().SetObserver(log_.get());
    handlers_.tell(DescribeLogBegun(file));
  } else {
    log_.reset();
    handlers_.notice(DescribeLogFailed(file, reason));
  }
  emit Changed();
}

void SessionLogControl::End() {
  if (!IsOn()) return;
  connection_.Session().SetObserver(nullptr);
  log_.reset();
}

void SessionLogControl::OnFailed(unsigned number, const std::string& reason) {
  if (number != number_) return;
  End();  // unless its last write was what failed
  handlers_.notice(DescribeLogFailed(file_, reason));
  emit Changed();
}

}  // namespace quillet
