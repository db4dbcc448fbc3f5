#include "tools/screenshots/login_pictures.h"

#include <QLineEdit>

namespace quillet {
namespace {

constexpr QSize kUsual(1280, 720);
constexpr QSize kSmall(480, 288);

QLabel* Complaint(DemoRun& run) {
  LoginForm* const form = run.View().Login().Form();
  return form == nullptr ? nullptr : form->findChild<QLabel*>("complaint");
}

void Fill(DemoRun& run, const QString& account, const QString& password) {
  LoginForm* const form = run.View().Login().Form();
  form->findChild<QLineEdit*>("account")->setText(account);
  form->findChild<QLineEdit*>("password")->setText(password);
}

}  // namespace

void ShootLoginPictures(DemoRun& run) {
  run.Await("the login page", [&] { return run.View().Screen().cursorRow == 20; });
  if (!run.IsFine()) return;
  run.View().AskLogin();
  Fill(run, u"reader"_qs, u"quillet"_qs);
  run.Save("61-login-form");
  run.Resize(kSmall);
  run.Save("63-login-form-small");
  run.Resize(kUsual);
  Fill(run, u"reader"_qs, u"wrong"_qs);
  run.View().Login().Form()->findChild<QPushButton*>("logIn")->click();
  run.Await("the refusal", [&] { return Complaint(run) && !Complaint(run)->text().isEmpty(); });
  run.Save("62-login-refused");
  run.Resize(kSmall);
  run.Save("64-login-refused-small");
}

}  // namespace quillet
