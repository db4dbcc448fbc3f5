// The program's icon, drawn at every size it is asked for in, and not before, so that no picture file has to
// come along. User-interface thread.
#pragma once

#include <cstdint>

#include <QColor>
#include <QIcon>

namespace quillet {

// What the icon in the task bar tells of the connection.
enum class IconBadge : std::uint8_t {
  kNone,
  kNews,         // a dot: something has come that the user does not know of
  kNotConnected  // the icon is pale
};

// Of the dot that tells of news.
inline constexpr QColor kNewsColour(0xFF, 0x9F, 0x1C);

QIcon MakeWindowIcon(IconBadge badge = IconBadge::kNone);

// A sheet of text, for when the window is to look like a text editor's.
QIcon MakeDisguiseIcon();

}  // namespace quillet
