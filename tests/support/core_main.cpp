// The main of test programs that need the toolkit's event loop and no window.
#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const QCoreApplication toolkit(argc, argv);
  return RUN_ALL_TESTS();
}
