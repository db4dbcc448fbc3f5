// The toolkit's own style, whichever the desktop has chosen, less what it does in vain while the first window
// is made. User-interface thread.
#pragma once

#include <QProxyStyle>

namespace quillet {

// A menu bar asks for the picture of a button that it shows only where it is too narrow; to load it every
// plug-in for pictures is opened. Here it is loaded when it is drawn.
class ToolkitStyle : public QProxyStyle {
 public:
  QIcon standardIcon(StandardPixmap picture, const QStyleOption* option,
                     const QWidget* widget) const override;
};

}  // namespace quillet
