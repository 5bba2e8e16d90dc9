#include "platform/linux/tray/dbus_menu_layout.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kelvane {
namespace {

// Deeper than any menu a person reads; a menu that contains itself ends here.
constexpr int kDeepest = 8;

// An underscore marks the mnemonic; two are one that is shown.
std::string withoutMnemonics(std::string text) {
  if (text.find('_') == std::string::npos) return text;
  std::string escaped;
  for (const char character : text) {
    if (character == '_') escaped += '_';
    escaped += character;
  }
  return escaped;
}

// What can't be changed by properties alone.
bool haveSameShape(const MenuEntry& a, const MenuEntry& b) {
  return a.isSeparator == b.isSeparator && a.hasSubmenu == b.hasSubmenu &&
         a.keyEquivalent == b.keyEquivalent;
}

// Whether two entries are one line at different times. A line that can be chosen is known by its
// text, so that a late click never reaches another command.
bool areSameLine(const MenuEntry& a, const MenuEntry& b) {
  return haveSameShape(a, b) && a.isEnabled == b.isEnabled && (!a.isEnabled || a.label == b.label);
}

using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

// The longest common subsequence, as pairs of indices.
Pairs commonLines(const std::vector<MenuEntry>& a, const std::vector<MenuEntry>& b) {
  const std::size_t columns = b.size() + 1;
  std::vector<std::size_t> length((a.size() + 1) * columns);
  for (std::size_t i = a.size(); i-- > 0;)
    for (std::size_t j = b.size(); j-- > 0;)
      length[i * columns + j] = areSameLine(a[i], b[j]) ? length[(i + 1) * columns + j + 1] + 1
                                                        : std::max(length[(i + 1) * columns + j],
                                                                   length[i * columns + j + 1]);
  Pairs pairs;
  for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
    if (areSameLine(a[i], b[j])) {
      pairs.emplace_back(i++, j++);
    } else if (length[(i + 1) * columns + j] >= length[i * columns + j + 1]) {
      ++i;
    } else {
      ++j;
    }
  }
  return pairs;
}

}  // namespace

DbusMenuLayout::DbusMenuLayout(std::function<std::string(std::string)> rewrite)
    : rewrite_(std::move(rewrite)) {
  root_.hasSubmenu = true;
  index(root_);
}

MenuChange DbusMenuLayout::update(const std::vector<MenuLine>& lines) {
  MenuChange change;
  std::vector<MenuEntry> fresh = entriesOf(lines, 1);
  adopt(fresh, root_.children, change);
  root_.children = std::move(fresh);
  if (change.layout) {
    change.changed.clear();
    byId_.clear();
  }
  index(root_);  // of the same layout each id has got another place
  return change;
}

const MenuEntry* DbusMenuLayout::find(int id) const {
  const auto found = byId_.find(id);
  return found == byId_.end() ? nullptr : found->second;
}

std::vector<MenuEntry> DbusMenuLayout::entriesOf(const std::vector<MenuLine>& lines,
                                                 int depth) const {
  std::vector<MenuEntry> entries;
  entries.reserve(lines.size());
  for (const MenuLine& line : lines) {
    if (line.kind == MenuLine::Kind::placeholder) continue;
    MenuEntry entry;
    entry.isSeparator = line.kind == MenuLine::Kind::separator;
    if (entry.isSeparator) {
      if (!entries.empty() && !entries.back().isSeparator) entries.push_back(std::move(entry));
      continue;
    }
    std::string title =
        line.title.empty() && line.attributedTitle ? line.attributedTitle->plainText() : line.title;
    if (rewrite_) title = rewrite_(std::move(title));
    entry.label = withoutMnemonics(std::move(title));
    entry.isEnabled = line.isEnabled;
    // Modifiers alone only select an alternate.
    if (!line.keyEquivalent.key.empty()) entry.keyEquivalent = line.keyEquivalent;
    entry.action = line.action;
    if (line.submenu && depth < kDeepest) {
      entry.hasSubmenu = true;
      entry.submenu = line.submenu;
      entry.children = entriesOf(line.submenu->lines(), depth + 1);
    }
    entries.push_back(std::move(entry));
  }
  if (!entries.empty() && entries.back().isSeparator) entries.pop_back();
  return entries;
}

// Gives `fresh` the ids of the lines of `old` that they continue, and new ids to the others.
void DbusMenuLayout::adopt(std::vector<MenuEntry>& fresh, const std::vector<MenuEntry>& old,
                           MenuChange& change) {
  Pairs pairs;
  if (std::ranges::equal(old, fresh, haveSameShape)) {
    pairs.reserve(fresh.size());
    for (std::size_t i = 0; i < fresh.size(); ++i) pairs.emplace_back(i, i);
  } else {
    change.layout = true;
    pairs = commonLines(old, fresh);
  }
  for (const auto& [from, to] : pairs) {
    MenuEntry& entry = fresh[to];
    entry.id = old[from].id;
    const MenuChange::Entry changed{entry.id, entry.label != old[from].label,
                                    entry.isEnabled != old[from].isEnabled};
    if (changed.label || changed.enabled) change.changed.push_back(changed);
    adopt(entry.children, old[from].children, change);
  }
  for (MenuEntry& entry : fresh)
    if (entry.id == kRootId) number(entry);
}

void DbusMenuLayout::number(MenuEntry& entry) {
  entry.id = ++lastId_;  // never used twice, so an event that comes late finds nothing
  for (MenuEntry& child : entry.children) number(child);
}

void DbusMenuLayout::index(const MenuEntry& entry) {
  byId_[entry.id] = &entry;
  for (const MenuEntry& child : entry.children) index(child);
}

}  // namespace kelvane
