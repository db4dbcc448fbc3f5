#include "app/interaction/edit_commands.h"

#include <algorithm>

#include "app/page/copy_look.h"

namespace quillet {
namespace {

bool IsBlank(const ArticleLine& line) {
  return std::all_of(line.text.begin(), line.text.begin() + kCols,
                     [](std::uint8_t byte) { return byte == ' ' || byte == 0; });
}

std::u16string TextOf(const TextLink& link) {
  if (!link.address.empty()) return link.address;
  return link.article ? u"#" + link.article->code + u" (" + link.article->board + u")" : std::u16string();
}

}  // namespace

bool IsAboutSelection(EditCommand command) {
  switch (command) {
    case EditCommand::kCopy:
    case EditCommand::kCopyHtml:
    case EditCommand::kCopyAnsi:
    case EditCommand::kSearchFirst:
    case EditCommand::kSearchSecond:
      return true;
    default:
      return false;
  }
}

void EditCommands::Perform(EditCommand command, const EditTarget& target) {
  switch (command) {
    case EditCommand::kCopy:
      return Copy(Form::kText);
    case EditCommand::kCopyHtml:
      return Copy(Form::kHtml);
    case EditCommand::kCopyAnsi:
      return Copy(Form::kAnsi);
    case EditCommand::kSearchFirst:
      return SearchSelection(SearchEngine::kFirst);
    case EditCommand::kSearchSecond:
      return SearchSelection(SearchEngine::kSecond);
    case EditCommand::kOpenLink:
      if (target.link) parts_.web.Open(*target.link);
      return;
    case EditCommand::kCopyLink:
      if (target.link && parts_.clipboard.CopyText(TextOf(*target.link))) handlers_.tell(u"已複製連結"_qs);
      return;
    case EditCommand::kAddToNames:
      return handlers_.askForNames(QString::fromStdU16String(target.id));
    case EditCommand::kUserPage:
      return parts_.web.OpenUserPage(target.id);
    case EditCommand::kPaste:
      return parts_.clipboard.Paste();
    case EditCommand::kPasteShortLink:
      return parts_.clipboard.PasteShortLink();
    case EditCommand::kSelectAll:
      return parts_.selection.SelectAll();
  }
}

void EditCommands::SearchSelection(SearchEngine engine) {
  parts_.web.Search(engine, parts_.selection.Text());
}

void EditCommands::OnSelected() {
  const std::u16string text = parts_.selection.Text();
  parts_.clipboard.OfferSelection(text);
  if (parts_.settings.Fields().copyWhenSelect && parts_.clipboard.CopyText(text))
    handlers_.tell(u"已複製"_qs);
}

void EditCommands::Copy(Form form) {
  const Selection selection = SelectedOrInSight();
  const std::u16string text = SelectedText(selection, parts_.text);
  bool copied = false;
  switch (form) {
    case Form::kText:
      copied = parts_.clipboard.CopyText(text);
      break;
    case Form::kHtml: {
      const CopyLook look = CopyLookOf(parts_.text, parts_.settings.Display());
      copied = parts_.clipboard.CopyHtml(SelectedHtml(selection, parts_.text, look), text);
      break;
    }
    case Form::kAnsi:
      copied = parts_.clipboard.CopyText(SelectedAnsi(selection, parts_.text));
      break;
  }
  if (copied) handlers_.tell(parts_.selection.IsShown() ? u"已複製"_qs : u"已複製畫面"_qs);
}

Selection EditCommands::SelectedOrInSight() const {
  if (parts_.selection.IsShown()) return parts_.selection.Selected();
  Selection inSight;
  int first = -1;
  int last = -1;
  for (int row = 0; row < kRows; ++row) {
    const int line = parts_.text.LineAtRow(row);
    if (line < 0) continue;
    if (first < 0) first = line;
    last = line;
  }
  if (first < 0) return inSight;
  while (last > first && IsBlank(parts_.text.Line(last)))
    --last;
  inSight.Begin({first, 0}, SelectUnit::kCharacter, SelectShape::kStream, parts_.text);
  inSight.ExtendTo({last, kCols}, parts_.text);
  return inSight;
}

}  // namespace quillet
