// The clipboard's both ways: what is selected goes out as text, HTML or ANSI, what is pasted comes in clean,
// asked about where it would do harm, or shortened first when it is a link. User-interface thread.
#pragma once

#include <functional>
#include <memory>
#include <span>

#include <QClipboard>
#include <QNetworkAccessManager>
#include <QObject>
#include <QWidget>

#include "app/interaction/clipboard/short_link.h"
#include "app/session/automations.h"
#include "app/session/connection.h"
#include "bbs/page_kind.h"
#include "core/term_session.h"
#include "input/text/clipboard_blocks.h"
#include "settings/settings.h"

namespace quillet {

class ClipboardController : public QObject {
  Q_OBJECT

 public:
  // All outlive the object.
  struct Parts {
    const Connection& connection;
    const Automations& automations;
    const Settings& settings;
    const Endpoints& hosts;
    QWidget& window;  // gets the message boxes
  };
  struct Handlers {
    std::function<void(std::u16string_view text, Wrap wrap)> send;
    std::function<PageKind()> pageKind;  // that it is pasted to
  };
  // `network` outlives the object; without it the link shortener is asked over one of the object's own.
  ClipboardController(const Parts& parts, Handlers handlers, QNetworkAccessManager* network = nullptr,
                      const ShortLinkLimits& limits = {});
  ~ClipboardController() override;

  // True on success; a message box tells what failed otherwise.
  bool SetClipboard(ClipboardFormat format, const void* data, std::size_t size);
  // These three do nothing for an empty text, and return false then too.
  bool CopyText(const std::u16string& text);
  // Both at once: who pastes takes what he can use.
  bool CopyHtml(const std::u16string& html, const std::u16string& text);
  // To the selection that the middle button pastes, on systems that have one.
  void OfferSelection(const std::u16string& text);

  // Asks before several lines go where no editor is open. Returns at once; the answer may come later. Nothing
  // without a connection or when the clipboard holds no text.
  void Paste(QClipboard::Mode mode = QClipboard::Clipboard);
  // Asks the link shortener and pastes its link, or the clipboard's text when none comes. Other keys may go
  // out meanwhile. Dropped when another kind of page or another connection has come instead, or an automation
  // is at work.
  void PasteShortLink();
  // A question is on the screen.
  bool IsAsking() const;
  // A screen has reached the view: a question about a page that has gone is closed.
  void OnScreen();

 signals:
  // The link shortener is being asked, or no longer.
  void Working(bool working);
  // For a line over the terminal that goes by itself.
  void Said(const QString& words);

 private:
  bool Put(std::span<const ClipboardBlock> blocks);

  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace quillet
