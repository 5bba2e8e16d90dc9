#include "programs/kelvane-commands/demo_script.h"

namespace kelvane {

const std::vector<DemoStep>& demoScript() {
  constexpr auto kEarly = BatteryWarningLevel::early;
  constexpr auto kFinal = BatteryWarningLevel::final;
  static const std::vector<DemoStep> script = {
      {"unplugged",
       "Unplugged at full; the system has no estimate yet",
       {.percent = 100},
       {{"notifyAtPercentagesOnBattery", "[0.2]"},
        {"notifyAtPercentagesOnPower", "[0.8]"},
        {"notifyWhenFullyCharged", "true"}}},
      {"discharging", "On battery", {.percent = 80, .estimate = 4.2 * 3600}, {}},
      {"time-unknown",
       "The time remaining instead, while it is not known",
       {.percent = 80},
       {{"showPercentage", "false"}}},
      {"time", "The time remaining", {.percent = 79, .estimate = 4.1 * 3600}, {}},
      {"long-time", "Ten hours and more", {.percent = 78, .estimate = 11.5 * 3600}, {}},
      {"no-sign",
       "The percentage without its sign",
       {.percent = 57, .estimate = 3 * 3600},
       {{"showPercentage", "true"}, {"showPercentageSignInIcon", "false"}}},
      {"large",
       "The large icon",
       {.percent = 57, .estimate = 3 * 3600},
       {{"showPercentageSignInIcon", "true"}, {"largeIcon", "true"}}},
      {"alternative",
       "The alternative style",
       {.percent = 42, .estimate = 2 * 3600},
       {{"largeIcon", "false"}, {"oldIconStyle", "true"}}},
      {"level-reached",
       "A level to be told of: 20 %",
       {.percent = 20, .estimate = 3600},
       {{"oldIconStyle", "false"}}},
      {"early-warning",
       "The system's early warning",
       {.percent = 12, .estimate = 1800, .warning = kEarly},
       {}},
      {"final-warning",
       "The system's final warning",
       {.percent = 4, .estimate = 300, .warning = kFinal},
       {}},
      {"plugged-in", "Plugged in", {.percent = 5, .isOnPower = true, .minutesUntilFull = 95}, {}},
      {"text",
       "Text instead of the icon",
       {.percent = 63, .isOnPower = true, .minutesUntilFull = 50},
       {{"textOnlyIcon", "true"}}},
      {"held",
       "Held at a charge limit, which is a level to be told of: 80 %",
       {.percent = 80, .isOnPower = true, .isCharging = false},
       {{"textOnlyIcon", "false"}}},
      {"almost-full", "Almost full", {.percent = 99, .isOnPower = true, .minutesUntilFull = 6}, {}},
      {"full", "Full on power", {.percent = 100, .isOnPower = true}, {}},
  };
  return script;
}

}  // namespace kelvane
