#include "app/viewer/video_dialog.h"

#include <utility>

#include <QDialogButtonBox>
#include <QVBoxLayout>

#include "app/messages/picture_messages.h"
#include "settings/dialog/dialog_room.h"

namespace quillet {
namespace {

// The thumbnail's room, in widget units: the shape of most videos.
constexpr QSize kThumbnail(480, 270);

// Anybody's text: none of it is markup.
QLabel* PlainLabel() {
  auto* const label = new QLabel;
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

}  // namespace

VideoDlg::VideoDlg(PictureStore& store, const QString& link, std::function<void()> browse, QWidget* parent)
    : QDialog(parent),
      store_(store),
      link_(link),
      picture_(new QLabel),
      title_(PlainLabel()),
      facts_(PlainLabel()) {
  setWindowTitle(VideoMessages::Title());
  setObjectName(QStringLiteral("video"));
  picture_->setAlignment(Qt::AlignCenter);
  picture_->setFixedSize(kThumbnail);
  QFont bold = font();
  bold.setBold(true);
  title_->setFont(bold);
  auto* const buttons = new QDialogButtonBox;
  QPushButton* const open = buttons->addButton(VideoMessages::Browse(), QDialogButtonBox::AcceptRole);
  open->setDefault(true);
  buttons->addButton(VideoMessages::Close(), QDialogButtonBox::RejectRole);
  auto* const layout = new QVBoxLayout(this);
  for (QWidget* const part : std::initializer_list<QWidget*>{picture_, title_, facts_, buttons})
    layout->addWidget(part);
  connect(buttons, &QDialogButtonBox::accepted, this, [this, browse = std::move(browse)] {
    accept();
    browse();
  });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(&store_, &PictureStore::Changed, this, [this](const QString& changed) {
    if (changed == link_) Refresh();
  });
  store_.SetWishes(PictureUser::kViewer, {{.link = link_, .bounds = Bounds()}});
  Refresh();
  open->setFocus();
  FitToScreen(*this);
}

VideoDlg::~VideoDlg() {
  store_.SetWishes(PictureUser::kViewer, {});
}

QSize VideoDlg::Bounds() const {
  return (QSizeF(kThumbnail) * devicePixelRatioF()).toSize();
}

void VideoDlg::Refresh() {
  const PictureNow now = store_.Look(link_, Bounds());
  if (now.image.isNull()) {
    picture_->setText(DescribePictureToCome(now));
  } else {
    QImage image = now.image.scaled(Bounds(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
    image.setDevicePixelRatio(devicePixelRatioF());
    picture_->setPixmap(QPixmap::fromImage(image));
  }
  title_->setText(now.title);
  title_->setVisible(!now.title.isEmpty());
  facts_->setText(DescribeVideo(now.seconds, link_));
}

}  // namespace quillet
