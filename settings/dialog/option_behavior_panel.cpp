#include "settings/dialog/option_behavior_panel.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QPushButton>

namespace quillet {
namespace {

using S = Settings;

}  // namespace

OptionBehaviorPanel::OptionBehaviorPanel(const OptionActions& actions, QWidget* parent)
    : OptionPanelWidget(parent), controls_(OptionPanel::kBehavior, *this) {
  const auto [left, right] = MakeColumns();
  QFormLayout* pictures = AddGroup(*left, QStringLiteral("圖片"), controls_,
                                   {&S::showPicMode, &S::quotePic, &S::contentPic, &S::signPic, &S::pushPic,
                                    &S::downloadEngine, &S::openPicAfterDownload, &S::autoPlayGif});
  AddPictureCache(*pictures, actions);
  AddProgram(*left, actions);
  QFormLayout* articles = AddGroup(*right, QStringLiteral("文章"), controls_,
                                   {&S::webArticle, &S::autoRefreshPush, &S::markAfterPush});
  controls_.AddRow(*articles, &S::preventUpDownChangeArticle);
  AddGroup(*right, QStringLiteral("通知"), controls_, {&S::notifyArticleChanged, &S::playSound, &S::flash});
  AddGroup(*right, QStringLiteral("連線"), controls_,
           {&S::leaveMode, &S::autoReconnect, &S::keepAwake, &S::knowHosts});
  AddGroup(*right, QStringLiteral("複製與貼上"), controls_, {&S::copyWhenSelect, &S::pasteAutoChangeLine});
}

void OptionBehaviorPanel::AddProgram(QVBoxLayout& column, const OptionActions& actions) {
  QFormLayout* group = AddGroup(column, QStringLiteral("更新與瀏覽器"), controls_, {&S::autoCheckUpdate});
  auto* button = new QPushButton(QStringLiteral("使用Quillet做為Qor網頁的預設瀏覽器"), this);
  button->setObjectName(QStringLiteral("becomeDefaultBrowser"));
  button->setAutoDefault(false);
  auto* line = new QHBoxLayout;
  line->addWidget(button);
  line->addStretch();
  group->addRow(line);
  group->addRow(new NoteLabel(actions.aboutDefaultBrowser, this));
  button->setEnabled(static_cast<bool>(actions.becomeDefaultBrowser));
  connect(button, &QPushButton::clicked, this, actions.becomeDefaultBrowser);
}

void OptionBehaviorPanel::AddPictureCache(QFormLayout& group, const OptionActions& actions) {
  group.addRow(new NoteLabel(QStringLiteral("開啟圖片時，放圖片的網站會知道你的 IP 位址"), this));
  auto* button = new QPushButton(QStringLiteral("清除圖片快取"), this);
  button->setObjectName(QStringLiteral("emptyPictureCache"));
  button->setAutoDefault(false);
  button->setEnabled(static_cast<bool>(actions.emptyPictureCache));
  connect(button, &QPushButton::clicked, this, actions.emptyPictureCache);
  pictureCache_ = new QLabel(this);
  pictureCache_->setObjectName(QStringLiteral("pictureCacheSize"));
  auto* line = new QHBoxLayout;
  line->addWidget(button);
  line->addWidget(pictureCache_);
  line->addStretch();
  group.addRow(line);
}

void OptionBehaviorPanel::ShowPictureCache(const QString& size) {
  pictureCache_->setText(QStringLiteral("已用 %1").arg(size));
}

void OptionBehaviorPanel::Open(const SettingsStore& store) {
  controls_.Open(store.Fields());
}

void OptionBehaviorPanel::Store(SettingsStore& store) const {
  controls_.Store(store.Map());
}

}  // namespace quillet
