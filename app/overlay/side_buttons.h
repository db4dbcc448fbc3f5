// The buttons in the margin of the screen: the client's side lists and its options, for the mouse. Hidden by
// "HideTopLeftIcons", in disguise, and where the margin has no room for them. User-interface thread.
#pragma once

#include <array>

#include <QKeySequence>
#include <QWidget>

#include "render/paint/embedded_images.h"

namespace quillet {

enum class SideButton { kHotList, kTrackedList, kBookmarkList, kOptions };

class QuietButton;

class SideButtons : public QWidget {
  Q_OBJECT

 public:
  // `images` outlives the object.
  SideButtons(EmbeddedImages& images, QWidget* parent);

  // The key that does the same, for the tool tip; none at first.
  void SetShortcut(SideButton button, const QKeySequence& key);

  // The left margin in widget units, and whether the user wants buttons there.
  void Place(const QRect& margin, bool wanted);

 signals:
  void Clicked(quillet::SideButton button);

 private:
  std::array<QuietButton*, 4> buttons_;  // from the top down, in the order of SideButton
};

}  // namespace quillet
