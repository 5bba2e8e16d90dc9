#include "programs/kelvane-commands/command_line.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <stdlib.h>

#include "platform/linux/preferences/plist_preferences.h"
#include "programs/kelvane-commands/demo_command.h"
#include "programs/kelvane-commands/details_command.h"
#include "programs/kelvane-commands/doctor_command.h"
#include "programs/kelvane-commands/quit_command.h"
#include "programs/kelvane-commands/render_command.h"
#include "programs/kelvane-commands/settings_command.h"
#include "programs/kelvane-commands/status_command.h"
#include "programs/kelvane/programs.h"
#include "programs/kelvane/resident.h"
#include "programs/kelvane/version.h"

namespace kelvane {
namespace {

constexpr int kWrongUse = 2;

// The battery that the options of `render` state, if any does.
struct StatedBattery {
  double level = 0.57;
  bool isOnPower = false;
  bool isNotCharging = false;
  double estimate = kTimeRemainingUnknown;
  int minutesUntilFull = 65535;
  BatteryWarningLevel warning = BatteryWarningLevel::none;
  std::vector<CLI::Option*> options;

  void addTo(CLI::App& command) {
    const std::string group = "A stated battery, in place of the computer's";
    options = {
        command.add_option("--level", level, "Charge from 0 to 1")->check(CLI::Range(0.0, 1.0)),
        command.add_flag("--on-power", isOnPower, "A power adapter is connected"),
        command.add_flag("--not-charging", isNotCharging, "It is, but the battery is not charging"),
        command.add_option("--estimate", estimate, "Seconds until empty; -1 while unknown"),
        command.add_option("--minutes-until-full", minutesUntilFull, "While on power"),
        command.add_option("--warning", warning, "The system's warning: none, early or final")
            ->transform(CLI::CheckedTransformer(
                std::map<std::string, BatteryWarningLevel>{{"none", BatteryWarningLevel::none},
                                                           {"early", BatteryWarningLevel::early},
                                                           {"final", BatteryWarningLevel::final}})),
    };
    for (CLI::Option* option : options) option->group(group);
  }

  std::optional<MemoryBattery> battery() const {
    if (std::ranges::none_of(options, [](const CLI::Option* o) { return o->count() > 0; }))
      return std::nullopt;
    return MemoryBattery{.percent = static_cast<int>(std::lround(level * 100)),
                         .isOnPower = isOnPower,
                         .isCharging = isOnPower && !isNotCharging,
                         .estimate = estimate,
                         .minutesUntilFull = minutesUntilFull,
                         .warning = warning};
  }
};

struct RenderArguments {
  RenderOptions options;
  StatedBattery stated;
  std::vector<std::string> settings;
  CLI::Option* shape = nullptr;
  CLI::Option* bar = nullptr;

  void addTo(CLI::App& command) {
    Slot& slot = options.place.slot;
    command.add_option("--out", options.out, "The PNG file to write")->required();
    command.add_option("--scale", slot.scale, "Pixels per point")->check(CLI::Range(0.5, 16.0));
    command.add_option("--height", slot.height, "Height of the bar's slot in points")
        ->check(CLI::Range(8.0, 256.0));
    shape = command.add_option("--shape", slot.shape, "Shape of the bar's slot: wide or square")
                ->transform(CLI::CheckedTransformer(std::map<std::string, Slot::Shape>{
                    {"wide", Slot::Shape::wide}, {"square", Slot::Shape::square}}));
    bar = command.add_option("--bar", options.place.bar, "The bar's colour: light or dark")
              ->transform(CLI::CheckedTransformer(std::map<std::string, Appearance>{
                  {"light", Appearance::light}, {"dark", Appearance::dark}}));
    command.add_option("--font", options.fontFamily, "Font family; the system's when not given");
    command.add_option("--set", settings, "A setting for this picture, as KEY=VALUE");
    stated.addTo(command);
  }

