#include "programs/kelvane-commands/demo_command.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <ostream>
#include <system_error>
#include <utility>

#include <glib.h>
#include <stdlib.h>

#include "app/app_main.h"
#include "kit/kit_keys.h"
#include "platform/linux/desktop/linux_text_formats.h"
#include "platform/linux/drawing/linux_graphics.h"
#include "platform/linux/glib/bus_connection.h"
#include "platform/linux/glib/glib_ptr.h"
#include "platform/linux/glib/glib_run_loop.h"
#include "platform/linux/tray/linux_status_bar.h"
#include "platform/memory/memory_computer.h"
#include "programs/kelvane-commands/demo_desktop.h"
#include "programs/kelvane-commands/demo_page.h"
#include "programs/kelvane-commands/demo_script.h"
#include "programs/kelvane-commands/item_sketch.h"
#include "programs/kelvane-commands/settings_command.h"
#include "programs/kelvane/foreign_text.h"
#include "programs/kelvane/version.h"

namespace kelvane {
namespace {

constexpr double kTrayWait = 0.7;    // seconds for a host to take the item
constexpr double kStepInTray = 1.4;  // long enough to be looked at
constexpr double kStepWithoutTray = 0.01;
constexpr double kAlertNoticesPower =
    0.3;  // an open alert looks at the adapter five times a second

std::string titlesOf(const Menu& menu, bool isEnabled) {
  std::string titles;
  for (const MenuLine& line : menu.lines()) {
    if (line.kind != MenuLine::Kind::item || line.isEnabled != isEnabled) continue;
    titles += (titles.empty() ? "" : " | ") + line.title;
    if (line.submenu) titles += " > " + titlesOf(*line.submenu, isEnabled);
  }
  return titles;
}

class Demo {
 public:
  Demo(std::filesystem::path folder, std::ostream& out, std::ostream& errors)
      : out_(out), errors_(errors), page_(std::move(folder), fonts_) {
    BusPtr bus = BusConnection::share(BusKind::session);
    if (bus && bus->waitUntilReady()) {
      TrayOptions options;
      options.sessionBus = bus.get();
      options.replaceUncoveredCharacters = [this](std::string text) {
        return replaceUncoveredCharacters(fonts_, std::move(text));
      };
      tray_ = std::make_unique<LinuxStatusBar>(loop_, fonts_, std::move(options));
      bus_ = std::move(bus);
    }
    computer_.set(demoScript().front().battery);
    // A welcome would wait for an answer.
    KitKeys(computer_.preferences).hasLaunched.set(true);
  }

  int run() {
    Platform platform = computer_.platform();
    StatusBar& bar = tray_ ? static_cast<StatusBar&>(*tray_) : computer_.statusBar;
    app_ = std::make_unique<AppMain>(
        Platform{platform.deviceRegistry, platform.powerSources, platform.preferences, loop_, bar,
                 graphics_, notifications_, windows_, platform.loginItems, platform.workspace,
                 platform.systemInfo, textFormats_},
        builtInformation());
    app_->appState();
    loop_.asyncAfter(tray_ ? kTrayWait : 0, [this] {
      interval_ = tray_ && tray_->isRegistered() ? kStepInTray : kStepWithoutTray;
      runStep(0);
    });
    return loop_.run();
  }

 private:
  void runStep(std::size_t index) {
    const auto& script = demoScript();
    if (index == script.size()) {
      finish(page_.writeIndex());
      return;
    }
    const DemoStep& step = script[index];
    out_ << "\n" << step.caption << "\n";
    for (const auto& [key, value] : step.settings) {
      std::ostream silent(nullptr);
      runSettingsCommand({"set", key, value}, computer_.preferences, silent, errors_);
    }
    computer_.set(step.battery);
    computer_.powerSources.notify();
    const bool isAlertEnding = windows_.isAlertOpen() && step.battery.isOnPower;
    const double wait = std::max(interval_ / 2, isAlertEnding ? kAlertNoticesPower : 0);
    // What the change has set off is done by then.
    loop_.asyncAfter(wait, [this, index, &step] {
      show(index == 0);
      if (const auto failure = page_.addStep(step, computer_.registry, computer_.powerSources,
                                             computer_.preferences)) {
        finish(failure);
        return;
      }
      loop_.asyncAfter(interval_ / 2, [this, index] { runStep(index + 1); });
    });
  }

  void show(bool withCommands) {
    out_ << drawnInTerminal(sketchItem(computer_.registry, computer_.powerSources,
                                       computer_.preferences, fonts_, {{.scale = 2}}));
    TqMenu& menu = app_->appState().menu();
    menu.needsUpdate();
    out_ << "    menu:   " << titlesOf(menu, false) << "\n";
    if (withCommands) out_ << "            " << titlesOf(menu, true) << "\n";
    out_.flush();
  }

  void finish(const std::optional<std::string>& failure) {
    if (failure) errors_ << "kelvane: " << *failure << "\n";
    loop_.terminate(failure ? 1 : 0);
  }

  std::ostream& out_;
  std::ostream& errors_;
  BusPtr bus_;
  GlibRunLoop loop_;
  FontFaces fonts_;
  LinuxGraphics graphics_{fonts_};
  MemoryComputer computer_;
  LinuxTextFormats textFormats_;
  DemoNotifications notifications_{out_};
  DemoWindows windows_{loop_, out_};
  std::unique_ptr<LinuxStatusBar> tray_;
  DemoPage page_;
  std::unique_ptr<AppMain> app_;
  double interval_ = kStepWithoutTray;
};

// The folder to use, made if it is not there; absent when it can't be made.
std::optional<std::filesystem::path> prepareFolder(const std::string& wanted,
                                                   std::ostream& errors) {
  std::error_code error;
  if (!wanted.empty()) {
    std::filesystem::create_directories(wanted, error);
    if (!error) return std::filesystem::absolute(wanted, error);
    errors << "kelvane: can't make " << wanted << ": " << error.message() << "\n";
    return std::nullopt;
  }
  std::string name = (std::filesystem::temp_directory_path(error) / "kelvane-demo-XXXXXX").string();
  if (!error && mkdtemp(name.data())) return name;
  errors << "kelvane: can't make a folder for the pictures\n";
  return std::nullopt;
}

}  // namespace

int runDemoCommand(const DemoOptions& options, std::ostream& out, std::ostream& errors) {
  const auto folder = prepareFolder(options.folder, errors);
  if (!folder) return 1;
  out << "Kelvane on a scripted battery\n";
  const int exitCode = Demo(*folder, out, errors).run();
  if (exitCode == 0) out << "\nPictures and index.html: " << folder->string() << std::endl;
  return exitCode;
}

}  // namespace kelvane
