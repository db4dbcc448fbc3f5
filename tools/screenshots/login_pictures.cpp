#include "tools/screenshots/login_pictures.h"

#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>

#include "app/main_frame.h"
#include "app/resources.h"
#include "app/tour/tour.h"
#include "app/user_places.h"
#include "app/window_signaller.h"
#include "demo/demo_server.h"

namespace quillet {
namespace {

constexpr int kPatienceMs = 30000;

class LoginPictures {
 public:
  LoginPictures(const QString& folder, const UserPlaces& places, const Endpoints& endpoints)
      : folder_(folder),
        doc_({.endpoints = endpoints,
              .signaller = signaller_,
              .registry = *places.registry,
              .folders = places.folders}),
        frame_(doc_) {}

  bool Take(DemoServer& demo) {
    frame_.SizeForView({1280, 720});
    frame_.show();
    doc_.Open({.address = QString::fromStdString(demo.Address()), .name = u"示範站台"_qs, .isBbs = true});
    if (!HandleEventsUntil([&] { return View().Screen().cursorRow == 20; }, kPatienceMs)) return false;
    View().AskLogin();
    Fill(u"reader"_qs, u"quillet"_qs);
    bool saved = Save("61-login-form");
    frame_.SizeForView({480, 288});
    saved = Save("63-login-form-small") && saved;
    frame_.SizeForView({1280, 720});
    Fill(u"reader"_qs, u"wrong"_qs);
    View().Login().Form()->findChild<QPushButton*>("logIn")->click();
    const auto isBack = [&] { return Complaint() && !Complaint()->text().isEmpty(); };
    if (!HandleEventsUntil(isBack, kPatienceMs)) return false;
    saved = Save("62-login-refused") && saved;
    frame_.SizeForView({480, 288});
    return Save("64-login-refused-small") && saved;
  }

 private:
  CQuillView& View() { return frame_.View(); }
  QLabel* Complaint() {
    LoginForm* const form = View().Login().Form();
    return form == nullptr ? nullptr : form->findChild<QLabel*>("complaint");
  }
  void Fill(const QString& account, const QString& password) {
    LoginForm* const form = View().Login().Form();
    form->findChild<QLineEdit*>("account")->setText(account);
    form->findChild<QLineEdit*>("password")->setText(password);
  }
  bool Save(const QString& name) {
    QCoreApplication::processEvents();
    return View().grab().save(QDir(folder_).filePath(name + ".png"));
  }

  const QString folder_;
  WindowSignaller signaller_;
  CQuillDoc doc_;
  CMainFrame frame_;
};

}  // namespace

bool SaveLoginPictures(const QString& folder) {
  const Resources resources = LoadResources();
  DemoOptions options;
  options.contentFolder = DefaultDemoContent();
  options.TakeNames(resources.endpoints);
  DemoServer demo(std::move(options));
  if (!demo.Error().empty()) return false;
  const UserPlaces places = PlacesForOneRun();
  return LoginPictures(folder, places, resources.endpoints).Take(demo);
}

}  // namespace quillet
