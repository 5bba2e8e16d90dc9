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

#include "platform/linux/windows/window_protocol.h"
#include "settings/views/settings_window_fixture_test.h"

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

// A line for each node, its children's below it.
std::string outline(const ViewNode& node, const std::string& indentation = "") {
  ViewNode alone = node;
  alone.children.clear();
  std::string lines = indentation + encodeView(alone) + "\n";
  for (const ViewNode& child : node.children) lines += outline(child, indentation + "  ");
  return lines;
}

std::optional<std::string> contents(const std::filesystem::path& path) {
  std::ifstream file(path);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

class GoldenSettingsTest : public SettingsWindowTest,
                           public ::testing::WithParamInterface<GoldenWindow> {};

TEST_P(GoldenSettingsTest, HoldsWhatItDid) {
  const auto& [name, actions] = GetParam();
  window->show();
  for (const auto& [label, value] : actions) ASSERT_NO_FATAL_FAILURE(act(label, value));
  const std::string actual = outline(tree());
  const auto golden = std::filesystem::path(KELVANE_GOLDEN_SETTINGS) / (name + ".txt");
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