  int run(const PowerOptions& power) {
    options.power = power;
    options.battery = stated.battery();
    // A place that is named is that of the picture, whatever is stored for the tray.
    if (shape->count() > 0) options.settings.emplace_back("trayIconShape", "automatic");
    if (bar->count() > 0) options.settings.emplace_back("trayIconColor", "automatic");
    for (const std::string& setting : settings) {
      const auto equals = setting.find('=');
      if (equals == std::string::npos) {
        std::cerr << "kelvane: --set takes KEY=VALUE\n";
        return kWrongUse;
      }
      options.settings.emplace_back(setting.substr(0, equals), setting.substr(equals + 1));
    }
    return runRenderCommand(options, std::cerr);
  }
};

// The resident program reads its options from the environment.
int becomeResident(const PowerOptions& power, bool isAtLogin, char* name) {
  setenv("KELVANE_POWER_SUPPLY", power.directory.c_str(), 1);
  setenv("KELVANE_UPOWER", power.useUPower ? "yes" : "no", 1);
  std::string atLogin = kAtLoginOption;
  char* const arguments[] = {name, isAtLogin ? atLogin.data() : nullptr, nullptr};
  becomeProgram("kelvane", arguments);
  return 1;
}

int runSettings(const std::vector<std::string>& arguments) {
  PlistPreferences preferences;
  return runSettingsCommand(arguments, preferences, std::cout, std::cerr);
}

}  // namespace

int runCommandLine(int argumentCount, char** arguments) {
  CLI::App program("Kelvane shows the laptop's battery in the tray.", "kelvane");
  program.set_version_flag("--version", "kelvane " + builtInformation().version);
  program.require_subcommand(0, 1);

  PowerOptions power = environmentPowerOptions();
  bool hasNoUPower = false;
  program.fallthrough();
  CLI::Option* directory =
      program
          .add_option("--power-supply", power.directory,
                      "Read the batteries from DIR in place of /sys/class/power_supply")
          ->type_name("DIR");
  program.add_flag("--no-upower", hasNoUPower, "Leave UPower out");

  bool isAtLogin = false;
  program.add_flag(kAtLoginOption, isAtLogin)->group("");  // for our own programs only

  bool isJson = false;
  CLI::App* status = program.add_subcommand("status", "Print the battery in one line");
  status->add_flag("--json", isJson, "As JSON, for bars such as Waybar and i3status");

  DetailsOptions detailsOptions;
  CLI::App* details = program.add_subcommand("details", "Print the battery's details");
  details->add_flag("--json", detailsOptions.isJson, "As one JSON object");

  RenderArguments render;
  CLI::App* renderCommand = program.add_subcommand("render", "Write the item as a PNG file");
  render.addTo(*renderCommand);

  CLI::App* settings = program.add_subcommand(
      "settings", "Settings: list, get KEY, or set KEY VALUE (values are JSON)");
  settings->prefix_command();
  settings->fallthrough(false);  // its words are its own

  DemoOptions demoOptions;
  CLI::App* demo =
      program.add_subcommand("demo", "Run on a scripted battery and leave pictures of it");
  demo->add_option("--out", demoOptions.folder, "The folder for the pictures")->type_name("DIR");

  CLI::App* doctor = program.add_subcommand(
      "doctor", "Tell what this desktop offers, and what to do about what it lacks");
  doctor->add_flag("--json", isJson, "As one JSON object");

  CLI::App* quit = program.add_subcommand("quit", "End the Kelvane that runs");

  try {
    program.parse(argumentCount, arguments);
  } catch (const CLI::ParseError& error) {
    const bool isRequest = error.get_exit_code() == 0;  // help or version
    if (isRequest) return program.exit(error);
    std::cerr << "kelvane: " << error.what() << "\n";
    return kWrongUse;
  }
  if (hasNoUPower) power.useUPower = false;

  if (*status) return runStatusCommand(power, isJson, std::cout, std::cerr);
  if (*details) {
    detailsOptions.power = power;
    // The one that runs may have another source than the one that is wanted.
    detailsOptions.asksRunning = !*directory && !hasNoUPower;
    return runDetailsCommand(detailsOptions, std::cout);
  }
  if (*renderCommand) return render.run(power);
  if (*settings) return runSettings(settings->remaining());
  if (*doctor) return runDoctorCommand(power, isJson, std::cout);
  if (*quit) return runQuitCommand();
  if (*demo) return runDemoCommand(demoOptions, std::cout, std::cerr);
  return becomeResident(power, isAtLogin, arguments[0]);
}

}  // namespace kelvane
