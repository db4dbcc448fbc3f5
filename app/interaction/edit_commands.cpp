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

void EditCommands::Offer(CommandRunner& runner) {
  runner.On(Command::kCopy, [this] { Copy(Form::kText); });
  runner.On(Command::kCopyHtml, [this] { Copy(Form::kHtml); });
  runner.On(Command::kCopyAnsi, [this] { Copy(Form::kAnsi); });
  runner.On(Command::kSelectAll, [this] { parts_.selection.SelectAll(); });
  runner.On(Command::kPaste, [this] { parts_.clipboard.Paste(); });
  runner.On(Command::kPasteShortLink, [this] { parts_.clipboard.PasteShortLink(); });
  runner.On(Command::kSearchFirst,
            [this] { parts_.web.Search(SearchEngine::kFirst, parts_.selection.Text()); });
  runner.On(Command::kSearchSecond,
            [this] { parts_.web.Search(SearchEngine::kSecond, parts_.selection.Text()); });
  runner.On(Command::kOpenLink, [this](const CommandTarget& target) { parts_.web.Open(*target.link); });
  runner.On(Command::kCopyLink, [this](const CommandTarget& target) { CopyLink(*target.link); });
  runner.On(Command::kUserPage, [this](const CommandTarget& target) { parts_.web.OpenUserPage(target.id); });
}

void EditCommands::CopyLink(const TextLink& link) {
  if (parts_.clipboard.CopyText(TextOf(link))) handlers_.tell(u"已複製連結"_qs);
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
