#include "app/overlay/picture_question.h"

#include <algorithm>
#include <utility>

#include <QHBoxLayout>
#include <QPainter>

#include "app/messages/picture_messages.h"
#include "app/overlay/form_style.h"
#include "settings/setting_table.h"

namespace quillet {
namespace {

// In letters' sizes.
constexpr double kQuestionGap = 0.5;

}  // namespace

PictureQuestion::PictureQuestion(QWidget& view, std::function<void(PictureScope)> choose)
    : QWidget(&view), choose_(std::move(choose)) {
  setAttribute(Qt::WA_NoMousePropagation);
  setCursor(Qt::ArrowCursor);
  hide();
}

void PictureQuestion::Ask() {
  if (layout() == nullptr) Build();
  isAsking_ = true;
  TakePlace();
  raise();
}

void PictureQuestion::Build() {
  auto* const row = new QHBoxLayout(this);
  auto* const words = new QLabel(PictureQuestionMessages::Words());
  words->setWordWrap(true);
  row->addWidget(words, 1);
  for (const SettingChoice& choice : RowOf(&Settings::showPicMode).choices) {
    QPushButton* const button =
        MakeButton(QStringView(choice.label).toString(), QStringLiteral("scope%1").arg(choice.value));
    connect(button, &QPushButton::clicked, this, [this, scope = static_cast<PictureScope>(choice.value)] {
      End();
      choose_(scope);
    });
    row->addWidget(button);
  }
  QPushButton* const later = MakeButton(QStringLiteral("✕"), QStringLiteral("later"));
  later->setFlat(true);
  connect(later, &QPushButton::clicked, this, [this] { End(); });
  row->addWidget(later);
}

QPushButton* PictureQuestion::MakeButton(const QString& text, const QString& name) {
  auto* const button = new QPushButton(text);
  button->setObjectName(name);
  button->setFocusPolicy(Qt::NoFocus);
  button->setToolTip(PictureQuestionMessages::Later());
  return button;
}

void PictureQuestion::End() {
  isAsking_ = false;
  hide();
}

void PictureQuestion::Place(const OverlayPlace& place) {
  place_ = place;
  if (isAsking_) TakePlace();
}

void PictureQuestion::TakePlace() {
  const LoginFormColours& colours = LoginFormColoursFor(false);
  const double letter = panel_look::TextSize(place_.unit);
  const QPalette palette = LoginFormPalette(colours);
  setPalette(palette);
  for (QWidget* const part : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    part->setFont(panel_look::Sized(place_.font, letter));
    StyleLoginControl(*part, letter, colours);
    part->setPalette(palette);
  }
  const auto gap = static_cast<int>(letter * kQuestionGap);
  layout()->setContentsMargins(2 * gap, gap, gap, gap);
  layout()->setSpacing(gap);
  const int width = place_.area.width();
  const int wanted = std::max(layout()->totalHeightForWidth(width), layout()->totalMinimumSize().height());
  setGeometry(0, 0, width, std::min(wanted, place_.area.height()));
  setVisible(!place_.work);
}

void PictureQuestion::TellKeys(WindowState& state) const {
  state.questionShown = state.questionShown || isVisible();
}

bool PictureQuestion::OnKey(int /*virtualKey*/) {
  End();
  return true;
}

void PictureQuestion::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), panel_look::kFill);
  painter.fillRect(0, height() - 1, width(), 1, panel_look::kBorder);
}

}  // namespace quillet
