#include "app/interaction/keeping/article_printer.h"

#include <QOperatingSystemVersion>
#include <QPrintDialog>
#include <QPrinterInfo>

#include "app/interaction/keeping/article_pages.h"
#include "app/messages/keeping_messages.h"

namespace quillet {
namespace {

// Room for a hole puncher.
constexpr QMarginsF kMargins(15, 12, 15, 12);

}  // namespace

ArticlePrinter::ArticlePrinter(const KeepingParts& parts, KeepingHandlers handlers)
    : parts_(parts), handlers_(std::move(handlers)) {
  connect(&parts_.article, &ArticleView::OtherArticle, this, &ArticlePrinter::GiveUp);
  connect(&parts_.connection, &Connection::ConnectionBegins, this, &ArticlePrinter::GiveUp);
}

bool ArticlePrinter::CanAsk() {
  return QOperatingSystemVersion::currentType() != QOperatingSystemVersion::Windows ||
         !QPrinterInfo::availablePrinters().isEmpty();
}

void ArticlePrinter::Print() {
  if (!CanAsk()) return handlers_.notice(DescribeNoPrinter());
  const ArticleInfo article = parts_.connection.Seen().article;
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  const QString title = QString::fromStdU16String(article.title);
  printer->setDocName(title.isEmpty() ? u"文章"_qs : title);
  printer->setPageMargins(kMargins, QPageLayout::Millimeter);
  QPrintDialog dialog(printer.get(), &parts_.window);
  dialog.setWindowTitle(u"列印文章"_qs);
  dialog.setOption(QPrintDialog::PrintPageRange);
  // The article is read on under the question.
  parts_.article.ReadOn();
  const int answer = dialog.exec();
  parts_.window.activateWindow();
  if (answer != QDialog::Accepted) return;
  waiting_ = std::move(printer);
  title_ = title;
  if (!parts_.text.IsArticle() || !IsSameArticle(article, parts_.connection.Seen().article)) return GiveUp();
  PrintIfWhole();
  if (waiting_ == nullptr) return;
  handlers_.tell(DescribePrintWaits());
  parts_.article.ReadOn();
}

void ArticlePrinter::OnScreen() {
  if (waiting_ != nullptr && parts_.text.IsArticle()) PrintIfWhole();
}

void ArticlePrinter::PrintIfWhole() {
  const ArticleLines& lines = parts_.article.Reading().Lines();
  // A longer one is never known to its end.
  if (!lines.IsComplete() && lines.Count() < ArticleLines::kMostLines) return;
  const std::unique_ptr<QPrinter> printer = std::exchange(waiting_, nullptr);
  const QString font = QString::fromStdU16String(parts_.settings.Fields().font);
  const QString where =
      printer->outputFileName().isEmpty() ? printer->printerName() : printer->outputFileName();
  if (PrintPages(*printer, parts_.text, title_, font))
    handlers_.tell(DescribePrinted(where));
  else
    handlers_.notice(DescribeNotPrinted(where));
}

void ArticlePrinter::GiveUp() {
  if (std::exchange(waiting_, nullptr) != nullptr) handlers_.notice(DescribeNothingToPrint());
}

}  // namespace quillet
