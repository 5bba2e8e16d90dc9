#include "platform/linux/power/supply_reader.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kelvane {
namespace {

// More supplies than any computer has; a tree with more is not read to its end.
constexpr std::size_t kMostSupplies = 64;

bool tellsNothing(const Supply& supply) {
  return supply.isOfComputer() && !supply.online && !supply.present && !supply.status;
}

}  // namespace

SupplyReader::SupplyReader(std::string directory)
    : directory_(std::move(directory)), tree_(nullptr, closedir) {}

std::vector<Supply> SupplyReader::read(SupplyFields fields) {
  update();
  std::vector<Supply> supplies;
  supplies.reserve(entries_.size());
  for (Entry& entry : entries_) {
    Supply supply = stateOf(entry);
    if (!entry.folder.isOpen()) continue;
    entry.folder.readFigures(supply, fields);
    supplies.push_back(std::move(supply));
  }
  return supplies;
}

void SupplyReader::addFigures(std::vector<Supply>& supplies, SupplyFields fields) const {
  auto entry = entries_.begin();
  for (Supply& supply : supplies) {
    entry = std::find_if(entry, entries_.end(),
                         [&](const Entry& each) { return each.folder.name() == supply.name; });
    if (entry == entries_.end()) return;
    entry->folder.readFigures(supply, fields);
  }
}

Supply SupplyReader::stateOf(Entry& entry) const {
  Supply supply = entry.folder.readState();
  if (!tellsNothing(supply)) return supply;
  // What is held may have been taken away, and another one have come under its name and number.
  entry.folder = SupplyFolder(dirfd(tree_.get()), supply.name);
  return entry.folder.readState();
}

void SupplyReader::update() {
  const std::vector<Link> links = list();
  const auto isOf = [](const Entry& entry, const Link& link) {
    return entry.number == link.number && entry.folder.name() == link.name;
  };
  if (std::ranges::equal(entries_, links, isOf)) return;
  std::vector<Entry> entries;
  entries.reserve(links.size());
  for (const Link& link : links) {
    const auto known =
        std::ranges::find_if(entries_, [&](const Entry& entry) { return isOf(entry, link); });
    if (known != entries_.end())
      entries.push_back(std::move(*known));
    else
      entries.push_back({link.number, SupplyFolder(dirfd(tree_.get()), link.name)});
  }
  entries_ = std::move(entries);
}

std::vector<SupplyReader::Link> SupplyReader::list() {
  if (tree_) {
    rewinddir(tree_.get());
    // An empty tree may be one that has been taken away, with another one in its place.
    if (auto links = linksIn(tree_.get()); !links.empty()) return links;
  }
  tree_.reset(opendir(directory_.c_str()));
  return tree_ ? linksIn(tree_.get()) : std::vector<Link>();
}

std::vector<SupplyReader::Link> SupplyReader::linksIn(DIR* tree) {
  std::vector<Link> links;
  while (const dirent* entry = readdir(tree)) {
    if (entry->d_name[0] == '.') continue;
    links.push_back({entry->d_name, entry->d_ino});
    if (links.size() == kMostSupplies) break;
  }
  std::ranges::sort(links, {}, &Link::name);
  return links;
}

}  // namespace kelvane
