// A menu's lines as com.canonical.dbusmenu exports them: a tree of entries with ids. Pure: no bus.
//
// A rebuilt menu is compared with what is exported, and what is still the same line keeps its id,
// so that a host has to read no more than what has changed and an open menu stays open. Main
// thread.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/menu.h"

namespace kelvane {

struct MenuEntry {
  int id = 0;
  bool isSeparator = false;
  bool isEnabled = true;
  std::string label;  // mnemonics escaped
  KeyEquivalent keyEquivalent;
  bool hasSubmenu = false;
  std::vector<MenuEntry> children;
  std::shared_ptr<Menu> submenu;
  std::function<void()> action;
};

// What hosts must be told. `changed` holds the entries of which something differs; it is empty when
// the layout has changed, because hosts then read everything again.
struct MenuChange {
  struct Entry {
    int id = 0;
    bool label = false;
    bool enabled = false;
    bool operator==(const Entry&) const = default;
  };
  bool layout = false;
  std::vector<Entry> changed;
  bool operator==(const MenuChange&) const = default;
};

class DbusMenuLayout {
 public:
  // The root of the tree, which stands for the menu itself.
  static constexpr int kRootId = 0;

  // `rewrite` is applied to each title; empty: nothing is rewritten.
  explicit DbusMenuLayout(std::function<std::string(std::string)> rewrite = {});
  DbusMenuLayout(const DbusMenuLayout&) = delete;
  DbusMenuLayout& operator=(const DbusMenuLayout&) = delete;

  // Takes over the lines and tells what is different from before. Placeholders are left out and
  // alternates are plain lines, because no host passes on the modifier keys. Separators show only
  // between two lines, one at a time.
  MenuChange update(const std::vector<MenuLine>& lines);

  const MenuEntry& root() const { return root_; }
  // Null when no entry has this id. Valid until the next update.
  const MenuEntry* find(int id) const;
  // All entries by id, the root included. Valid until the next update.
  const std::map<int, const MenuEntry*>& entries() const { return byId_; }

 private:
  std::vector<MenuEntry> entriesOf(const std::vector<MenuLine>& lines, int depth) const;
  void adopt(std::vector<MenuEntry>& fresh, const std::vector<MenuEntry>& old, MenuChange& change);
  void number(MenuEntry& entry);
  void index(const MenuEntry& entry);

  std::function<std::string(std::string)> rewrite_;
  MenuEntry root_;
  std::map<int, const MenuEntry*> byId_;
  int lastId_ = kRootId;
};

}  // namespace kelvane
