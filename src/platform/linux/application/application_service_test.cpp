#include "platform/linux/application/application_service.h"

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/glib/bus.h"
#include "platform/linux/glib/private_bus_test.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ApplicationServiceTest : public ::testing::Test {
 protected:
  std::unique_ptr<ApplicationService> makeService(BusConnection* connection) {
    return std::make_unique<ApplicationService>(
        connection, ApplicationService::Handlers{
                        [this] { seen.push_back("activate"); },
                        [this](const std::string& action) { seen.push_back(action); }});
  }
  // The error of a call by another process; empty for none.
  std::string call(const char* method, const char* arguments) {
    std::string error = "no answer";
    bool isAnswered = false;
    calls.call(
        other.get(),
        {ApplicationService::kName, ApplicationService::kPath, "org.freedesktop.Application"},
        method, g_variant_new_parsed(arguments), "()", [&](const BusReply& reply) {
          isAnswered = true;
          error = reply.error;
        });
    runUntil([&] { return isAnswered; });
    return error;
  }

  PrivateBus bus;
  BusPtr own = bus.connect();
  BusPtr other = bus.connect();
  BusCalls calls;
  std::vector<std::string> seen;
};

TEST_F(ApplicationServiceTest, OneOwnerAtATime) {
  using Claim = ApplicationService::Claim;
  auto first = makeService(own.get());
  EXPECT_EQ(first->claim(), Claim::granted);
  const auto second = makeService(other.get());
  EXPECT_EQ(second->claim(), Claim::taken);
  first.reset();
  EXPECT_EQ(second->claim(), Claim::granted);
  other->close();
  EXPECT_EQ(makeService(other.get())->claim(), Claim::failed);
}

TEST_F(ApplicationServiceTest, AnswersDesktopsAndBelievesNothingElse) {
  const auto service = makeService(own.get());
  ASSERT_EQ(service->claim(), ApplicationService::Claim::granted);
  EXPECT_EQ(call("Activate", "({'activation-token': <'abc'>},)"), "");
  EXPECT_EQ(call("ActivateAction", "('preferences', @av [], @a{sv} {})"), "");
  EXPECT_EQ(call("ActivateAction", "('quit', [<1>, <'x'>], {'desktop-startup-id': <7>})"), "");
  EXPECT_THAT(std::exchange(seen, {}), ElementsAre("activate", "preferences", "quit"));

  EXPECT_EQ(call("Open", "(['file:///etc/passwd'], @a{sv} {})"), "");
  EXPECT_THAT(call("ActivateAction", "('erase', @av [], @a{sv} {})"),
              ::testing::HasSubstr("No action erase"));
  EXPECT_NE(call("Activate", "('no dictionary',)"), "");
  EXPECT_THAT(seen, IsEmpty());
}

}  // namespace
}  // namespace kelvane
