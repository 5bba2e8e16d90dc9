// A tree of power supplies in a folder of its own, as the kernel would show it. Gone with the
// object.
#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>

#include <stdlib.h>

namespace kelvane {

class SupplyTree {
 public:
  using Attributes = std::map<std::string, std::string>;

  SupplyTree() {
    std::string pattern = (std::filesystem::temp_directory_path() / "supplies-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
    path_ = pattern;
  }
  ~SupplyTree() { std::filesystem::remove_all(path_); }
  SupplyTree(const SupplyTree&) = delete;
  SupplyTree& operator=(const SupplyTree&) = delete;

  std::string path() const { return path_.string(); }
  std::string file(const std::string& supply, const std::string& name) const {
    return (path_ / supply / name).string();
  }
  // Each attribute ends with a line feed, as the kernel's do.
  void set(const std::string& supply, const Attributes& attributes) const {
    std::filesystem::create_directories(path_ / supply);
    for (const auto& [name, value] : attributes)
      std::ofstream(path_ / supply / name, std::ios::binary) << value << '\n';
  }
  void remove(const std::string& supply) const { std::filesystem::remove_all(path_ / supply); }

  // A laptop on battery at 57 %.
  void setLaptop() const {
    set("AC", {{"type", "Mains"}, {"online", "0"}});
    set("BAT0", {{"type", "Battery"},
                 {"status", "Discharging"},
                 {"capacity", "57"},
                 {"energy_now", "32490000"},
                 {"energy_full", "57000000"},
                 {"energy_full_design", "60000000"},
                 {"power_now", "9500000"},
                 {"voltage_min_design", "11400000"}});
  }

 private:
  std::filesystem::path path_;
};

}  // namespace kelvane
