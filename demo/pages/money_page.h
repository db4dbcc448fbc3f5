// Giving money to another user: whom, how much, and the confirmation. The client's thread.
#pragma once

#include <string>

#include "demo/page.h"
#include "demo/pages/line_field.h"

namespace quillet::demo {

class MoneyPage : public Page {
 public:
  explicit MoneyPage(PageHost& host);

  void Draw(Canvas& canvas) override;
  void OnKey(const Key& key) override;

 private:
  enum class Step { kReceiver, kAmount, kConfirm };
  void OnEnter();
  void Give();
  long Amount() const;

  PageHost& host_;
  Step step_ = Step::kReceiver;
  LineField receiver_;
  LineField amount_;
  LineField answer_;
};

}  // namespace quillet::demo
