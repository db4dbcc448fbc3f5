#include "platform/registry.h"

#include <gtest/gtest.h>

#include "tests/platform/registry_contract.h"

namespace quillet {
namespace {

TEST(MemoryRegistryTest, KeepsTheContract) {
  MemoryRegistry registry;
  ExpectRegistryContract(registry, u"SOFTWARE\\Quillet");
  ExpectContractValuesRemain(registry, u"SOFTWARE\\Quillet");
  EXPECT_FALSE(registry.Problem());
}

}  // namespace
}  // namespace quillet
