// The commands about pictures: of the article, of closed links, and of the one that is looked at.
#include "app/interaction/context_menu.h"
#include "app/messages/picture_messages.h"
#include "app/window/view_hands.h"

namespace quillet {
namespace {

using Where = PictureTarget::Where;

bool ShowsByItself(LinkKind kind) {
  return kind == LinkKind::kPicture || kind == LinkKind::kPicturePage || kind == LinkKind::kVideo;
}

}  // namespace

void ViewHands::OfferPictureCommands() {
  const auto link = [](const CommandTarget& target) { return target.picture->link; };
  runner_.On(Command::kTogglePictures, [this] { parts_.pictures.TogglePage(); });
  runner_.On(Command::kOpenPicture, [this](const CommandTarget& target) { TogglePicture(*target.picture); });
  runner_.On(Command::kClosePicture, [this](const CommandTarget& target) { TogglePicture(*target.picture); });
  runner_.On(Command::kSavePicture,
             [this, link](const CommandTarget& target) { pictureKeeper_.Save(link(target)); });
  runner_.On(Command::kCopyPicture,
             [this, link](const CommandTarget& target) { pictureKeeper_.Copy(link(target)); });
  runner_.On(Command::kCopyPictureLink, [this, link](const CommandTarget& target) {
    if (clipboard_.CopyText(link(target).toStdU16String())) Tell(u"已複製連結"_qs);
  });
  runner_.On(Command::kBrowsePicture,
             [this, link](const CommandTarget& target) { BrowsePicture(link(target)); });
}

void ViewHands::BrowsePicture(const QString& link) {
  TextLink target;
  target.address = link.toStdU16String();
  web_.Open(target);
}

void ViewHands::TogglePicture(const PictureTarget& picture) {
  if (picture.where == Where::kViewer)
    parts_.viewer.Close();
  else if (picture.line >= 0)
    parts_.pictures.ToggleInLine(picture.line, picture.firstCol);
  else
    parts_.screenPicture.Open(picture.link);
}

bool ViewHands::HasFileOf(const QString& link) const {
  return parts_.store.Look(link, {}).stage == PictureStage::kReady;
}

CommandTarget ViewHands::TargetOf(const ArticlePictures::Place& place) const {
  CommandTarget target;
  target.picture = PictureTarget{.link = place.link,
                                 .where = Where::kArticle,
                                 .hasFile = HasFileOf(place.link),
                                 .line = place.line,
                                 .firstCol = place.firstCol};
  return target;
}

// A link's picture, where it can be opened or closed here.
void ViewHands::AddPictureOfLink(int row, CommandTarget& target) const {
  if (!target.link || target.link->address.empty()) return;
  PictureTarget picture{.link = QString::fromStdU16String(target.link->address),
                        .firstCol = target.link->first};
  if (!parts_.article.IsShown()) {
    if (ShowsByItself(target.link->kind) && !settings_.Fields().work) target.picture = picture;
    return;
  }
  picture.line = parts_.article.LineAtRow(row);
  const ArticlePictures::Standing standing = parts_.pictures.StandingInLine(picture.line, target.link->first);
  if (standing == ArticlePictures::Standing::kNone) return;
  picture.where = standing == ArticlePictures::Standing::kOpen ? Where::kOpenLink : Where::kClosedLink;
  target.picture = picture;
}

CommandTarget ViewHands::TargetInViewer() const {
  CommandTarget target;
  const QString link = parts_.viewer.Link();
  if (!link.isEmpty())
    target.picture = PictureTarget{.link = link, .where = Where::kViewer, .hasFile = HasFileOf(link)};
  return target;
}

void ViewHands::ShowMenuOfViewer(const QPoint& at) {
  const CommandTarget target = TargetInViewer();
  ShowContextMenu(parts_.viewer, at, runner_, target, WordsForCommands(target), CommandMenu::kPicture);
}

void ViewHands::PerformInViewer(Command command) {
  runner_.Run(command, TargetInViewer());
}

// Over the picture that is looked at nothing else of the view is seen.
void ViewHands::Tell(const QString& words) {
  if (parts_.viewer.IsOpen())
    parts_.viewer.Say(words);
  else
    parts_.toast.Show(words);
}

void ViewHands::TellOfPicture(const PanelText& notice) {
  if (parts_.viewer.IsOpen())
    parts_.viewer.Say(AsOneLine(notice));
  else
    handlers_.notice(notice);
}

}  // namespace quillet
