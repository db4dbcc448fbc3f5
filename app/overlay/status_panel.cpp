#include "app/overlay/status_panel.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include <QFontMetricsF>

#include "input/key_control.h"

namespace quillet {
namespace {

constexpr qint64 kBusyDelayMs = 200;
// Whoever was typing has stopped by then.
constexpr qint64 kTypingPauseMs = 1000;

using panel_look::Colours;

// Of the panel's letters.
constexpr qreal kHintSize = 0.9;
// In the panel's letters.
constexpr qreal kFirstLineGap = 0.7;
constexpr qreal kLineGap = 0.35;
constexpr qreal kHintGap = 1.1;
constexpr qreal kNarrowest = 15;
constexpr qreal kWidest = 34;
constexpr qreal kLeastText = 8;  // even where the window is narrower
constexpr qreal kDotStep = 0.62;
constexpr qreal kWaitingDotRadius = 0.15;
constexpr qreal kDotsGap = 0.6;
// Of the window's width.
constexpr qreal kWidestShare = 0.8;

QColor MarkOf(PanelTone tone, const Colours& colours) {
  switch (tone) {
    case PanelTone::kBusy:
      return colours.busy;
    case PanelTone::kEnded:
      return colours.ended;
    case PanelTone::kProblem:
      return colours.problem;
    case PanelTone::kCalm:
      break;
  }
  return colours.calm;
}

struct Block {
  QString text;
  QFont font;
  QColor colour;
  qreal gapAbove = 0;
  QRectF place;  // within the panel
};

constexpr int kWrap = Qt::TextWordWrap | Qt::TextWrapAnywhere | Qt::AlignLeft | Qt::AlignTop;

QFont Letters(const QFont& base, qreal pixels, QFont::Weight weight) {
  QFont font = panel_look::Sized(base, pixels);
  font.setWeight(weight);
  return font;
}

std::vector<Block> BlocksOf(const PanelText& text, const QFont& base, qreal size, const Colours& colours) {
  std::vector<Block> blocks;
  blocks.push_back(
      {text.title, Letters(base, size * panel_look::kTitleSize, QFont::DemiBold), colours.title, 0, {}});
  for (qsizetype i = 0; i < text.lines.size(); ++i)
    blocks.push_back({text.lines[i],
                      Letters(base, size, QFont::Normal),
                      colours.line,
                      size * (i == 0 ? kFirstLineGap : kLineGap),
                      {}});
  if (!text.hint.isEmpty())
    blocks.push_back(
        {text.hint, Letters(base, size * kHintSize, QFont::Normal), colours.hint, size * kHintGap, {}});
  return blocks;
}

// Stacks the blocks, as wide as the widest needs but no wider than `widest`. Returns the content's size.
QSizeF StackBlocks(std::vector<Block>& blocks, qreal widest) {
  qreal width = 0;
  qreal bottom = 0;
  for (Block& block : blocks) {
    const QFontMetricsF metrics(block.font);
    const QRectF bounds = metrics.boundingRect(QRectF(0, 0, widest, 1e6), kWrap, block.text);
    // A pixel to spare: measured and drawn widths may round apart, which would wrap the last character.
    block.place = QRectF(0, bottom + block.gapAbove, widest, std::ceil(bounds.height()) + 1);
    width = std::max(width, std::ceil(bounds.width()) + 1);
    bottom = block.place.bottom();
  }
  return {std::min(width, widest), bottom};
}

void PaintBlocks(QPainter& painter, const std::vector<Block>& blocks, const QPointF& corner) {
  for (const Block& block : blocks) {
    painter.setFont(block.font);
    painter.setPen(block.colour);
    painter.drawText(block.place.translated(corner), kWrap, block.text);
  }
}

// Three dots that swell one after another.
void PaintDots(QPainter& painter, QPointF at, qreal size, QColor colour, qint64 elapsedMs) {
  constexpr qreal kPeriodMs = 1400;
  painter.setPen(Qt::NoPen);
  for (int i = 0; i < 3; ++i) {
    const qreal phase = static_cast<qreal>(elapsedMs) / kPeriodMs - i * 0.16;
    const qreal swell = 0.5 - 0.5 * std::cos(2 * std::numbers::pi * phase);
    colour.setAlphaF(static_cast<float>(0.3 + 0.7 * swell));
    painter.setBrush(colour);
    painter.drawEllipse(at + QPointF(i * size * kDotStep, 0), size * kWaitingDotRadius,
                        size * kWaitingDotRadius);
  }
}

}  // namespace

void StatusPanel::SetSession(PanelText text) {
  if (text == session_) return;
  // More unsent bytes or a changed detail is no new event; another title is.
  if (text.title != session_.title) {
    dismissed_ = false;
    sinceShown_.start();
  }
  session_ = std::move(text);
}

void StatusPanel::AddNotice(PanelText text) {
  if (text.title.isEmpty()) return;
  dismissed_ = false;
  notices_.append(std::move(text));
}

const PanelText& StatusPanel::Text() const {
  return notices_.isEmpty() ? session_ : notices_.front();
}

bool StatusPanel::HasNotice() const {
  return !notices_.isEmpty();
}

bool StatusPanel::IsShown() const {
  return IsActive() && (!IsBusy() || sinceShown_.elapsed() >= kBusyDelayMs);
}

void StatusPanel::Dismiss() {
  if (notices_.isEmpty())
    dismissed_ = true;
  else
    notices_.removeFirst();
}

void StatusPanel::TellKeys(WindowState& state) const {
  state.noticeShown = !Text().title.isEmpty();
}

bool StatusPanel::OnKey(int virtualKey) {
  PanelAction action = PanelAction::kNone;
  if (virtualKey == kKeyEnter)
    action = Text().onEnter;
  else if (IsActive())
    action = Text().onEscape;
  // A key that was meant for what stood there before decides nothing that matters.
  const bool isSeen = sinceShown_.isValid() && sinceShown_.elapsed() >= kTypingPauseMs;
  if (action == PanelAction::kAcceptHostKey && !isSeen) action = PanelAction::kNone;
  if (action == PanelAction::kDismiss) Dismiss();
  if (action == PanelAction::kNone) Recall();
  answered_(action);
  return true;
}

void StatusPanel::OnTyped() {
  const bool hasPaused = !sinceTyped_.isValid() || sinceTyped_.elapsed() >= kTypingPauseMs;
  sinceTyped_.start();
  const bool isSeen = IsShown() && sinceShown_.elapsed() >= kTypingPauseMs;
  if (isSeen && hasPaused && Text().takesAnyKey) answered_(Text().onEnter);
}

QRectF StatusPanel::Bounds(const OverlayPlace& place) const {
  return IsShown() ? QRectF(place.area) : QRectF();
}

void StatusPanel::Paint(QPainter& painter, const OverlayPlace& place) {
  if (!IsShown()) return;
  const PanelText& text = Text();
  const Colours& colours = place.Colours();
  const QRectF area = place.area;
  const qreal size = panel_look::TextSize(place.unit);
  const qreal padding = std::round(size * panel_look::kPanelPadding);
  std::vector<Block> blocks = BlocksOf(text, place.font, size, colours);
  const QSizeF content =
      StackBlocks(blocks, std::max(size * kLeastText, std::min(size * kWidest, area.width() * kWidestShare)));
  QRectF panel(0, 0, std::max(content.width(), size * kNarrowest) + 2 * padding,
               content.height() + 2 * padding);
  panel.moveTo(std::round(area.center().x() - panel.width() / 2),
               std::round(area.center().y() - panel.height() / 2));

  painter.save();
  painter.fillRect(area, text.tone == PanelTone::kCalm ? colours.calmScrim : colours.scrim);
  panel_look::PaintBox(painter, panel, size, colours.border, colours.fill);
  const QRectF mark(panel.left() + padding * 0.5, panel.top() + padding,
                    std::round(size * panel_look::kMarkWidth), blocks.front().place.height());
  painter.fillRect(mark, MarkOf(text.tone, colours));
  PaintBlocks(painter, blocks, panel.topLeft() + QPointF(padding, padding));
  if (text.tone == PanelTone::kBusy) {
    const Block& title = blocks.front();
    const qreal advance = QFontMetricsF(title.font).horizontalAdvance(title.text);
    PaintDots(
        painter,
        panel.topLeft() + QPointF(padding + advance + size * kDotsGap, padding + title.place.height() * 0.55),
        size, MarkOf(text.tone, colours), sinceShown_.elapsed());
  }
  painter.restore();
}

}  // namespace quillet
