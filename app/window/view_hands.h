// The user's hands at the view: all that takes his keys, his mouse and the clipboard, and the commands that
// they, menus and buttons give, wired to one another and to what they act upon. The view owns one and passes
// its events on. User-interface thread.
#pragma once

#include <functional>
#include <optional>

#include <QObject>

#include "app/dialogs/login_controller.h"
#include "app/dialogs/money_controller.h"
#include "app/dialogs/push_controller.h"
#include "app/document/quill_doc.h"
#include "app/interaction/article_commands.h"
#include "app/interaction/clipboard/clipboard_controller.h"
#include "app/interaction/command_runner.h"
#include "app/interaction/edit_commands.h"
#include "app/interaction/keeping/article_printer.h"
#include "app/interaction/keeping/article_saver.h"
#include "app/interaction/keeping/picture_keeper.h"
#include "app/interaction/keeping/session_log_control.h"
#include "app/interaction/key_dispatch.h"
#include "app/interaction/key_input.h"
#include "app/interaction/name_keys.h"
#include "app/interaction/pointer/link_hover.h"
#include "app/interaction/pointer/place_hover.h"
#include "app/interaction/pointer/pointer_control.h"
#include "app/interaction/pointer/selection_control.h"
#include "app/interaction/search_controller.h"
#include "app/interaction/target_finder.h"
#include "app/interaction/wanted_article.h"
#include "app/interaction/web_controller.h"
#include "app/overlay/overlay_stack.h"
#include "app/overlay/screen_picture.h"
#include "app/overlay/side_buttons.h"
#include "app/overlay/toast.h"
#include "app/page/shown_text.h"
#include "app/side_list/side_list_view.h"
#include "app/viewer/picture_viewer.h"

namespace quillet {

class ViewHands : public QObject {
  Q_OBJECT

 public:
  // All outlive the object.
  struct Parts {
    CQuillDoc& doc;
    QWidget& view;
    const FrameSurface& surface;
    PageComposer& composer;
    ArticleView& article;
    ArticlePictures& pictures;
    ScreenPicture& screenPicture;
    PictureStore& store;
    PictureViewer& viewer;
    OverlayStack& overlays;
    SideListView& sideList;
    SideButtons& sideButtons;
    Toast& toast;
    LoginController& login;
    const ScreenSnapshot& screen;
    const UnderstoodPage& page;  // what stands on it
    const Page& picture;         // that was composed last
    PlaceLookup places;
  };
  struct Handlers {
    std::function<void()> typing;          // a key goes further than to what the window shows
    std::function<void()> pictureChanged;  // something is laid over it otherwise
    std::function<void()> linesChanged;    // it shows other lines
    std::function<void(const PanelText&)> notice;
    std::function<void()> noSite;  // something was typed that there is no site for
  };
  ViewHands(const Parts& parts, Handlers handlers);

  // Every command that the menus, keys and buttons give; the window adds its own.
  CommandRunner& Commands() { return runner_; }
  // For the menus' words.
  CommandWords WordsForCommands(const CommandTarget& target) const;

  // ---- What the view passes on

  KeyDispatch& Keys() { return keys_; }
  KeyInput& Keyboard() { return keyInput_; }
  PointerControl& Pointer() { return pointer_; }
  // The view has taken a screen over, and shows it.
  void OnScreen();
  // Other lines are shown than before, or the same ones elsewhere or otherwise.
  void OnOtherLines();
  // Something lies over the terminal.
  void OnCovered();
  // In the viewer: its menu, at a place of the screen, and commands by its keys.
  void ShowMenuOfViewer(const QPoint& at);
  void PerformInViewer(Command command);
  void BrowsePicture(const QString& link);
  // Lays what the hands have marked over the page.
  void Decorate(Page& page);

  // ---- What the hands hold

  // A field of theirs has the keyboard.
  bool IsAsking() const { return search_.IsAsking(); }
  bool HasDraft() const { return push_.HasDraft(); }
  const SelectionControl& Selected() const { return selection_; }
  SearchController& Search() { return search_; }
  const SearchController& Search() const { return search_; }
  LinkHover& Links() { return links_; }
  const LinkHover& Links() const { return links_; }
  PlaceHover& Places() { return places_; }
  const PlaceHover& Places() const { return places_; }
  WebController& Web() { return web_; }
  WantedArticle& Wanted() { return wanted_; }
  NameKeys& Names() { return nameKeys_; }
  const TargetFinder& Targets() const { return targets_; }
  const MoneyController& Money() const { return money_; }
  const PushController& Push() const { return push_; }
  const SessionLogControl& Log() const { return log_; }

 private:
  KeyDispatch::Handlers KeyHandlers();
  PointerControl::Handlers PointerHandlers();
  void ConnectAll();
  void OnUserTypes();
  void OnArticleWaits(const ArticleReference& article, ArticleWaitsFor what);
  void Tell(const QString& words);
  void TellOfPicture(const PanelText& notice);

  void OfferCommands();
  void OfferPageCommands();
  void OfferPictureCommands();
  void TogglePicture(const PictureTarget& picture);
  bool HasFileOf(const QString& link) const;
  CommandTarget TargetOf(const ArticlePictures::Place& place) const;
  CommandTarget TargetInViewer() const;
  void AddPictureOfLink(int row, CommandTarget& target) const;
  void AddStateTo(CommandState& state) const;
  void Refuse(Refusal refusal);
  void ShowMenuOfPlace(const QPoint& at, std::optional<CellPosition> cell,
                       const std::optional<ArticlePictures::Place>& picture);
  // All links in sight, to choose one of for kOpenLink or kCopyLink.
  void ShowLinks(Command use);
  void TogglePlaces();
  void Reveal();

  const Parts parts_;
  const Handlers handlers_;
  Connection& connection_;
  Automations& automations_;
  UserSettings& settings_;
  KeyDispatch keys_;
  CommandRunner runner_;
  ArticleCommands articleCommands_;
  ShownText shown_;
  SelectionControl selection_;
  SearchController search_;
  LinkHover links_;
  PlaceHover places_;
  ClipboardController clipboard_;
  WebController web_;
  WantedArticle wanted_;
  EditCommands edit_;
  ArticleSaver saver_;
  ArticlePrinter printer_;
  SessionLogControl log_;
  PictureKeeper pictureKeeper_;
  NameKeys nameKeys_;
  MoneyController money_;
  PushController push_;
  PointerControl pointer_;
  TargetFinder targets_;
  KeyInput keyInput_;
};

}  // namespace quillet
