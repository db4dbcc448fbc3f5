#include "settings/dialog/option_behavior_panel.h"

#include <utility>

#include <QBoxLayout>
#include <QFormLayout>
#include <QPushButton>

namespace quillet {

OptionBehaviorPanel::OptionBehaviorPanel(std::function<void()> becomeDefaultBrowser, QWidget* parent)
    : OptionPanelWidget(parent), controls_(OptionPanel::kBehavior, *this) {
  const auto [left, right] = MakeColumns();
  AddGroup(*left, QStringLiteral("圖片"), controls_,
           {u"ShowPicMode", u"QuotePic", u"ContentPic", u"SignPic", u"PushPic", u"DownloadEngine",
            u"OpenPicAfterDownload", u"AutoPlayGif"});
  AddProgram(*left, std::move(becomeDefaultBrowser));
  QFormLayout* articles = AddGroup(*right, QStringLiteral("文章"), controls_,
                                   {u"WebArticle", u"AutoRefreshPush", u"MarkAfterPush"});
  controls_.AddRow(*articles, u"PreventUpDownChangeArticle", u"Keyboard");
  AddGroup(*right, QStringLiteral("通知"), controls_, {u"NotifyArticleChanged", u"PlaySound", u"Flash"});
  AddGroup(*right, QStringLiteral("連線"), controls_, {u"LeaveMode"});
  AddGroup(*right, QStringLiteral("複製與貼上"), controls_, {u"CopyWhenSelect", u"PasteAutoChangeLine"});
}

void OptionBehaviorPanel::AddProgram(QVBoxLayout& column, std::function<void()> becomeDefaultBrowser) {
  QFormLayout* group = AddGroup(column, QStringLiteral("更新與瀏覽器"), controls_, {u"AutoCheckUpdate"});
  auto* button = new QPushButton(QStringLiteral("使用Quillet做為Qor網頁的預設瀏覽器"), this);
  button->setObjectName(QStringLiteral("becomeDefaultBrowser"));
  button->setAutoDefault(false);
  auto* line = new QHBoxLayout;
  line->addWidget(button);
  line->addStretch();
  group->addRow(line);
  group->addRow(
      new NoteLabel(QStringLiteral("按下按鈕後將開啟系統設定頁面，\n請將下方的網頁瀏覽器設為Quillet"), this));
  if (becomeDefaultBrowser) {
    connect(button, &QPushButton::clicked, this, std::move(becomeDefaultBrowser));
  } else {
    button->setEnabled(false);
    button->setToolTip(QStringLiteral("這個版本還不能從這裡設定預設瀏覽器"));
  }
}

void OptionBehaviorPanel::Open(const SettingsStore& store) {
  controls_.Open(store.Map());
}

void OptionBehaviorPanel::Store(SettingsStore& store) const {
  controls_.Store(store.Map());
}

}  // namespace quillet
