#include "app/interaction/clipboard/clipboard_controller.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include <QGuiApplication>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>

#include "app/interaction/clipboard/clipboard_device.h"
#include "app/interaction/clipboard/paste_question.h"
#include "app/messages/text_messages.h"
#include "bbs/page_kind.h"
#include "input/paste_plan.h"
#include "input/text/web_commands.h"

namespace quillet {
namespace {

// Files and pictures have texts too if one asks for them: their addresses. Nobody means to paste those.
std::optional<QString> TextOnClipboard(QClipboard::Mode mode) {
  const QClipboard* const clipboard = QGuiApplication::clipboard();
  if (mode == QClipboard::Selection && !clipboard->supportsSelection()) return std::nullopt;
  const QMimeData* const data = clipboard->mimeData(mode);
  if (data == nullptr) return std::nullopt;
  const QStringList formats = data->formats();
  const bool holdsText = std::any_of(formats.begin(), formats.end(),
                                     [](const QString& format) { return format.startsWith(u"text/plain"); });
  return holdsText ? std::optional(data->text()) : std::nullopt;
}

std::u16string_view View(const QString& text) {
  return QStringView(text).utf16() == nullptr
             ? std::u16string_view()
             : std::u16string_view(QStringView(text).utf16(), static_cast<std::size_t>(text.size()));
}

ClipboardBlock TextBlock(const std::u16string& text) {
  return {ClipboardFormat::kUnicodeText, text.data(), text.size() * sizeof(char16_t)};
}

}  // namespace

struct ClipboardController::Impl {
  // Where the user was when a paste began that cannot be finished at once.
  struct Moment {
    unsigned connection = 0;
    PageKind page = PageKind::kOther;

    bool operator==(const Moment&) const = default;
  };

  Impl(const Parts& given, Handlers calls, QNetworkAccessManager& network, const ShortLinkLimits& limits)
      : parts(given), handlers(std::move(calls)), question(given.window), shortLink(network, limits) {}
  ~Impl() { delete box; }

  Moment Now() const { return {parts.connection.Session().connectionNumber, handlers.pageKind()}; }
  bool IsStill(const Moment& moment) const { return parts.connection.IsConnected() && moment == Now(); }
  PastePlace Place() const {
    return handlers.pageKind() == PageKind::kEditor ? PastePlace::kEditor : PastePlace::kElsewhere;
  }
  void PasteText(std::u16string_view text);
  void Ask(PasteQuestion::Question asked);
  void Tell(const QString& message, const QString& more = {});

