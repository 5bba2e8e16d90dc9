#include "platform/linux/power/linux_power_sources.h"

#include <fstream>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/linux/glib/glib_run_loop.h"
#include "platform/linux/power/fake_upower_test.h"
#include "platform/linux/power/supply_tree_test.h"

namespace kelvane {
namespace {

class LinuxPowerSourcesTest : public testing::Test {
 protected:
  LinuxPowerSourcesTest() {
    setenv("DBUS_SYSTEM_BUS_ADDRESS", bus_.address().c_str(), 1);
    tree_.setLaptop();
  }

  void startUPower() {
    upower_ = std::make_unique<FakeUPower>(bus_);
    upower_->set("DisplayDevice",
                 "{'Type': <uint32 2>, 'State': <uint32 2>, 'Percentage': <57.0>,"
                 " 'TimeToEmpty': <int64 7200>}");
    upower_->set("line_power_AC", "{'Type': <uint32 1>, 'Online': <false>}");
  }
  void start(bool useUPower) {
    sources_ = std::make_unique<LinuxPowerSources>(loop_, PowerOptions{tree_.path(), useUPower});
    notifications_ = sources_->makeNotificationSource([this] { ++count_; });
    loop_.addSource(notifications_, RunLoopMode::standard);
  }
  bool settles() {
    bool isSettled = false;
    sources_->whenSettled([&] { isSettled = true; });
    return runUntil([&] { return isSettled; });
  }
  std::int64_t level() {
    return sources_->descriptions().at(0).at("Current Capacity").integer().value();
  }
  bool isNotified(int count) {
    return runUntil([&] { return count_ >= count; });
  }

  // One for all, as the process's connection to its system bus may outlive a test.
  static const PrivateBus& sharedBus() {
    static const PrivateBus bus;
    return bus;
  }

  const PrivateBus& bus_ = sharedBus();
  SupplyTree tree_;
  GlibRunLoop loop_;
  std::unique_ptr<FakeUPower> upower_;
  std::unique_ptr<LinuxPowerSources> sources_;
  std::shared_ptr<RunLoopSource> notifications_;
  int count_ = 0;
};

TEST_F(LinuxPowerSourcesTest, TheKernelServesUntilUPowerHasAnswered) {
  startUPower();
  start(true);
  EXPECT_EQ(level(), 57);
  EXPECT_EQ(sources_->timeRemainingEstimate(), kTimeRemainingUnknown);
  ASSERT_TRUE(settles());
  EXPECT_EQ(count_, 1);  // the estimate became known
  EXPECT_EQ(sources_->timeRemainingEstimate(), 7200);
}

// The adapter is the kernel's word, for which UPower need not have said anything.
TEST_F(LinuxPowerSourcesTest, TheEstimateFollowsTheAdapterWhileUPowerServes) {
  startUPower();
  start(true);
  ASSERT_TRUE(settles());
  for (const bool isConnected : {true, false, true}) {
    tree_.set("AC", {{"online", isConnected ? "1" : "0"}});
    EXPECT_EQ(sources_->timeRemainingEstimate(), isConnected ? kTimeRemainingUnlimited : 7200);
    EXPECT_EQ(level(), 57);
  }
}

TEST_F(LinuxPowerSourcesTest, OneTurnIsOneNotification) {
  startUPower();
  start(true);
  ASSERT_TRUE(settles());
  const int before = count_;
  // A plug, as UPower tells it.
  upower_->change("line_power_AC", "{'Online': <true>}");
  upower_->change("DisplayDevice", "{'State': <uint32 1>, 'TimeToEmpty': <int64 0>}");
  upower_->change("DisplayDevice", "{'Percentage': <58.0>}");
  ASSERT_TRUE(runUntil([&] { return level() == 58; }));
  ASSERT_TRUE(isNotified(before + 1));
  EXPECT_LE(count_, before + 2);  // 1, or 2 when the bus delivers in two portions
}

TEST_F(LinuxPowerSourcesTest, WhileUPowerIsGoneTheKernelServes) {
  startUPower();
  start(true);
  ASSERT_TRUE(settles());
  int before = count_;
  upower_.reset();
  ASSERT_TRUE(isNotified(before + 1));
  EXPECT_EQ(sources_->upower(), nullptr);
  EXPECT_EQ(sources_->timeRemainingEstimate(), kTimeRemainingUnknown);
  before = count_;
  tree_.set("BAT0", {{"capacity", "31"}});
  ASSERT_TRUE(isNotified(before + 1));
  EXPECT_EQ(level(), 31);
  before = count_;
  startUPower();
  ASSERT_TRUE(isNotified(before + 1));
  EXPECT_EQ(level(), 57);
}

TEST_F(LinuxPowerSourcesTest, WithoutUPowerChangesOfTheTreeAreTold) {
  startUPower();
  start(false);
  ASSERT_TRUE(settles());
  EXPECT_EQ(sources_->upower(), nullptr);
  EXPECT_EQ(level(), 57);
  EXPECT_EQ(sources_->warningLevel(), BatteryWarningLevel::none);

  tree_.set("BAT0", {{"capacity", "19"}});
  ASSERT_TRUE(isNotified(1));
  EXPECT_EQ(sources_->warningLevel(), BatteryWarningLevel::early);
  tree_.set("BAT0", {{"capacity", "19"}, {"manufacturer", "x"}});  // nothing that can be read
  while (g_main_context_iteration(nullptr, FALSE)) continue;       // inotify has told already
  EXPECT_EQ(count_, 1);
  tree_.set("AC", {{"online", "1"}});
  ASSERT_TRUE(isNotified(2));
  EXPECT_EQ(sources_->timeRemainingEstimate(), kTimeRemainingUnlimited);
  EXPECT_EQ(count_, 2);
  tree_.set("BAT1", {{"type", "Battery"}, {"capacity", "81"}});
  ASSERT_TRUE(runUntil([&] { return level() == 50; }));
}

TEST_F(LinuxPowerSourcesTest, WithoutUPowerWakingUpIsHeardAllTheSame) {
  start(false);
  FakeLogin login(bus_);
  std::ofstream open(tree_.file("BAT0", "capacity"));
  open << "12\n" << std::flush;  // inotify tells only of what was written and closed
  // Again and again, as nobody tells when it listens.
  const guint nights = g_timeout_add(
      5,
      [](gpointer told) -> gboolean {
        static_cast<FakeLogin*>(told)->prepareForSleep(g_variant_new("(b)", FALSE));
        return G_SOURCE_CONTINUE;
      },
      &login);
  EXPECT_TRUE(isNotified(1));
  g_source_remove(nights);
  EXPECT_EQ(level(), 12);
}

TEST_F(LinuxPowerSourcesTest, WithoutASystemBusTheKernelServes) {
  setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
  start(true);
  ASSERT_TRUE(settles());
  EXPECT_EQ(level(), 57);
  tree_.set("BAT0", {{"capacity", "56"}});
  EXPECT_TRUE(isNotified(1));
}

TEST_F(LinuxPowerSourcesTest, CanGoWhileItIsAsking) {
  startUPower();
  start(true);
  sources_.reset();
  start(true);
  ASSERT_TRUE(runUntil([&] { return upower_->getAllCount("DisplayDevice") > 0; }));
  sources_.reset();
  bool isIdle = false;
  loop_.async([&] { isIdle = true; });
  EXPECT_TRUE(runUntil([&] { return isIdle; }));
  EXPECT_EQ(count_, 0);
}

}  // namespace
}  // namespace kelvane
