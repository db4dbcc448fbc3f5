// The main window: menus, title, size, full screen, around the one view. User-interface thread.
#pragma once

#include <functional>
#include <memory>

#include <QMainWindow>

#include "app/interaction/command_menus.h"
#include "app/window/link_handler_choice.h"
#include "app/window/quill_view.h"
#include "app/window/window_icon.h"
#include "app/window/work_menus.h"
#include "app/window/zoom_plan.h"

namespace quillet {

class CMainFrame : public QMainWindow {
  Q_OBJECT

 public:
  // `doc` outlives the frame.
  explicit CMainFrame(CQuillDoc& doc, QWidget* parent = nullptr);
  ~CMainFrame() override;

  CQuillView& View() { return *view_; }
  // Makes the view this large, however large the screen is.
  void SizeForView(QSize view);
  // Asks for an address and connects, or asks for the demo.
  void AskAddress();
  // These three give up a login only after a question.
  void OpenDemo();
  void Disconnect();
  void Reconnect();
  void ShowOptions();
  // Another program asks for an article: the window comes forward and opens it as soon as it can.
  void ShowArticle(const ArticleReference& article);
  // Asks for an article and goes there.
  void JumpToArticle();
  // Asks for an id and lets the user note it in the black and white lists.
  void AskForName();
  // The same for an id that is known.
  void AddToNames(const QString& id);
  // Asks for an id and opens its user's page on the web.
  void OpenUserPage();

 signals:
  // With a login, or null.
  void DemoRequested(const quillet::LoginOrder& login, quillet::TransportKind way);

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QSize LargestView() const;
  // As large as the first start makes it.
  QSize UsualView() const;
  int MenuHeight() const;
  void MakeMenus();
  void OfferCommands();
  void AddStateTo(CommandState& state) const;
  void ApplyLayout(LayoutMode mode);
  void ApplyZoom(Zoom wish);
  // Where the window was when the program ended, and how, if that is known.
  void RestorePlace();
  void RememberPlace();
  // In the title and on the icon.
  void ShowState();
  struct IconLook {
    bool work = false;
    IconBadge badge = IconBadge::kNone;

    bool operator==(const IconLook&) const = default;
    bool TellsNews() const { return !work && badge == IconBadge::kNews; }
  };
  void ShowIcon(IconLook look);
  void ToggleFullScreen();
  void OnSettingsChanged();
  void ApplyTopmost();
  void ToggleWorkMode();
  void ShowKeys();
  void ShowAbout();
  void TellLinkChoice(LinkChoice choice);

  CQuillDoc& doc_;
  Connection& connection_;
  UserSettings& settings_;
  CQuillView* view_;
  LinkHandlerChoice linkHandler_;
  CommandMenus* menus_ = nullptr;
  std::unique_ptr<WorkMenus> workMenus_;
  LayoutMode layout_ = LayoutMode::kOrdinary;
  QSize usualSize_;            // before the small window was chosen
  QSize smallSize_;            // before the small window was left
  bool wasMaximized_ = false;  // before full screen
  IconLook icon_;              // the application's own at first
};

}  // namespace quillet
