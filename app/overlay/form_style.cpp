#include "app/overlay/form_style.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QPainter>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyleOption>

namespace quillet {
namespace {

constexpr LoginFormColours kUsual{.panel = panel_look::kUsualColours,
                                  .field = QColor(0x12, 0x15, 0x1A),
                                  .edge = QColor(0x5B, 0x66, 0x75),
                                  .button = QColor(0x2C, 0x33, 0x3D),
                                  .mainButton = QColor(0x1F, 0x5F, 0x85),
                                  .selection = QColor(0x2F, 0x6F, 0x95),
                                  .onSelection = QColor(0xFF, 0xFF, 0xFF),
                                  .faint = QColor(0x6B, 0x73, 0x7F)};
constexpr LoginFormColours kDisguise{.panel = panel_look::kDisguiseColours,
                                     .field = panel_look::kPaper,
                                     .edge = panel_look::kPencil,
                                     .button = QColor(0xF0, 0xF0, 0xF0),
                                     .mainButton = QColor(0xDC, 0xDC, 0xDC),
                                     .selection = QColor(0xC8, 0xC8, 0xC8),
                                     .onSelection = panel_look::kInk,
                                     .faint = panel_look::kPencil};

// Seen at a glance, and not by its colour alone.
constexpr double kFocusedEdge = 2;

// The toolkit's own style with flat fields and buttons, whose edges are seen on the panel's ground, and boxes
// that grow with the letters.
class FormStyle : public QProxyStyle {
 public:
  FormStyle(double textSize, const LoginFormColours& colours)
      : QProxyStyle(QStringLiteral("Fusion")), textSize_(textSize), colours_(colours) {}

  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    if (metric == PM_IndicatorWidth || metric == PM_IndicatorHeight) return qRound(textSize_);
    if (metric == PM_CheckBoxLabelSpacing) return qRound(textSize_ * 0.4);
    return QProxyStyle::pixelMetric(metric, option, widget);
  }

  // The base class leaves out what would show that a flat button has the keyboard.
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    if (element == CE_PushButtonBevel)
      PaintButton(*painter, *option);
    else
      QProxyStyle::drawControl(element, option, painter, widget);
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    switch (element) {
      case PE_PanelLineEdit:
        PaintBox(*painter, *option, colours_.field);
        break;
      case PE_IndicatorCheckBox:
        PaintBox(*painter, *option, colours_.field);
        if (option->state.testFlag(State_On)) PaintTick(*painter, option->rect);
        break;
      case PE_FrameFocusRect:
        if (qobject_cast<const QPushButton*>(widget) == nullptr) PaintFocus(*painter, *option);
        break;
      default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
  }

 private:
  void PaintBox(QPainter& painter, const QStyleOption& option, const QColor& fill) const {
    const bool focused = option.state.testFlag(State_HasFocus);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double width = focused ? kFocusedEdge : 1;
    const double half = width / 2;
    painter.setPen(QPen(focused ? colours_.panel.busy : colours_.edge, width));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(half, half, -half, -half), 3, 3);
    painter.restore();
  }
  void PaintButton(QPainter& painter, const QStyleOption& option) const {
    const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool flat = button != nullptr && button->features.testFlag(QStyleOptionButton::Flat);
    const bool under = option.state.testFlag(State_MouseOver) && option.state.testFlag(State_Enabled);
    const bool down = option.state.testFlag(State_Sunken) || option.state.testFlag(State_On);
    if (flat && !under && !down && !option.state.testFlag(State_HasFocus)) return;
    const QColor colour = option.palette.color(QPalette::Button);
    PaintBox(painter, option, down ? colour.darker(125) : under ? colour.lighter(115) : colour);
  }
  void PaintTick(QPainter& painter, const QRectF& box) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours_.panel.busy, textSize_ * 0.14, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const auto at = [&](double x, double y) {
      return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    painter.drawPolyline(QPolygonF({at(0.24, 0.52), at(0.43, 0.71), at(0.77, 0.3)}));
    painter.restore();
  }
  // Fields and buttons have their edge in the accent's colour instead; a check box's text is underlined.
  void PaintFocus(QPainter& painter, const QStyleOption& option) const {
    const auto* const focus = qstyleoption_cast<const QStyleOptionFocusRect*>(&option);
    if (focus == nullptr) return;
    painter.fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1),
                     colours_.panel.busy);
  }

  double textSize_;
  const LoginFormColours& colours_;
};

}  // namespace

const LoginFormColours& LoginFormColoursFor(bool work) {
  return work ? kDisguise : kUsual;
}

QPalette LoginFormPalette(const LoginFormColours& colours) {
  const panel_look::Colours& panel = colours.panel;
  QPalette palette(panel.line, colours.button, colours.button.lighter(130), panel.border,
                   colours.button.darker(120), panel.title, Qt::white, colours.field, panel.fill);
  palette.setColor(QPalette::ButtonText, panel.title);
  palette.setColor(QPalette::Highlight, colours.selection);
  palette.setColor(QPalette::HighlightedText, colours.onSelection);
  palette.setColor(QPalette::PlaceholderText, colours.faint);
  palette.setColor(QPalette::ToolTipBase, colours.field);
  palette.setColor(QPalette::ToolTipText, panel.title);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, colours.faint);
  return palette;
}

void StyleLoginControl(QWidget& control, double textSize, const LoginFormColours& colours) {
  QStyle* const former = control.style();
  auto* const style = new FormStyle(textSize, colours);
  style->setParent(&control);
  control.setStyle(style);
  if (auto* const combo = qobject_cast<QComboBox*>(&control)) {
    combo->view()->setStyle(style);
    combo->view()->setPalette(LoginFormPalette(colours));
  }
  if (former->parent() == &control) delete former;
}

}  // namespace quillet
