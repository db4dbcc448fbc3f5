// The way of the keyboard through the window: gathers what decides about a key, and carries out what was
// decided with whoever it concerns. The view passes it its keys and what an input method has composed.
// User-interface thread.
#pragma once

#include <functional>
#include <optional>
#include <utility>

#include <QKeyEvent>
#include <QString>

#include "app/interaction/key_dispatch.h"
#include "app/interaction/name_keys.h"
#include "app/interaction/pointer/place_hover.h"
#include "app/interaction/pointer/selection_control.h"
#include "app/interaction/search_controller.h"
#include "app/interaction/target_finder.h"
#include "app/overlay/overlay_stack.h"
#include "app/page/article_view.h"
#include "app/page/page_composer.h"
#include "app/session/automations.h"
#include "app/session/connection.h"
#include "input/pre_translation.h"
#include "settings/settings.h"

namespace quillet {

class KeyInput {
 public:
  // All outlive the object.
  struct Parts {
    const Connection& connection;
    Automations& automations;
    const Settings& settings;
    const ScreenSnapshot& screen;
    const UnderstoodPage& page;  // what stands on it
    OverlayStack& overlays;
    PageComposer& composer;
    ArticleView& article;
    SelectionControl& selection;
    SearchController& search;
    const TargetFinder& targets;
    const PlaceHover& places;
    NameKeys& names;
    KeyDispatch& keys;
  };
  struct Handlers {
    std::function<void()> typing;              // a key goes further than to what the window shows
    std::function<void()> linesChanged;        // the picture shows other lines
    std::function<void(const QString&)> tell;  // in a line, what has been done
  };
  KeyInput(const Parts& parts, Handlers handlers) : parts_(parts), handlers_(std::move(handlers)) {}

  // It is no key of the menus'.
  bool IsOurs(const QKeyEvent& event) const { return Decide(event).route != KeyRoute::kToolkit; }
  // Returns true when the key was consumed.
  bool PreTranslateMessage(const QKeyEvent& event);
  // What an input method has composed is typed.
  void OnComposed(const QString& text);

 private:
  WindowState StateForKeys() const;
  KeyDecision Decide(const QKeyEvent& event) const;
  // What concerns the window alone. Nothing: it goes further.
  std::optional<bool> PerformInWindow(const KeyDecision& decision);
  bool SendOn(const KeyDecision& decision, const QKeyEvent& event);
  void Select(SelectStep step);
  void ChangeName(NameKey key, int colour);

  Parts parts_;
  Handlers handlers_;
};

}  // namespace quillet
