// The application object: start-up, and the things that live as long as the program. User-interface thread.
#pragma once

#include <memory>
#include <optional>

#include <QApplication>

#include "app/document/quill_doc.h"
#include "app/document/user_places.h"
#include "app/window/demo_host.h"
#include "app/window/link_intake.h"
#include "app/window/main_frame.h"
#include "app/window/start_options.h"
#include "app/window/tour/tour.h"
#include "core/transport/ssh_transport.h"
#include "platform/opener.h"

namespace quillet {

class CQuillApp {
 public:
  // `tour` says how a tour is taken, should the options ask for one; its folder is theirs.
  CQuillApp(QApplication& toolkit, StartOptions options, TourSettings tour = {});
  ~CQuillApp();

  // Shows the window, does what the options ask for, and returns the program's exit code when it ends.
  int Run();

 private:
  // The system's entries, libraries, tables, endpoints, document, window. What is missing is told on the
  // window.
  void InitInstance();
  // The first thing that the window does once it is up.
  void Start();
  // Logs in there unless `login` is null.
  void OpenDemo(const LoginOrder& login, TransportKind way);
  void OpenReplay();
  void RunTour();
  // A tour is shown to nobody and leaves no trace: links are none of its business.
  bool IsTour() const { return !options_.tourFolder.isEmpty(); }
  void TakeLinks();
  void OnNotOpened(const std::u16string& address);

  std::optional<SshLibrary> ssh_;  // ends after everything that may be connected
  QApplication& toolkit_;
  StartOptions options_;
  TourSettings tour_;
  std::unique_ptr<DemoHost> demo_;
  Registry& SystemRegistry() { return places_.ofSystem ? *places_.ofSystem : *places_.registry; }

  UserPlaces places_;
  std::unique_ptr<Signaller> signaller_;
  SystemOpener opener_;
  std::unique_ptr<CQuillDoc> doc_;
  std::unique_ptr<CMainFrame> frame_;
  std::unique_ptr<LinkIntake> links_;
};

// What main does. `argc` and `argv` as there.
int RunQuillet(int argc, char** argv);

}  // namespace quillet
