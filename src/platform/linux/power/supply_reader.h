// Reads a tree of power supplies. Main thread.
//
// The figures are read afresh each time. What is held open is the tree and each supply's folder,
// for as long as the tree lists the same entry: one that has gone and come back is another one.
// sysfs numbers its entries one after the other, so that a number comes back only after all others
// (the kernel's fs/kernfs/dir.c). Elsewhere, one that tells nothing any more is opened again.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <dirent.h>

#include "platform/linux/power/supply_folder.h"
#include "platform/linux/power/sysfs_supply.h"

namespace kelvane {

class SupplyReader {
 public:
  // The tree need not exist, now or ever.
  explicit SupplyReader(std::string directory);

  // Every supply, by name; none when the tree can't be read.
  std::vector<Supply> read(SupplyFields fields);
  // Reads what is missing of `supplies`, the latest reading, of which less was read; the state
  // stays.
  void addFigures(std::vector<Supply>& supplies, SupplyFields fields) const;

 private:
  struct Link {
    std::string name;
    ino_t number;
  };
  struct Entry {
    ino_t number;
    SupplyFolder folder;
  };

  void update();
  std::vector<Link> list();
  static std::vector<Link> linksIn(DIR* tree);
  Supply stateOf(Entry& entry) const;

  std::string directory_;
  std::unique_ptr<DIR, int (*)(DIR*)> tree_;
  std::vector<Entry> entries_;  // by name
};

}  // namespace kelvane
