#include "platform/machine_serial.h"

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

namespace quillet {
namespace {

TEST(MachineSerialTest, IsTheSameForCallersOfEveryKindOfApartment) {
  const std::string serial = MachineSerial();
  for (const DWORD kind : {COINIT_APARTMENTTHREADED, COINIT_MULTITHREADED}) {
    ASSERT_EQ(CoInitializeEx(nullptr, kind), S_OK);
    EXPECT_EQ(MachineSerial(), serial);
    CoUninitialize();
  }
  RecordProperty("serial", serial);
}

}  // namespace
}  // namespace quillet
