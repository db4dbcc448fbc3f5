// Where the main window is when the program starts, and what of it is kept when it ends.
#include <QGuiApplication>
#include <QScreen>

#include "app/window/main_frame.h"
#include "app/window/window_place.h"

namespace quillet {
namespace {

// A registry value: it is this machine's and its screens', whichever folder the settings are in.
constexpr std::u16string_view kWindowName = u"Window";

QList<QRect> UsableAreas() {
  QList<QRect> areas;
  for (const QScreen* const screen : QGuiApplication::screens())
    areas << screen->availableGeometry();
  return areas;
}

}  // namespace

void CMainFrame::RestorePlace() {
  const auto text = doc_.UserRegistry().Text(kRegistryPath, kWindowName);
  const auto place = text ? ReadWindowPlace(*text) : std::nullopt;
  if (!place) return;
  ApplyLayout(place->layout);
  const bool narrow = layout_ == LayoutMode::kNarrow;
  setGeometry(OnScreens(place->window, UsableAreas(), minimumSize()));
  (narrow ? usualSize_ : smallSize_) = place->otherSize.boundedTo(LargestView());
  if (place->maximized) setWindowState(windowState() | Qt::WindowMaximized);
  if (place->fullScreen) ToggleFullScreen();
}

void CMainFrame::RememberPlace() {
  const WindowPlace place{.window = normalGeometry(),
                          .layout = layout_,
                          .otherSize = layout_ == LayoutMode::kNarrow ? usualSize_ : smallSize_,
                          .maximized = isFullScreen() ? wasMaximized_ : isMaximized(),
                          .fullScreen = isFullScreen()};
  doc_.UserRegistry().SetText(kRegistryPath, kWindowName, ToText(place).toStdU16String());
}

}  // namespace quillet
