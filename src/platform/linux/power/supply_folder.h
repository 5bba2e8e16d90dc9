// One supply's folder in the tree of power supplies, held open: a path is walked once, not for each
// attribute. Main thread.
#pragma once

#include <optional>
#include <string>

#include "platform/linux/files/unique_fd.h"
#include "platform/linux/power/sysfs_supply.h"

namespace kelvane {

class SupplyFolder {
 public:
  // `tree` is the descriptor of the folder it is in, needed no longer than this.
  SupplyFolder(int tree, std::string name);

  // False when there is no such folder.
  bool isOpen() const { return static_cast<bool>(folder_); }
  const std::string& name() const { return name_; }

  // The state as it is now. What kind of supply it is never changes, so that is read until it is
  // known. Never blocks on what it finds (a FIFO, a device, a file without end).
  Supply readState();
  // Adds the other figures of a supply whose state has been read; the state stays.
  void readFigures(Supply& supply, SupplyFields fields) const;

 private:
  std::string name_;
  UniqueFd folder_;
  std::optional<SupplyType> type_;
  std::optional<SupplyScope> scope_;
};

}  // namespace kelvane
