// What the window says about giving money along the push lines. Pure.
#pragma once

#include "app/messages/panel_text.h"
#include "bbs/automation/money_run.h"

namespace quillet {

// Who got money and who did not.
PanelText DescribeMoneyEnd(const MoneyRunResult& result);

// Why nobody can be asked to give money now.
enum class NoMoneyReason {
  kNotConnected,
  kNoArticle,
  kBusy  // the client is at work for the user already
};
PanelText DescribeNoMoney(NoMoneyReason reason);

}  // namespace quillet
