// The preferences of the in-memory computer: nothing reaches a disk, and a test can play another
// process or a full disk. Any thread may read, set and observe; the rest is for one thread.
#pragma once

#include <optional>
#include <string>

#include "platform/portable/preferences_table.h"

namespace kelvane {

class MemoryPreferences : public PreferencesTable {
 public:
  // `stored` is what an earlier run left behind.
  explicit MemoryPreferences(PropertyDictionary stored = {})
      : PreferencesTable(std::move(stored)), written_(this->stored()) {}

  // Counts as written from here on, unless `failsToSynchronize`.
  bool synchronize() override;

  // Another process stores `value`, or removes what is stored when absent.
  void changeElsewhere(const std::string& key, std::optional<PropertyValue> value);

  // What would still be there had the program died just now.
  const PropertyDictionary& written() const { return written_; }

  bool failsToSynchronize = false;

 protected:
  void storedValueChanged(const std::string&) override {}

 private:
  PropertyDictionary written_;
};

}  // namespace kelvane
