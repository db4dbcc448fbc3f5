// Fonts need an application object: one for the whole test program, without a display.
#pragma once

#include <QGuiApplication>

#include "tests/support/tables.h"

namespace quillet {

class WithApplication : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "render_paint_tests";
    static char* argv[] = {name, nullptr};
    // Never ended: at the program's exit, what it stands on may be gone before it.
    static const auto* const application = new QGuiApplication(argc, argv);
    ASSERT_NE(application, nullptr);
    LoadTestTables();
  }
};

}  // namespace quillet
