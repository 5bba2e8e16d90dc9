// A property list in a file that several processes read and write. Any thread.
//
// Writers take turns by a lock beside the file, and replace it as a whole; readers need no lock.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "platform/linux/preferences/plist_conversion.h"
#include "platform/property_value.h"

namespace kelvane {

class PlistFile {
 public:
  // A symbolic link stays one: its target is read and replaced.
  explicit PlistFile(std::filesystem::path path) : path_(std::move(path)) {}

  const std::filesystem::path& path() const { return path_; }

  struct Contents {
    PlistNode dictionary;  // null when there is no file, or a problem
    std::string problem;   // why there is a file but nothing could be read, in words
  };
  Contents read() const;

  // Keys with what to store; absent: to remove.
  using Changes = std::map<std::string, std::optional<PropertyValue>>;

  struct Update {
    std::string failure;  // in words; unless the disk itself fails, the old file is as it was
    // The unreadable file that was replaced: what was wrong with it and where it is now.
    std::string problem;
    std::filesystem::path keptAs;
  };
  // Makes the changes in what the file holds at that moment, so that other keys keep what others
  // stored. When that is unreadable, it is kept aside as "….corrupt-" and `date`, and `everything`
  // is written in its place. Makes the folder, and waits until all is on the disk.
  Update update(const Changes& changes, const PropertyDictionary& everything,
                const std::string& date) const;

 private:
  std::filesystem::path path_;
};

}  // namespace kelvane
