// The first page: asks for an id and a password, and whether other logins of the same user shall go. Then
// leads to what awaits this user before the main menu. The client's thread.
#pragma once

#include <string>
#include <vector>

#include "demo/page.h"
#include "demo/pages/line_field.h"

namespace quillet::demo {

class LoginPage : public Page {
 public:
  explicit LoginPage(PageHost& host);

  void Draw(Canvas& canvas) override;
  void OnKey(const Key& key) override;

 private:
  enum class Step { kId, kPassword, kOtherLogins };
  void OnId();
  void OnPassword();
  void OnOtherLogins();
  void AskId(std::string message);
  void Refuse(std::string message);
  void LogIn();

  PageHost& host_;
  std::vector<std::string> banner_;
  Step step_ = Step::kId;
  LineField id_;
  LineField password_;
  LineField answer_;
  std::string message_;  // Big5, on the row of the password prompt
  int failures_ = 0;
  User user_;
};

}  // namespace quillet::demo
