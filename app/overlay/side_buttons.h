// The buttons in the margin beside the page: the client's side lists and its options, and below them what a
// hand wants on the page that is shown. Pictures only, quieter than the page; they lie over nothing that the
// picture shows and are absent where the margin has no room for them. The view says where and when; a click
// gives a command and leaves the keyboard where it is. User-interface thread.
#pragma once

#include <optional>
#include <vector>

#include <QWidget>

#include "app/overlay/side_room.h"
#include "input/commands/commands.h"
#include "render/paint/embedded_images.h"

namespace quillet {

class QuietButton;

class SideButtons : public QWidget {
  Q_OBJECT

 public:
  // `images` outlives the object. The keyboard is given back to `parent`.
  SideButtons(EmbeddedImages& images, QWidget& parent);

  void Place(const SideRoom& room);
  // Another page may be shown, and other commands may act.
  void Follow(const CommandState& state);
  // Brings the keyboard to the page's first button, or back. Up, Down and Tab go on from there, Enter gives
  // the command, Esc goes back; any other key is the terminal's.
  void SwitchKeyboard();

  static constexpr std::uint32_t kQuiet = 0x868686;  // 0xRRGGBB, of the pictures

 signals:
  void Clicked(quillet::Command command);

 private:
  friend class QuietButton;

  struct Measures {
    int side = 0;
    int left = 0;  // of the parent
    int top = 0;
  };
  std::optional<Measures> Measure() const;
  void Arrange();
  // The picture of the button would lie over a mark.
  bool IsTaken(const QuietButton& button) const;
  // From the button that has the keyboard; positive down.
  void Step(int direction);
  bool HasKeyboard() const;
  void GiveKeyboardBack();

  SideRoom room_;
  CommandState state_;
  std::vector<QuietButton*> buttons_;  // from the top down: those of any page, then those of the page
};

}  // namespace quillet
