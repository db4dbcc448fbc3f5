#include "app/window/link_intake.h"

#include <utility>

#include <QGuiApplication>

#include "app/window/start_aim.h"

namespace quillet {

LinkIntake::LinkIntake(WebHosts hosts)
    : hosts_(std::move(hosts)),
      link_(ListenForLinks([this](const std::u16string& commandLine) { return Take(commandLine); })) {
  connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
    if (link_ && state == Qt::ApplicationActive) link_->NoteUserHere();
  });
}

bool LinkIntake::Take(const std::u16string& commandLine) {
  StartAim aim = AimOfStart(commandLine, [this] { return hosts_; });
  if (aim.kind != StartAim::Kind::kArticle) return false;
  const std::lock_guard guard(lock_);
  const bool isOnItsWay = newest_.has_value();
  newest_ = std::move(aim.article);
  if (!isOnItsWay) QMetaObject::invokeMethod(this, &LinkIntake::Deliver, Qt::QueuedConnection);
  return true;
}

void LinkIntake::Deliver() {
  std::optional<ArticleReference> article;
  {
    const std::lock_guard guard(lock_);
    article = std::exchange(newest_, std::nullopt);
  }
  if (article) emit Arrived(*article);
}

}  // namespace quillet
