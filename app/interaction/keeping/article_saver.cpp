#include "app/interaction/keeping/article_saver.h"

#include "app/interaction/keeping/save_question.h"
#include "app/messages/keeping_messages.h"
#include "app/page/copy_look.h"
#include "input/text/copy_text.h"
#include "input/text/file_name.h"
#include "input/text/selection.h"
#include "platform/user_file.h"
#include "platform/utf8.h"

namespace quillet {
namespace {

// As the system's editors end them.
std::u16string WithLineEnds(const std::u16string& text) {
  QString lines = QString::fromStdU16String(text);
  lines.replace(u"\r\n"_qs, QString::fromLatin1(kLineEnd.data(), static_cast<qsizetype>(kLineEnd.size())));
  return lines.toStdU16String();
}

}  // namespace

ArticleSaver::ArticleSaver(const KeepingParts& parts, KeepingHandlers handlers)
    : parts_(parts), handlers_(std::move(handlers)) {
  connect(&parts_.article, &ArticleView::OtherArticle, this, &ArticleSaver::GiveUpRest);
  connect(&parts_.connection, &Connection::ConnectionBegins, this, &ArticleSaver::GiveUpRest);
}

void ArticleSaver::Save() {
  const ArticleInfo article = parts_.connection.Seen().article;
  const std::u16string name = FileNameOf(article.title, u"文章");
  const auto answer = AskWhereToSave(
      parts_.window, {.title = u"儲存文章"_qs,
                      .name = QString::fromStdU16String(name),
                      .folder = folder_,
                      .kinds = {{u"純文字"_qs, u".txt"_qs}, {u"網頁（含色彩）"_qs, u".html"_qs}},
                      .kind = static_cast<std::size_t>(form_)});
  if (!answer) return;
  folder_ = QString::fromStdU16String(answer->file.parent_path().u16string());
  form_ = static_cast<Form>(answer->kind);
  // The window lives on under the question.
  if (!parts_.text.IsArticle() || !IsSameArticle(article, parts_.connection.Seen().article))
    return handlers_.notice(DescribeNothingToSave());
  unfinished_.reset();
  Order order{.file = answer->file, .form = form_, .title = article.title};
  if (!Write(order)) return;
  if (IsWhole()) return handlers_.tell(DescribeSaved(order.file));
  handlers_.tell(DescribeSavedSoFar(order.lines));
  unfinished_ = std::move(order);
  parts_.article.ReadOn();
}

void ArticleSaver::OnScreen() {
  if (!unfinished_ || !IsWhole() || !parts_.text.IsArticle()) return;
  Order order = *std::exchange(unfinished_, std::nullopt);
  if (Write(order)) handlers_.tell(DescribeSaved(order.file));
}

bool ArticleSaver::Write(Order& order) {
  const std::string reason = ReplaceFile(order.file, BytesOf(order));
  order.lines = parts_.text.Count();
  if (!reason.empty()) handlers_.notice(DescribeNotSaved(order.file, reason));
  return reason.empty();
}

std::string ArticleSaver::BytesOf(const Order& order) const {
  Selection all;
  all.SelectAll(parts_.text);
  if (order.form == Form::kText) return Utf8FromUtf16(WithLineEnds(SelectedText(all, parts_.text) + u"\r\n"));
  const CopyLook look = CopyLookOf(parts_.text, parts_.settings.Display());
  return Utf8FromUtf16(HtmlPage(order.title, SelectedHtml(all, parts_.text, look), look.plain));
}

void ArticleSaver::GiveUpRest() {
  if (!unfinished_) return;
  const Order order = *std::exchange(unfinished_, std::nullopt);
  handlers_.notice(DescribeSavedPart(order.file, order.lines));
}

}  // namespace quillet
