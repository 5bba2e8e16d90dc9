#include "platform/linux/power/upower_mirror.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/linux/power/fake_upower_test.h"
#include "platform/linux/power/upower_properties.h"

namespace kelvane {
namespace {

using Status = UPowerMirror::Status;

constexpr const char* kLine =
    "{'Type': <uint32 1>, 'PowerSupply': <true>, 'Online': <false>, 'Percentage': <0.0>}";
constexpr const char* kBattery =
    "{'Type': <uint32 2>, 'PowerSupply': <true>, 'State': <uint32 2>, 'Percentage': <57.0>,"
    " 'EnergyFull': <50.0>, 'UpdateTime': <uint64 1>}";
constexpr const char* kDisplay =
    "{'Type': <uint32 2>, 'PowerSupply': <true>, 'State': <uint32 2>, 'Percentage': <57.0>,"
    " 'TimeToEmpty': <int64 7200>, 'WarningLevel': <uint32 1>}";
constexpr const char* kMouse = "{'Type': <uint32 5>, 'Percentage': <10.0>}";

class UPowerMirrorTest : public testing::Test {
 protected:
  void SetUp() override { startUPower(); }

  void startUPower() {
    upower_ = std::make_unique<FakeUPower>(bus_);
    upower_->set("DisplayDevice", kDisplay);
    upower_->set("battery_BAT0", kBattery);
    upower_->set("line_power_AC", kLine);
    upower_->set("mouse", kMouse);
  }
  void startMirror() {
    connection_ = bus_.connect();
    mirror_ = std::make_unique<UPowerMirror>(connection_.get(), [this] { ++changes_; });
  }
  bool becomes(Status status) {
    return runUntil([&] { return mirror_->status() == status; });
  }
  bool showsLevel(double percentage) {
    return runUntil([&] {
      return mirror_->snapshot() && mirror_->snapshot()->display.percentage == percentage;
    });
  }
  // A change that is surely told, after which everything sent before it has arrived.
  void sendMark(double percentage) {
    upower_->change("DisplayDevice", "{'Percentage': <" + std::to_string(percentage) + ">}");
    ASSERT_TRUE(showsLevel(percentage));
  }

