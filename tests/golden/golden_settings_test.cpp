// The settings window as it stands after a user's actions, compared with trees that somebody has
// read.
//
// `make golden` writes them anew; read what changed before committing.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "kit/view_diff.h"
#include "platform/linux/windows/window_protocol.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_preferences.h"
#include "platform/memory/memory_run_loop.h"
#include "settings/views/settings_window.h"

namespace kelvane {
namespace {

struct GoldenWindow {
  std::string name;
  std::vector<std::pair<std::string, int>> actions;  // a control's label, and its new value
};

void PrintTo(const GoldenWindow& window, std::ostream* out) { *out << window.name; }

const std::vector<GoldenWindow> kWindows = {
    {"icon-percentage", {}},
    {"icon-time", {{"Show:", 1}}},
    {"text-percentage", {{"Type:", 0}}},
    {"text-time", {{"Type:", 0}, {"Show:", 1}}},
    {"levels-sheet", {{"Notify at percentages…", 0}, {"77﹪", 1}, {"12﹪", 1}}},
    {"hide-alert", {{"Hide while on power", 1}}},
};

const ViewNode* labelled(const ViewNode& node, const std::string& label) {
  if (node.label == label) return &node;
  for (const ViewNode& child : node.children)
    if (const ViewNode* found = labelled(child, label)) return found;
  return nullptr;
}

std::optional<std::string> contents(const std::filesystem::path& path) {
  std::ifstream file(path);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

class GoldenSettingsTest : public ::testing::TestWithParam<GoldenWindow> {
 protected:
  void openWindow() { window_.show(); }
  void act(const std::string& label, int value) {
    const ViewNode* node = labelled(shown().tree, label);
    ASSERT_NE(node, nullptr) << label;
    const auto [action, id] = std::pair(node->action, node->id);
    shown().events.acted(action, id, value);
    loop_.run();
    ASSERT_EQ(applySteps(shown().tree, std::exchange(shown().steps, {})), std::nullopt);
  }
  MemoryWindows::Window& shown() { return *windows_.windows.back(); }

 private:
  MemoryPreferences preferences_;
  MemoryRunLoop loop_;
  MemoryWindows windows_{loop_};
  MemoryLoginItems loginItems_;
  SettingsKeys settings_{preferences_};
  AutoStart autoStart_{loginItems_, "org.kelvane.Kelvane"};
  SettingsWindow window_{windows_, loop_, settings_, autoStart_, "Kelvane", [] {}};
};

TEST_P(GoldenSettingsTest, HoldsWhatItDid) {
  openWindow();
  for (const auto& [label, value] : GetParam().actions) ASSERT_NO_FATAL_FAILURE(act(label, value));
  const std::string actual = encodeView(shown().tree, 2) + "\n";
  const auto golden = std::filesystem::path(KELVANE_GOLDEN_SETTINGS) / (GetParam().name + ".json");
  if (std::getenv("KELVANE_WRITE_GOLDEN")) {
    ASSERT_TRUE(std::ofstream(golden) << actual) << golden;
  }
  const auto expected = contents(golden);
  ASSERT_TRUE(expected.has_value()) << golden << " is missing";
  EXPECT_EQ(actual, *expected);
}

INSTANTIATE_TEST_SUITE_P(Windows, GoldenSettingsTest, ::testing::ValuesIn(kWindows),
                         [](const auto& window) {
                           std::string name = window.param.name;
                           std::ranges::replace(name, '-', '_');
                           return name;
                         });

}  // namespace
}  // namespace kelvane
