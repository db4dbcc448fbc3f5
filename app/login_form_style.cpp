#include "app/login_form_style.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

#include "app/panel_look.h"

namespace quillet {
namespace {

constexpr QColor kField(0x12, 0x15, 0x1A);
constexpr QColor kEdge(0x5B, 0x66, 0x75);
constexpr QColor kButton(0x2C, 0x33, 0x3D);
constexpr QColor kSelection(0x2F, 0x6F, 0x95);
constexpr QColor kFaint(0x86, 0x90, 0x9F);

// The toolkit's own style with flat fields and buttons, whose edges are seen on a dark ground, and boxes that
// grow with the letters.
class FormStyle : public QProxyStyle {
 public:
  explicit FormStyle(double textSize) : QProxyStyle(QStringLiteral("Fusion")), textSize_(textSize) {}

  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    if (metric == PM_IndicatorWidth || metric == PM_IndicatorHeight) return qRound(textSize_);
    if (metric == PM_CheckBoxLabelSpacing) return qRound(textSize_ * 0.4);
    return QProxyStyle::pixelMetric(metric, option, widget);
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    switch (element) {
      case PE_PanelLineEdit:
        PaintBox(*painter, *option, kField);
        break;
      case PE_PanelButtonCommand:
        PaintButton(*painter, *option);
        break;
      case PE_IndicatorCheckBox:
        PaintBox(*painter, *option, kField);
        if (option->state.testFlag(State_On)) PaintTick(*painter, option->rect);
        break;
      case PE_FrameFocusRect:
        PaintFocus(*painter, *option);
        break;
      default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
  }

 private:
  static void PaintBox(QPainter& painter, const QStyleOption& option, const QColor& fill) {
    const bool focused = option.state.testFlag(State_HasFocus);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(focused ? panel_look::kBusy : kEdge, 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter.restore();
  }
  static void PaintButton(QPainter& painter, const QStyleOption& option) {
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
    painter.setPen(QPen(panel_look::kBusy, textSize_ * 0.14, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const auto at = [&](double x, double y) {
      return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    painter.drawPolyline(QPolygonF({at(0.24, 0.52), at(0.43, 0.71), at(0.77, 0.3)}));
    painter.restore();
  }
  // Fields and buttons have their edge in the accent's colour instead; a check box's text is underlined.
  static void PaintFocus(QPainter& painter, const QStyleOption& option) {
    const auto* const focus = qstyleoption_cast<const QStyleOptionFocusRect*>(&option);
    if (focus == nullptr) return;
    painter.fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1),
                     panel_look::kBusy);
  }

  double textSize_;
};

}  // namespace

QPalette LoginFormPalette() {
  QPalette palette(panel_look::kLine, kButton, kButton.lighter(130), panel_look::kBorder, kButton.darker(120),
                   panel_look::kTitle, Qt::white, kField, panel_look::kFill);
  palette.setColor(QPalette::ButtonText, panel_look::kTitle);
  palette.setColor(QPalette::Highlight, kSelection);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::PlaceholderText, kFaint);
  palette.setColor(QPalette::ToolTipBase, kField);
  palette.setColor(QPalette::ToolTipText, panel_look::kTitle);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, kFaint.darker(125));
  return palette;
}

void StyleLoginControl(QWidget& control, double textSize) {
  auto* const style = new FormStyle(textSize);
  style->setParent(&control);
  control.setStyle(style);
  if (auto* const combo = qobject_cast<QComboBox*>(&control)) {
    combo->view()->setStyle(style);
    combo->view()->setPalette(LoginFormPalette());
  }
}

}  // namespace quillet
