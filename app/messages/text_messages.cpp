#include "app/messages/text_messages.h"

#include <utility>

#include <QStringList>

#include "input/key_control.h"

namespace quillet {
namespace {

// Something that can be seen and is one character.
QString NameOf(const QString& character) {
  const char32_t code = character.toUcs4().value(0);
  if (QChar::isSpace(code)) return u"空白"_qs;
  return QChar::isPrint(code) && !QChar::isSurrogate(code) ? character : u"�"_qs;
}

QString Preview(const std::u16string& text) {
  return QString::fromStdU16String(PastePreview(text)).trimmed();
}

}  // namespace

QString DescribeLostCharacters(const LostCharacters& lost) {
  if (lost.IsNone()) return {};
  QStringList names;
  for (const std::u16string& character : lost.some)
    names << NameOf(QString::fromStdU16String(character));
  names.removeDuplicates();
  return u"有 %1 個字站台沒有：%2%3"_qs.arg(QString::number(lost.count), names.join(u'、'),
                                            lost.areAll ? QString() : u"…"_qs);
}

QString DescribeDroppedLink() {
  return u"畫面已經不同，短網址沒有貼上"_qs;
}

PasteChoices AskForLines(std::u16string lines) {
  std::u16string first = FirstLine(lines);
  return {.words = u"要貼上 %1 行文字嗎？"_qs.arg(PastedLines(lines)),
          .reason = u"現在不在編輯文章，每一行都會像按下 Enter 一樣送出。\n\n"_qs + Preview(lines),
          .choices = {{u"貼上"_qs, std::move(lines)}, {u"只貼第一行"_qs, std::move(first)}}};
}

PasteChoices AskForColours(PastePlan plan) {
  return {.words = u"要連同色彩一起貼上嗎？"_qs,
          .reason = u"這段文字帶有色碼。連同色彩貼上時，文章會顯示原來的顏色。\n\n"_qs + Preview(plan.text),
          .choices = {{u"連同色彩"_qs, std::move(plan.coloured)},
                      {u"只貼文字"_qs, std::move(plan.text), plan.wrap}},
          .safest = PasteChoices::Safest::kFirstChoice};
}

}  // namespace quillet
