// Login items by the desktop's autostart folder: a job is an entry there. Main thread. Files are
// read when they are asked for, with a bound on their number and size.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/desktop/desktop_session.h"
#include "platform/login_items.h"

namespace kelvane {

// $XDG_CONFIG_HOME/autostart, or the same in ~/.config.
std::filesystem::path userAutostartFolder();

class LinuxLoginItems : public LoginItems {
 public:
  // `helper` is the absolute path of what a job starts; with another one none can be registered.
  LinuxLoginItems(std::filesystem::path folder, std::filesystem::path helper,
                  DesktopSession session = currentDesktopSession());

  // The label is the entry's name without ".desktop". Without the folder there are no jobs.
  std::optional<std::vector<PropertyDictionary>> jobs() override;

  // Writes the label's entry, in place of one that is there, or removes it. False for a label that
  // is no file name.
  bool setEnabled(const std::string& label, bool enabled) override;

 private:
  bool write(const std::filesystem::path& entry) const;

  const std::filesystem::path folder_;
  const std::filesystem::path helper_;
  const DesktopSession session_;
};

}  // namespace kelvane
