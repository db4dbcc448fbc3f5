// The look of what lies over the terminal: the status panel, the login form, the toast, the badge of an
// automation. Quieter than the BBS's own colours; every text keeps 4.5:1 on the panel. In disguise they are
// as black and white as the text editor that the window pretends to be. User-interface thread.
#pragma once

#include <algorithm>

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QRectF>

namespace quillet::panel_look {

inline constexpr QColor kScrim(0, 0, 0, 150);
inline constexpr QColor kCalmScrim(0, 0, 0, 60);
inline constexpr QColor kFill(0x1B, 0x1F, 0x26);
inline constexpr QColor kBorder(0x3C, 0x44, 0x50);
inline constexpr QColor kTitle(0xF2, 0xF4, 0xF7);
inline constexpr QColor kLine(0xC6, 0xCD, 0xD8);
inline constexpr QColor kHint(0x9D, 0xA8, 0xB8);

// A badge or sign: its letters, of the panel's; and in these letters how high it is, how far its text stands
// from its edges, and how far it stands itself from the corner of the terminal.
inline constexpr double kSignTextSize = 0.9;
inline constexpr double kSignHeight = 1.9;
inline constexpr double kSignPadding = 0.9;
inline constexpr double kFromCorner = 0.6;

// A panel: its title, of its letters; and in these letters the room around what it says, and how wide the
// mark at the title's side is.
inline constexpr double kTitleSize = 1.3;
inline constexpr double kPanelPadding = 1.5;
inline constexpr double kMarkWidth = 0.18;

inline constexpr QColor kCalm(0x7F, 0x8C, 0x9F);
inline constexpr QColor kBusy(0x5A, 0xB0, 0xD6);
inline constexpr QColor kEnded(0xD9, 0xA4, 0x41);
inline constexpr QColor kProblem(0xE0, 0x7A, 0x6A);

struct Colours {
  QColor scrim = kScrim;          // over the terminal, around the panel
  QColor calmScrim = kCalmScrim;  // where nothing is wrong
  QColor fill = kFill;
  QColor border = kBorder;
  QColor title = kTitle;
  QColor line = kLine;
  QColor hint = kHint;
  QColor calm = kCalm;  // the mark at the title's side, by tone
  QColor busy = kBusy;
  QColor ended = kEnded;
  QColor problem = kProblem;
};

inline constexpr QColor kInk(0x00, 0x00, 0x00);
inline constexpr QColor kGrey(0x60, 0x60, 0x60);
inline constexpr QColor kPencil(0x90, 0x90, 0x90);
inline constexpr QColor kPaper(0xFF, 0xFF, 0xFF);
inline constexpr QColor kNoScrim(0, 0, 0, 0);

inline constexpr Colours kUsualColours{};
inline constexpr Colours kDisguiseColours{.scrim = kNoScrim,
                                          .calmScrim = kNoScrim,
                                          .fill = kPaper,
                                          .border = kPencil,
                                          .title = kInk,
                                          .line = kInk,
                                          .hint = kGrey,
                                          .calm = kPencil,
                                          .busy = kGrey,
                                          .ended = kGrey,
                                          .problem = kInk};

// `work`: the window is in disguise.
constexpr const Colours& ColoursFor(bool work) {
  return work ? kDisguiseColours : kUsualColours;
}

// Letters' size over text rows of the height `unit`.
inline double TextSize(double unit) {
  return std::clamp(unit * 0.56, 13.0, 40.0);
}

// The same letters in another size, in widget units; at least 1.
QFont Sized(QFont font, double pixels);

// The ground of what lies over the terminal: a box with round corners, its edge one unit wide and within it.
// `letter` is the size of its letters. Leaves the painter's pen and brush set.
void PaintBox(QPainter& painter, const QRectF& box, double letter, const QColor& edge, const QColor& fill);

}  // namespace quillet::panel_look
