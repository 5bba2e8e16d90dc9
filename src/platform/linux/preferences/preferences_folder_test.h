// A folder of its own for each test of preferences in a file, with what such tests do again and
// again.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/preferences/plist_preferences.h"
#include "platform/linux/preferences/plist_text.h"

namespace kelvane {

// Runs the main loop until `condition`; false when it doesn't come within ten seconds.
inline bool until(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  const guint ticking = g_timeout_add(
      20, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
  while (!condition() && std::chrono::steady_clock::now() < deadline)
    g_main_context_iteration(nullptr, TRUE);
  g_source_remove(ticking);
  return condition();
}

class PreferencesFolderTest : public ::testing::Test {
 public:
  ~PreferencesFolderTest() override { std::filesystem::remove_all(root); }

 protected:
  PreferencesFolderTest() {
    std::string name =
        (std::filesystem::temp_directory_path() / "kelvane-preferences-XXXXXX").string();
    root = mkdtemp(name.data());
    std::filesystem::permissions(root, std::filesystem::perms(0755));
    folder = root / "config" / "kelvane";
    path = folder / "org.kelvane.Kelvane.plist";
  }

  std::unique_ptr<PlistPreferences> open() {
    return std::make_unique<PlistPreferences>(
        path, [this](const std::string& line) { reports.push_back(line); });
  }
  std::unique_ptr<PlistPreferences> follow() {
    auto preferences = open();
    preferences->followOtherProcesses();
    return preferences;
  }
  void put(const std::string& bytes) const {
    std::filesystem::create_directories(folder);
    std::ofstream(path, std::ios::binary) << bytes;
  }
  void put(const PropertyDictionary& values) const { put(plistXml(toPlist(values).get())); }
  static std::string bytesOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  PropertyDictionary onDisk() const { return valuesOf(parsePlist(bytesOf(path)).dictionary.get()); }
  std::vector<std::string> names() const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
      found.push_back(entry.path().filename().string());
    std::ranges::sort(found);
    return found;
  }

  // Notes "key: old>new" for each notice about a key, a prior one with "before".
  void observe(Preferences& preferences, const std::string& key) {
    std::ignore =
        preferences.addObserver(key, {.prior = true}, [this, key](const PreferenceChange& change) {
          const auto text = [](const auto& value) {
            return value ? value->string().value_or("?") : "-";
          };
          told.push_back(key + (change.isPrior ? ": before " : ": ") + text(change.oldValue) + ">" +
                         text(change.newValue));
        });
  }
  // Waits until all that happened to the file so far has been heard of.
  void settle() {
    const auto other = open();
    other->setObject("mark", "mark");
    other->synchronize();
    EXPECT_TRUE(until([&] { return std::ranges::count(told, "mark: ->mark") > 0; }));
    other->removeObject("mark");
    other->synchronize();
    EXPECT_TRUE(until([&] { return std::ranges::count(told, "mark: mark>-") > 0; }));
    std::erase_if(told, [](const auto& line) { return line.starts_with("mark"); });
  }

  std::filesystem::path root, folder, path;
  std::vector<std::string> reports;
  std::vector<std::string> told;
};

}  // namespace kelvane