  const Parts parts;
  Handlers handlers;
  QPointer<QMessageBox> box;  // the last one that told something, while it is open
  PasteQuestion question;
  Moment askedAt;
  ShortLink shortLink;
  std::u16string toShorten;
  Moment shortenedAt;
};

void ClipboardController::Impl::PasteText(std::u16string_view text) {
  const Wrap editorWrap = parts.settings.pasteAutoChangeLine ? Wrap::kAt78ColumnsLeftOpen : Wrap::kNone;
  PastePlan plan = PlanPaste(text, Place(), editorWrap);
  switch (plan.way) {
    case PasteWay::kNothing:
      break;
    case PasteWay::kSend:
      handlers.send(plan.text, plan.wrap);
      break;
    case PasteWay::kAsk:
      Ask(AskForLines(std::move(plan.text)));
      break;
    case PasteWay::kAskColours:
      Ask(AskForColours(std::move(plan)));
      break;
    case PasteWay::kTooLong:
      Tell(u"剪貼簿裡的文字太長 (%1 字)"_qs.arg(text.size()), u"一次最多貼上 %1 字。"_qs.arg(kLongestPaste));
      break;
  }
}

void ClipboardController::Impl::Ask(PasteQuestion::Question asked) {
  askedAt = Now();
  question.Ask(std::move(asked), [this](const PasteQuestion::Choice& choice) {
    if (IsStill(askedAt)) handlers.send(choice.text, choice.wrap);
  });
}

void ClipboardController::Impl::Tell(const QString& message, const QString& more) {
  delete box;
  box = new QMessageBox(QMessageBox::Warning, u"Quillet"_qs, message, QMessageBox::NoButton, &parts.window);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setInformativeText(more);
  box->addButton(u"確定"_qs, QMessageBox::AcceptRole);
  box->open();
}

ClipboardController::ClipboardController(const Parts& parts, Handlers handlers,
                                         QNetworkAccessManager* network, const ShortLinkLimits& limits)
    : impl_(std::make_unique<Impl>(parts, std::move(handlers),
                                   network != nullptr ? *network : *new QNetworkAccessManager(this),
                                   limits)) {
  connect(&parts.connection, &Connection::StatusChanged, this, &ClipboardController::OnScreen);
  connect(&impl_->shortLink, &ShortLink::Done, this, [this](const QString& link) {
    emit Working(false);
    const std::u16string original = std::exchange(impl_->toShorten, {});
    // Among the keys of an automation it would stop it, or be typed into its prompts.
    if (impl_->IsStill(impl_->shortenedAt) && !impl_->parts.automations.IsBusy())
      impl_->PasteText(link.isEmpty() ? original : View(link));
    else
      emit Said(DescribeDroppedLink());
  });
}

ClipboardController::~ClipboardController() = default;

bool ClipboardController::Put(std::span<const ClipboardBlock> blocks) {
  QtClipboard device(*QGuiApplication::clipboard());
  return quillet::SetClipboard(device, blocks, [this](const std::u16string& problem) {
    impl_->Tell(QString::fromStdU16String(problem));
  });
}

bool ClipboardController::SetClipboard(ClipboardFormat format, const void* data, std::size_t size) {
  const ClipboardBlock block{format, data, size};
  return Put({&block, 1});
}

bool ClipboardController::CopyText(const std::u16string& text) {
  if (text.empty()) return false;
  const ClipboardBlock block = TextBlock(text);
  return Put({&block, 1});
}

bool ClipboardController::CopyHtml(const std::u16string& html, const std::u16string& text) {
  if (html.empty() || text.empty()) return false;
  const QByteArray bytes = QString::fromStdU16String(html).toUtf8();
  const std::array blocks{
      ClipboardBlock{ClipboardFormat::kHtml, bytes.data(), static_cast<std::size_t>(bytes.size())},
      TextBlock(text)};
  return Put(blocks);
}

void ClipboardController::OfferSelection(const std::u16string& text) {
  if (text.empty()) return;
  QtClipboard device(*QGuiApplication::clipboard(), QClipboard::Selection);
  const ClipboardBlock block = TextBlock(text);
  // Nobody asked for it, so nobody is told when there is no such selection.
  quillet::SetClipboard(device, {&block, 1}, {});
}

void ClipboardController::Paste(QClipboard::Mode mode) {
  if (!impl_->parts.connection.IsConnected()) return;
  if (const std::optional<QString> text = TextOnClipboard(mode)) impl_->PasteText(View(*text));
}

void ClipboardController::PasteShortLink() {
  if (!impl_->parts.connection.IsConnected()) return;
  const std::optional<QString> clipboard = TextOnClipboard(QClipboard::Clipboard);
  if (!clipboard) return;
  const std::u16string_view text = View(*clipboard);
  if (!MayBeLink(text)) return impl_->PasteText(text);
  const std::u16string_view link = WithoutLineEnds(text);
  const std::u16string request = ShortenerRequest(link, impl_->parts.hosts);
  if (request.empty()) return impl_->PasteText(link);
  impl_->toShorten = link;
  impl_->shortenedAt = impl_->Now();
  const bool wasAsking = impl_->shortLink.IsAsking();
  impl_->shortLink.Ask(QString::fromStdU16String(request));
  if (!wasAsking) emit Working(true);
}

bool ClipboardController::IsAsking() const {
  return impl_->question.IsOpen();
}

void ClipboardController::OnScreen() {
  if (IsAsking() && !impl_->IsStill(impl_->askedAt)) impl_->question.Close();
  const bool isSameConnection =
      impl_->parts.connection.IsConnected() &&
      impl_->parts.connection.Session().connectionNumber == impl_->shortenedAt.connection;
  if (!impl_->shortLink.IsAsking() || isSameConnection) return;
  impl_->shortLink.Drop();
  impl_->toShorten.clear();
  emit Working(false);
}

}  // namespace quillet
