// The window's end of the way by which other runs of the program hand links over. Whatever comes in that is
// no article of the BBS is refused. User-interface thread, but for what it says of itself.
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include <QObject>

#include "bbs/article_code.h"
#include "platform/instance_link.h"

namespace quillet {

class LinkIntake : public QObject {
  Q_OBJECT

 public:
  // Listens from now on, where the system lets it.
  explicit LinkIntake(WebHosts hosts);

 signals:
  // Of several that come at once, the newest.
  void Arrived(const ArticleReference& article);

 private:
  // Any thread.
  bool Take(const std::u16string& commandLine);
  void Deliver();

  const WebHosts hosts_;
  std::mutex lock_;
  std::optional<ArticleReference> newest_;  // guarded; there while Deliver is on its way
  // Last: it calls Take until it is gone.
  const std::unique_ptr<InstanceLink> link_;
};

}  // namespace quillet
