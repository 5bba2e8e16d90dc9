// Runs each test in a pretended Mac of its own, and fails it when something of our code is left.
#include <gtest/gtest.h>

#include "leftovers.h"

namespace {

class Mac : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override { kelvane::doubles::begin(); }
  void OnTestEnd(const testing::TestInfo&) override {
    for (const std::string& each : kelvane::doubles::end()) ADD_FAILURE() << "left over: " << each;
  }
};

}  // namespace

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  testing::UnitTest::GetInstance()->listeners().Append(new Mac);
  return RUN_ALL_TESTS();
}
