#include "settings/dialog/lines_edit.h"

#include <algorithm>

#include <QTextBlock>

#include "settings/files/text_lines.h"

namespace quillet {
namespace {

// Ends of paragraphs, and of lines within one (Shift+Enter).
bool EndsLine(char16_t unit) {
  return unit == u'\u2029' || unit == u'\u2028';
}

QString FileFault(std::u16string_view line) {
  if (line.size() > kLongestLine)
    return u"太長了，最多 %1 個字元，現在有 %2 個"_qs.arg(kLongestLine).arg(line.size());
  const std::u16string kept = OneLine(line);
  const auto [unfit, _] = std::mismatch(line.begin(), line.end(), kept.begin(), kept.end());
  if (unfit == line.end()) return {};
  return u"第 %1 個字元是檔案存不下的%2"_qs.arg(unfit - line.begin() + 1).arg(NameOfUnseen(*unfit));
}

}  // namespace

QString NameOfUnseen(char16_t character) {
  return u"字元 U+%1"_qs.arg(
      QString::number(static_cast<unsigned>(character), 16).rightJustified(4, u'0').toUpper());
}

LinesEdit::LinesEdit(const QString& name, QWidget* parent) : QPlainTextEdit(parent), name_(name) {
  setAccessibleName(name);
  setTabChangesFocus(true);
  setLineWrapMode(NoWrap);
}

void LinesEdit::Fill(std::u16string_view text) {
  if (text.ends_with(u'\n')) text.remove_suffix(1);
  setPlainText(QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())));
}

bool LinesEdit::IsTouched() const {
  return document()->isModified();
}

std::vector<std::u16string> LinesEdit::Lines() const {
  std::vector<std::u16string> lines;
  for (Line& line : AllLines())
    lines.push_back(std::move(line.text));
  return lines;
}

QString LinesEdit::Complaint(const Fault& fault) {
  if (!IsTouched()) return {};
  for (const Line& line : AllLines()) {
    QString words = FileFault(line.text);
    if (words.isEmpty() && fault) words = fault(line.text);
    if (words.isEmpty()) continue;
    GoTo(line);
    return u"「%1」第 %2 行：%3。"_qs.arg(name_, QString::number(line.number), words);
  }
  return {};
}

// The raw text, since the plain one turns blanks that do not break into others.
std::vector<LinesEdit::Line> LinesEdit::AllLines() const {
  const std::u16string raw = document()->toRawText().toStdU16String();
  std::vector<Line> lines;
  int number = 1;
  for (auto begin = raw.begin();; ++begin, ++number) {
    const auto end = std::find_if(begin, raw.end(), EndsLine);
    const std::u16string_view text = Trimmed({begin, end});
    if (!text.empty())
      lines.push_back({std::u16string(text), number, static_cast<int>(begin - raw.begin()),
                       static_cast<int>(end - begin)});
    if (end == raw.end()) return lines;
    begin = end;
  }
}

// The cursor at the beginning, which a long line shows then.
void LinesEdit::GoTo(const Line& line) {
  QTextCursor cursor(document());
  cursor.setPosition(line.position + line.length);
  cursor.setPosition(line.position, QTextCursor::KeepAnchor);
  setTextCursor(cursor);
  centerCursor();
  setFocus();
}

}  // namespace quillet
