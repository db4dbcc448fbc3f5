#include "settings/dialog/option_display_panel.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QCompleter>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFormLayout>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QToolButton>

#include "settings/picture_formats.h"

namespace quillet {
namespace {

using S = Settings;

// The installed faces that can draw the screen: of one width, or with the characters it is full of.
QStringList ScreenFonts() {
  QStringList fonts;
  for (const QString& family : QFontDatabase::families()) {
    if (QFontDatabase::isPrivateFamily(family)) continue;
    if (QFontDatabase::isFixedPitch(family) ||
        QFontDatabase::writingSystems(family).contains(QFontDatabase::TraditionalChinese))
      fonts.append(family);
  }
  return fonts;
}

// What both the loader and this system's toolkit take.
QString PictureFilter() {
  QStringList patterns;
  for (const QByteArray& format : QImageReader::supportedImageFormats())
    if (IsPictureFormat(format.toStdString()))
      patterns.append(QStringLiteral("*.") + QString::fromLatin1(format));
  return QStringLiteral("圖片 (%1);;所有檔案 (*)").arg(patterns.join(u' '));
}

QHBoxLayout* Beside(QWidget* left, QWidget* right) {
  auto* line = new QHBoxLayout;
  line->addWidget(left);
  line->addWidget(right);
  return line;
}

QHBoxLayout* LeftAligned(std::initializer_list<QWidget*> widgets) {
  auto* line = new QHBoxLayout;
  for (QWidget* widget : widgets)
    line->addWidget(widget);
  line->addStretch();
  return line;
}

// Shows the slider's value, in the room that the largest needs.
QLabel* MakePercentage(QSlider& slider) {
  auto* label = new QLabel(&slider);
  const auto textOf = [](int value) { return QStringLiteral("%1%").arg(value); };
  label->setText(textOf(slider.maximum()));
  label->setMinimumWidth(label->sizeHint().width());
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->setText(textOf(slider.value()));
  QObject::connect(&slider, &QSlider::valueChanged, label, [=](int value) { label->setText(textOf(value)); });
  return label;
}

}  // namespace

OptionDisplayPanel::OptionDisplayPanel(QWidget* parent)
    : OptionPanelWidget(parent), controls_(OptionPanel::kDisplay, *this) {
  const auto [left, right] = MakeColumns();
  AddGroup(*left, QStringLiteral("文章與推文"), controls_,
           {&S::darkerReadArticle, &S::darkerUpdatedArticle, &S::lighterPushLine, &S::grayBackgroundPush,
            &S::mergePush, &S::colorMyId, &S::ipDetectProxy, &S::ipToName});
  AddBackground(*left);
  AddText(*right);
  AddGroup(*right, QStringLiteral("視窗"), controls_,
           {&S::titleShowId, &S::topmost, &S::hideTopLeftIcons, &S::noScrollAnimation, &S::work});
}

void OptionDisplayPanel::AddText(QVBoxLayout& column) {
  QFormLayout* group = AddGroup(column, QStringLiteral("文字與顏色"));
  group->addRow(controls_.LabelOf(&S::font), MakeFontBox());
  auto* note = new NoteLabel(QStringLiteral("(不為0時ANSI圖會有毛邊)"), this);
  group->addRow(controls_.LabelOf(&S::lineSpacing), LeftAligned({controls_.Control(&S::lineSpacing), note}));
  group->addRow(controls_.LabelOf(&S::pushLineSpacing),
                LeftAligned({controls_.Control(&S::pushLineSpacing)}));
  for (const SettingField field : {&S::smoothFont, &S::lighterDarkBlue, &S::darkColor, &S::showHighlight})
    controls_.AddRow(*group, field);
}

QWidget* OptionDisplayPanel::MakeFontBox() {
  auto* edit = static_cast<QLineEdit*>(controls_.Control(&S::font));
  auto* box = new QComboBox(this);
  box->setAccessibleName(edit->accessibleName());
  box->addItems(ScreenFonts());
  box->setCurrentIndex(-1);
  box->setInsertPolicy(QComboBox::NoInsert);
  box->setLineEdit(edit);
  // A face that is not installed may be named as well, so what is typed is only suggested to, never
  // completed.
  box->completer()->setCompletionMode(QCompleter::PopupCompletion);
  box->completer()->setFilterMode(Qt::MatchContains);
  // As wide as the column, however long the longest name is.
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  controls_.Guard(*box);
  return box;
}

void OptionDisplayPanel::AddBackground(QVBoxLayout& column) {
  QFormLayout* group = AddGroup(column, QStringLiteral("背景"));
  group->addRow(controls_.LabelOf(&S::backgroundPicture));
  auto* picture = controls_.Control(&S::backgroundPicture);
  auto* browse = new QToolButton(this);
  browse->setText(QStringLiteral(".."));
  browse->setObjectName(QStringLiteral("browse"));
  browse->setAccessibleName(QStringLiteral("選擇背景圖片"));
  browse->setToolTip(browse->accessibleName());
  connect(browse, &QToolButton::clicked, this, &OptionDisplayPanel::BrowseForPicture);
  group->addRow(Beside(picture, browse));
  controls_.AddRow(*group, &S::backgroundPictureStyle);
  auto* slider = static_cast<QSlider*>(controls_.Control(&S::backPicOpacity));
  group->addRow(controls_.LabelOf(&S::backPicOpacity), Beside(slider, MakePercentage(*slider)));
}

void OptionDisplayPanel::BrowseForPicture() {
  auto* edit = static_cast<QLineEdit*>(controls_.Control(&S::backgroundPicture));
  const QFileInfo current(edit->text());
  const QString chosen = QFileDialog::getOpenFileName(
      this, QStringLiteral("選擇背景圖片"), current.isFile() ? current.absoluteFilePath() : QString(),
      PictureFilter());
  if (!chosen.isEmpty()) edit->setText(QDir::toNativeSeparators(chosen));
}

void OptionDisplayPanel::Open(const SettingsStore& store) {
  controls_.Open(store.Fields());
}

void OptionDisplayPanel::Store(SettingsStore& store) const {
  controls_.Store(store.Map());
}

}  // namespace quillet
