#include "programs/kelvane-commands/doctor/diagnosis.h"

#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "programs/kelvane-commands/doctor/report.h"

namespace kelvane {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Field;
using ::testing::HasSubstr;
using Verdict = Finding::Verdict;

UPowerDevice upowerBattery() {
  return {
      .type = UPowerType::battery, .isPowerSupply = true, .isPresent = true, .percentage = 56.7};
}

// A session in which all is well.
DoctorFacts health() {
  DoctorFacts facts;
  facts.desktops = {"GNOME"};
  facts.distributions = {"fedora"};
  facts.sessionBus = "unix:path=/bus";
  TrayFacts& tray = facts.tray.emplace();
  tray = {.process = "gnome-shell", .host = TrayHost::gnome, .isAnswering = true};
  tray.slot = profileOf(tray.host).slot;
  tray.scaleSource = "Mutter";
  tray.bar = Appearance::dark;
  facts.application = {true, true, {{16, 16}}};
  facts.power.directory = "/tree";
  facts.power.supplies = {
      {.name = "AC", .type = SupplyType::external, .online = true},
      {.name = "BAT0", .type = SupplyType::battery, .present = true, .capacity = 57}};
  facts.power.upower = {.presence = Presence::running, .isAnswering = true, .version = "1.90"};
  facts.power.upower.display = upowerBattery();
  facts.power.upower.devices = {{"BAT0", upowerBattery()}};
  facts.notifier = {Presence::running, true, "dunst", "1.9", {"actions", "body"}};
  facts.portal = Presence::running;
  facts.login = {"/x.desktop", AutostartReading{true, "", "/helper"}, "", true};
  facts.preferences = {"/x.plist", 0100600, "", {{"showPercentage", false}}};
  return facts;
}

TEST(Diagnosis, HasNothingToSayAgainstHealth) {
  EXPECT_EQ(plainTextOf(diagnose(health())),
            "ok       session bus    unix:path=/bus\n"
            "ok       tray           GNOME (process gnome-shell)\n"
            "ok       shape          a square of 16 points, with text beside, which suits GNOME\n"
            "ok       scale          1, says Mutter\n"
            "ok       colours        dark bar: the glyph is light; no preference for windows\n"
            "ok       Kelvane        it runs, the tray has its item: 16×16 pixels\n"
            "ok       UPower         version 1.90\n"
            "ok       battery        BAT0, 57 %\n"
            "ok       notifications  dunst 1.9: actions body\n"
            "ok       portal         it runs\n"
            "ok       login          started by /x.desktop\n"
            "ok       preferences    /x.plist, mode 0600\n");
}

TEST(Diagnosis, TellsWhatIsWrongAndWhatToDo) {
  const struct {
    std::function<void(DoctorFacts&)> change;
    Verdict verdict;
    const char *subject, *text, *remedy;  // parts of them
    bool canBeSeen = true;
  } rows[] = {
      {[](auto& f) { f.sessionBusProblem = "gone"; }, Verdict::problem, "session bus", "none: gone",
       "DBUS_SESSION_BUS_ADDRESS", false},
      {[](auto& f) { f.tray.reset(); }, Verdict::problem, "tray", "org.kde.StatusNotifierWatcher",
       "dnf install gnome-shell-extension-appindicator", false},
      {[](auto& f) { f.tray->isAnswering = false; }, Verdict::problem, "tray", "does not answer",
       "gnome-shell-extension", false},
      {[](auto& f) { f.tray->showsItems = false; }, Verdict::problem, "tray", "nothing shows them",
       "End that process, if it is of another desktop", false},
      {[](auto& f) { f.tray->host = TrayHost::swaybar; }, Verdict::note, "tray", "without menus",
       "waybar"},
      {[](auto& f) {
         f.tray->slot = {Slot::Shape::wide, 24, 1, false};
       },
       Verdict::ok, "shape", "24 points high, as wide as the item, which suits GNOME", ""},
      {[](auto& f) { f.tray->host = TrayHost::unknown; }, Verdict::ok, "shape", "any host shows",
       ""},
      {[](auto& f) { f.preferences.values.insert_or_assign("trayIconShape", "wide"); }, Verdict::ok,
       "shape", "16 points high, as wide as the item, with text beside, says the setting tray", ""},
      {[](auto& f) {
         f.application.pictures = {{22, 22}, {44, 44}};
       },
       Verdict::ok, "Kelvane", "item: 22×22 and 44×44 pixels", ""},
      {[](auto& f) {
         f.tray->slot.scale = 1.5;
         f.tray->scaleSource = "";
       },
       Verdict::ok, "scale", "1.5, as nothing says", ""},
      {[](auto& f) {
         f.tray->bar.reset();
         f.tray->darkWindows = true;
       },
       Verdict::ok, "colours", "unknown bar: the glyph is light on a dark backing; dark windows",
       ""},
      {[](auto& f) { f.tray->bar = Appearance::light; }, Verdict::ok, "colours", "glyph is dark",
       ""},
      {[](auto& f) { f.preferences.values.insert_or_assign("trayIconColor", "dark"); }, Verdict::ok,
       "colours", "the glyph is dark, says the setting trayIconColor", ""},
      {[](auto& f) { f.application = {}; }, Verdict::note, "Kelvane", "does not run", "kelvane"},
      {[](auto& f) { f.application.isItemRegistered = false; }, Verdict::problem, "Kelvane",
       "does not have its item", "kelvane quit", false},
      {[](auto& f) {
         f.application.isItemRegistered = false;
         f.preferences.values.insert_or_assign("hideIconWhenOnPower", true);
       },
       Verdict::note, "Kelvane", "hides its item while on power", "hideIconWhenOnPower false"},
      {[](auto& f) {
         f.application.isItemRegistered = false;
         f.preferences.values.insert_or_assign("hideIconWhenOnPower", true);
         f.power.supplies[0].online = false;
       },
       Verdict::problem, "Kelvane", "does not have its item", "", false},
      {[](auto& f) {
         f.application.isItemRegistered = false;
         f.tray.reset();
       },
       Verdict::ok, "Kelvane", "waits for a tray", "", false},
      {[](auto& f) { f.notifier = {}; }, Verdict::problem, "notifications", "no server", "dunst"},
      {[](auto& f) { f.notifier.presence = Presence::startable; }, Verdict::ok, "notifications",
       "the bus starts one", ""},
      {[](auto& f) { f.notifier.isAnswering = false; }, Verdict::problem, "notifications",
       "does not answer", "Restart"},
      {[](auto& f) { f.portal = Presence::startable; }, Verdict::note, "portal",
       "Kelvane does not start it", ""},
      {[](auto& f) { f.portal = Presence::absent; }, Verdict::note, "portal", "none",
       "xdg-desktop-portal"},
      {[](auto& f) { f.login.entry.reset(); }, Verdict::note, "login", "there is no /x.desktop",
       "Launch at login"},
      {[](auto& f) {
         f.login.entry = {false, "Hidden=true", "/helper"};
       },
       Verdict::note, "login", "Hidden=true in /x.desktop", "switch it on"},
      {[](auto& f) { f.login.hasProgram = false; }, Verdict::problem, "login",
       "starts /helper, which is not there", "off and on"},
      {[](auto& f) {
         f.login.entry = {std::nullopt, "it is no desktop entry", ""};
       },
       Verdict::problem, "login", "it is no desktop entry", "off and on"},
      {[](auto& f) { f.login.problem = "denied"; }, Verdict::problem, "login", "denied", "off"},
      {[](auto& f) { f.preferences.mode.reset(); }, Verdict::ok, "preferences", "not there yet",
       ""},
      {[](auto& f) { f.preferences.mode = 0644; }, Verdict::note, "preferences", "mode 0644",
       "chmod 600 /x.plist"},
      {[](auto& f) { f.preferences.problem = "no list"; }, Verdict::problem, "preferences",
       "can’t be read: no list", "default settings"},
      {[](auto& f) { f.preferences.values.insert_or_assign("largeIcon", 7); }, Verdict::problem,
       "preferences", "largeIcon is not true or false", "kelvane settings set largeIcon false"},
      {[](auto& f) {
         f.preferences.values.insert_or_assign("notifyAtPercentages", PropertyArray{0.2, 7.5});
       },
       Verdict::problem, "preferences", "notifyAtPercentages has levels", "[0.2,0.1]"},
      {[](auto& f) { f.preferences.values.insert_or_assign("trayIconShape", "round"); },
       Verdict::problem, "preferences", "trayIconShape is none", "automatic"},
      {[](auto& f) { f.preferences.values.insert_or_assign("Tq_launchCount", "x"); }, Verdict::note,
       "preferences", "Tq_launchCount is of another kind", ""},
      {[](auto& f) { f.preferences.values.insert_or_assign("largeIcons", true); }, Verdict::note,
       "preferences", "largeIcons is no setting", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    DoctorFacts facts = health();
    row.change(facts);
    const auto findings = diagnose(facts);
    EXPECT_THAT(findings, Contains(AllOf(Field(&Finding::subject, row.subject),
                                         Field(&Finding::verdict, row.verdict),
                                         Field(&Finding::text, HasSubstr(row.text)),
                                         Field(&Finding::remedy, HasSubstr(row.remedy)))));
    EXPECT_EQ(canBeSeen(findings), row.canBeSeen);
  }
}

TEST(Diagnosis, LeavesOldAndOwnValuesAlone) {
  DoctorFacts facts = health();
  // Levels were JSON once, and booleans too.
  facts.preferences.values = {{"notifyAtPercentagesOnPower", "[0.8]"},
                              {"largeIcon", "true"},
                              {"Tq_launchCount", 3},
                              {"__hasLaunched__", true},
                              {"Tq_App_runOnce__x", true},
                              {"notifyAtPercentages", "[]"}};
  EXPECT_EQ(plainTextOf(diagnose(facts)), plainTextOf(diagnose(health())));
}

TEST(Diagnosis, TellsBatteriesFromWhatIsNone) {
  const auto device = [](UPowerType type, bool isPowerSupply, bool isPresent) {
    return UPowerDevice{.type = type, .isPowerSupply = isPowerSupply, .isPresent = isPresent};
  };
  DoctorFacts facts = health();
  facts.power.upower.devices = {{"BAT0", upowerBattery()},
                                {"BAT1", device(UPowerType::battery, true, false)},
                                {"AC", device(UPowerType::linePower, true, true)},
                                {"mouse", device(UPowerType::other, false, true)},
                                {"pen", device(UPowerType::battery, false, true)},
                                {"ups", device(UPowerType::ups, true, true)}};
  facts.power.supplies = {
      {.name = "BAT0", .type = SupplyType::battery, .capacity = 57},
      {.name = "BAT1", .type = SupplyType::battery, .present = false},
      {.name = "AC", .type = SupplyType::external},
      {.name = "odd"},
      {.name = "pen", .type = SupplyType::battery, .scope = SupplyScope::device},
      {.name = "ups", .type = SupplyType::ups}};
  const std::string counted = "ok       battery        BAT0, 57 %\n";
  const std::string bay = "note     battery        BAT1 is not counted: its bay is empty\n";
  const std::string ups = "note     battery        ups is not counted: it is a UPS\n";
  const std::string peripheral = " is not counted: it powers a device, not the computer ";
  const auto batteries = [&] {
    std::vector<Finding> findings = diagnose(facts);
    std::erase_if(findings, [](const Finding& each) { return each.subject != "battery"; });
    return plainTextOf(findings);
  };
  EXPECT_EQ(batteries(), counted + bay + "note     battery        mouse" + peripheral +
                             "(PowerSupply=false)\nnote     battery        pen" + peripheral +
                             "(PowerSupply=false)\n" + ups);
  facts.power.upower.isAnswering = false;
  EXPECT_EQ(batteries(),
            counted + bay + "note     battery        pen" + peripheral + "(scope Device)\n" + ups);

  // Without the first one Kelvane refuses, whoever speaks for the others.
  facts.power.supplies.erase(facts.power.supplies.begin());
  EXPECT_THAT(batteries(), HasSubstr("none of a laptop"));
  EXPECT_FALSE(canBeSeen(diagnose(facts)));
  facts.power.upower.isAnswering = true;
  EXPECT_TRUE(canBeSeen(diagnose(facts)));
  facts.power.upower.devices.erase(facts.power.upower.devices.begin());
  facts.power.upower.display = device(UPowerType::ups, true, true);
  EXPECT_FALSE(canBeSeen(diagnose(facts)));
}

TEST(Diagnosis, TellsWhySomethingServesInsteadOfUPower) {
  const struct {
    UPowerFacts upower;
    Verdict verdict;
    const char *text, *remedy;
  } rows[] = {
      {{.isWanted = false, .isAnswering = true},
       Verdict::note,
       "as asked: the kernel’s files in /tree",
       ""},
      {{.busProblem = "gone"}, Verdict::note, "gone: the kernel’s files in /tree", "system bus"},
      {{.presence = Presence::running}, Verdict::note, "does not answer: the", "systemctl restart"},
      {{.presence = Presence::startable}, Verdict::ok, "the bus starts it", ""},
      {{}, Verdict::note, "not there: the kernel’s files", "Install the package upower"},
  };
  for (const auto& row : rows) {
    DoctorFacts facts = health();
    facts.power.upower = row.upower;
    const auto findings = diagnose(facts);
    EXPECT_THAT(findings, Contains(AllOf(Field(&Finding::subject, "UPower"),
                                         Field(&Finding::verdict, row.verdict),
                                         Field(&Finding::text, HasSubstr(row.text)),
                                         Field(&Finding::remedy, HasSubstr(row.remedy)))));
    EXPECT_TRUE(canBeSeen(findings)) << row.text;
  }
}

TEST(DoctorReport, KeepsItsFormWhateverOthersAreCalled) {
  const std::vector<Finding> findings = {{Verdict::note, "tray",
                                          "a\n\x1b[31mb\xff\xc2\x9b"
                                          "c\r",
                                          "do\tthis", true}};
  EXPECT_EQ(plainTextOf(findings),
            "note     tray           a  [31mb\uFFFD c \n                        do this\n");
  const auto json = nlohmann::json::parse(jsonOf(findings));
  EXPECT_EQ(json.at("canBeSeen"), false);
  EXPECT_EQ(json.at("findings").at(0).at("text"), "a  [31mb\uFFFD c ");
  EXPECT_EQ(json.at("findings").at(0).at("remedy"), "do this");
  EXPECT_TRUE(nlohmann::json::parse(jsonOf({{}})).at("findings").at(0).at("remedy").is_null());
}

}  // namespace
}  // namespace kelvane