  PrivateBus bus_;
  std::unique_ptr<FakeUPower> upower_;
  BusPtr connection_;
  std::unique_ptr<UPowerMirror> mirror_;
  int changes_ = 0;
};

TEST_F(UPowerMirrorTest, CopiesEverythingOnceAndFollowsSignals) {
  startMirror();
  EXPECT_EQ(mirror_->status(), Status::pending);
  EXPECT_EQ(mirror_->snapshot(), nullptr);
  ASSERT_TRUE(becomes(Status::ready));
  EXPECT_EQ(changes_, 1);
  EXPECT_EQ(mirror_->snapshot()->display.secondsToEmpty, 7200);
  ASSERT_EQ(mirror_->snapshot()->devices.size(), 2u);  // the mouse feeds nothing
  EXPECT_EQ(mirror_->snapshot()->devices[0].energyFull, 50);
  EXPECT_EQ(mirror_->snapshot()->devices[1].isOnline, false);

  upower_->change("line_power_AC", "{'Online': <true>}");
  ASSERT_TRUE(runUntil([&] { return changes_ == 2; }));
  EXPECT_EQ(mirror_->snapshot()->devices[1].isOnline, true);
  EXPECT_EQ(upower_->getAllCount("DisplayDevice"), 1);
  EXPECT_EQ(upower_->getAllCount("mouse"), 1);
}

// DisplayDevice tells that its battery changed; the battery itself is asked, so that both agree.
TEST_F(UPowerMirrorTest, AsksTheBatteriesWhenTheyHaveSomethingToAdd) {
  startMirror();
  ASSERT_TRUE(becomes(Status::ready));
  const struct {
    const char* device;
    const char* change;
    bool isAsked;
  } rows[] = {
      {"DisplayDevice", "{'Percentage': <56.0>, 'TimeToEmpty': <int64 7000>}", false},
      {"line_power_AC", "{'Online': <true>}", true},
      {"DisplayDevice", "{'State': <uint32 1>}", true},
      {"DisplayDevice", "{'WarningLevel': <uint32 3>}", true},
      {"DisplayDevice", "{'Percentage': <95.0>}", true},
      {"DisplayDevice", "{'Percentage': <96.0>}", true},
      {"DisplayDevice", "{'Percentage': <57.0>}", true},  // from nearly full
      {"DisplayDevice", "{'Percentage': <56.0>}", false},
      {"DisplayDevice", "{'Type': <uint32 3>}", true},  // not the batteries' word any more
  };
  double level = 0;
  for (const auto& row : rows) {
    upower_->set("battery_BAT0",
                 "{'Type': <uint32 2>, 'EnergyFull': <" + std::to_string(++level) + ">}");
    const int asked = upower_->getAllCount("battery_BAT0");
    const int before = changes_;
    upower_->change(row.device, row.change);
    ASSERT_TRUE(runUntil([&] { return changes_ > before; })) << row.change;
    EXPECT_EQ(upower_->getAllCount("battery_BAT0") > asked, row.isAsked) << row.change;
    EXPECT_EQ(mirror_->snapshot()->devices[0].energyFull == level, row.isAsked) << row.change;
  }
}

TEST_F(UPowerMirrorTest, UPowersOwnPollsDoNotReachUs) {
  startMirror();
  ASSERT_TRUE(becomes(Status::ready));
  sendMark(56);  // by now the match rules are in place
  const Arrivals arrived(connection_, "battery_BAT0", "");
  const int asked = upower_->getAllCount("battery_BAT0");
  upower_->change("battery_BAT0", "{'UpdateTime': <uint64 2>}");
  upower_->change("DisplayDevice", "{'UpdateTime': <uint64 2>}");
  const int before = changes_;
  sendMark(55);
  EXPECT_EQ(arrived.count(), 0);
  EXPECT_EQ(changes_, before + 1);
  EXPECT_EQ(upower_->getAllCount("battery_BAT0"), asked);
}

TEST_F(UPowerMirrorTest, ListensToABatteryForWhichDisplayDeviceDoesNotSpeak) {
  upower_->set("DisplayDevice", "{'Type': <uint32 3>, 'Percentage': <100.0>}");
  startMirror();
  ASSERT_TRUE(becomes(Status::ready));
  upower_->change("battery_BAT0", "{'Percentage': <40.0>}");
  ASSERT_TRUE(runUntil([&] { return mirror_->snapshot()->devices[0].percentage == 40; }));
  upower_->change("battery_BAT0", "{'UpdateTime': <uint64 2>}");
  const int before = changes_;
  sendMark(99);
  EXPECT_EQ(changes_, before + 1);
}

TEST_F(UPowerMirrorTest, DevicesComeAndGo) {
  startMirror();
  ASSERT_TRUE(becomes(Status::ready));
  upower_->set("battery_BAT1", kBattery);
  upower_->announce("battery_BAT1");
  ASSERT_TRUE(runUntil([&] { return mirror_->snapshot()->devices.size() == 3; }));
  upower_->remove("battery_BAT1");
  ASSERT_TRUE(runUntil([&] { return mirror_->snapshot()->devices.size() == 2; }));
  // Gone before it could be asked.
  upower_->emit("/org/freedesktop/UPower", "org.freedesktop.UPower", "DeviceAdded",
                "(objectpath '/org/freedesktop/UPower/devices/ghost',)");
  upower_->set("line_power_DOCK", "{'Type': <uint32 1>, 'Online': <true>}");
  upower_->announce("line_power_DOCK");
  ASSERT_TRUE(runUntil([&] { return mirror_->snapshot()->devices.size() == 3; }));
  EXPECT_EQ(mirror_->status(), Status::ready);
}

TEST_F(UPowerMirrorTest, SurvivesNonsense) {
  upower_->set("battery_BAT0", "{'Type': <'battery'>, 'Percentage': <true>}");
  upower_->set("battery_BAT1", "{'Type': <uint32 2>, 'Percentage': <nan>, 'Energy': <-1.0>}");
  startMirror();
  ASSERT_TRUE(becomes(Status::ready));
  const std::string display = "/org/freedesktop/UPower/devices/DisplayDevice";
  const std::string properties = "org.freedesktop.DBus.Properties";
  upower_->emit(display, properties, "PropertiesChanged",
                "('org.freedesktop.UPower.Device', 5, @as [])");
  upower_->emit(display, properties, "PropertiesChanged", "('org.freedesktop.UPower.Device',)");
  for (const char* member : {"DeviceAdded", "DeviceRemoved", "Other"})
    upower_->emit("/org/freedesktop/UPower", "org.freedesktop.UPower", member, "('x',)");
  // Its own path as a device, coming and going, takes nothing away.
  upower_->emit("/org/freedesktop/UPower", "org.freedesktop.UPower", "DeviceRemoved",
                "(objectpath '" + display + "',)");
  sendMark(20);
  EXPECT_EQ(mirror_->snapshot()->devices.size(), 2u);
  // What is only named as changed is asked for.
  upower_->set("DisplayDevice", "{'Type': <uint32 2>, 'Percentage': <19.0>}");
  upower_->emit(display, properties, "PropertiesChanged",
                "('org.freedesktop.UPower.Device', @a{sv} {}, ['Percentage'])");
  EXPECT_TRUE(showsLevel(19));
}

TEST_F(UPowerMirrorTest, FollowsARestart) {
  startMirror();
  ASSERT_TRUE(becomes(Status::ready));
  upower_.reset();
  ASSERT_TRUE(becomes(Status::absent));
  EXPECT_EQ(mirror_->snapshot(), nullptr);
  EXPECT_EQ(changes_, 2);
  startUPower();
  ASSERT_TRUE(becomes(Status::ready));
  sendMark(12);
  EXPECT_EQ(mirror_->snapshot()->devices.size(), 2u);
}

TEST_F(UPowerMirrorTest, WakingUpReadsEverythingAgainAndIsTold) {
  startMirror();
  ASSERT_TRUE(becomes(Status::ready));
  FakeLogin login(bus_);
  login.prepareForSleep(g_variant_new("(b)", TRUE));
  login.prepareForSleep(g_variant_new("(s)", "no"));
  upower_->set("DisplayDevice", "{'Type': <uint32 2>, 'Percentage': <30.0>}");
  login.prepareForSleep(g_variant_new("(b)", FALSE));
  ASSERT_TRUE(showsLevel(30));
  EXPECT_EQ(changes_, 2);
  login.prepareForSleep(
      g_variant_new("(b)", FALSE));  // nothing is different, which the application can't know
  EXPECT_TRUE(runUntil([&] { return changes_ == 3; }));
}

TEST_F(UPowerMirrorTest, TheEndOfTheBusIsTheEndOfUPower) {
  startMirror();
  ASSERT_TRUE(becomes(Status::ready));
  connection_->close();
  EXPECT_TRUE(becomes(Status::absent));
}

// A name that can be started is started once, and not again when it ends.
TEST(UPowerMirrorStart, AsksTheBusToStartUPowerOnce) {
  std::string pattern = (std::filesystem::temp_directory_path() / "services-XXXXXX").string();
  const std::filesystem::path folder = mkdtemp(pattern.data());
  const std::filesystem::path log = folder / "log";
  std::ofstream(folder / "start.sh") << "echo started >> " << log.string() << "\nexit 1\n";
  std::ofstream(folder / "org.freedesktop.UPower.service")
      << "[D-BUS Service]\nName=org.freedesktop.UPower\nExec=/bin/sh "
      << (folder / "start.sh").string() << "\n";
  {
    const PrivateBus bus(folder.string());
    const auto connection = bus.connect();
    int changes = 0;
    UPowerMirror mirror(connection.get(), [&] { ++changes; });
    ASSERT_TRUE(runUntil([&] { return mirror.status() == Status::absent; }));
    EXPECT_TRUE(std::filesystem::exists(log));
    {
      FakeUPower upower(bus);
      ASSERT_TRUE(runUntil([&] { return mirror.status() == Status::ready; }));
    }
    ASSERT_TRUE(runUntil([&] { return mirror.status() == Status::absent; }));
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(std::filesystem::file_size(log), std::string_view("started\n").size());
  }
  std::filesystem::remove_all(folder);
}

TEST(UPowerProperties, OnlyPlausibleValuesOfTheRightTypeCount) {
  const struct {
    const char* properties;
    UPowerDevice device;
  } rows[] = {
      {"{'Percentage': <57.5>}", {.percentage = 57.5}},
      {"{'Percentage': <104.0>}", {.percentage = 100}},
      {"{'Percentage': <-1.0>, 'Energy': <-0.1>, 'EnergyFull': <0.0>}", {}},
      {"{'Percentage': <nan>, 'Energy': <inf>, 'EnergyFull': <nan>}", {}},
      {"{'Percentage': <1e300>, 'EnergyFullDesign': <1e9>, 'TimeToEmpty': <int64 -5>}", {}},
      {"{'Percentage': <57>, 'State': <int32 2>, 'Type': <'x'>, 'Online': <1>}", {}},
      {"{'TimeToEmpty': <int64 0>, 'TimeToFull': <int64 9223372036854775807>}", {}},
      {"{'TimeToEmpty': <uint32 60>, 'IsPresent': <'yes'>, 'PowerSupply': <[true]>}", {}},
      {"{'State': <uint32 0>, 'WarningLevel': <uint32 0>, 'Type': <uint32 0>}", {}},
      {"{'State': <uint32 7>, 'WarningLevel': <uint32 6>, 'Type': <uint32 99>}",
       {.type = UPowerType::other}},
      {"{'Energy': <0.0>, 'TimeToFull': <int64 60>, 'State': <uint32 4>}",
       {.state = UPowerState::fullyCharged, .energy = 0, .secondsToFull = 60}},
      {"@a{sv} {}", {}},
  };
  for (const auto& row : rows) {
    UPowerDevice device;
    const GVariantPtr properties(
        g_variant_parse(G_VARIANT_TYPE_VARDICT, row.properties, nullptr, nullptr, nullptr));
    ASSERT_TRUE(properties) << row.properties;
    applyProperties(device, scalarsOf(properties.get()));
    EXPECT_TRUE(device == row.device) << row.properties;
  }
  // What a dictionary doesn't speak of stays; what it spoils becomes absent.
  UPowerDevice device{.type = UPowerType::battery, .percentage = 57};
  const GVariantPtr spoilt(
      g_variant_parse(nullptr, "{'Percentage': <'?'>}", nullptr, nullptr, nullptr));
  applyProperties(device, scalarsOf(spoilt.get()));
  EXPECT_TRUE(device == UPowerDevice{.type = UPowerType::battery});
}

}  // namespace
}  // namespace kelvane
