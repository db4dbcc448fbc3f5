// A plain text edit whose lines are the lines of a file of the user's: takes them as a reader of the file
// would, and names the first one that the file could not hold. For the panels of the options dialog.
// User-interface thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <QPlainTextEdit>

namespace quillet {

class LinesEdit : public QPlainTextEdit {
  Q_OBJECT

 public:
  // What is wrong with a line (trimmed, not empty), in words; empty when nothing is.
  using Fault = std::function<QString(std::u16string_view line)>;

  // `name` is what complaints and screen readers call it.
  explicit LinesEdit(const QString& name, QWidget* parent = nullptr);

  // Lines parted or ended by LF.
  void Fill(std::u16string_view text);
  // Whether it differs from what it was filled with.
  bool IsTouched() const;
  // Trimmed; empty ones are left out.
  std::vector<std::u16string> Lines() const;

  // The first line that is too long for the file, holds what the file cannot (control characters) or has the
  // given fault, by its number and in words for the user; it is then selected and has the keyboard. Empty
  // when there is none. An untouched text is as the file had it and has no faults.
  QString Complaint(const Fault& fault = {});

 private:
  struct Line {
    std::u16string text;
    int number;    // from 1, empty ones counted
    int position;  // of its first character, blanks included, in the document
    int length;    // the same
  };

  std::vector<Line> AllLines() const;
  void GoTo(const Line& line);

  QString name_;
};

// A character that cannot be seen, by its code point: "字元 U+0009".
QString NameOfUnseen(char16_t character);

}  // namespace quillet
