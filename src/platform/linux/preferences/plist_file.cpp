#include "platform/linux/preferences/plist_file.h"

#include <chrono>
#include <system_error>

#include "platform/linux/files/safe_files.h"
#include "platform/linux/preferences/plist_limits.h"
#include "platform/linux/preferences/plist_text.h"

namespace kelvane {
namespace {

// Longer than any honest writer holds the lock, short enough for a user to wait.
constexpr std::chrono::seconds kLockPatience{2};

PlistFile::Contents readPlist(const std::filesystem::path& path) {
  std::error_code error;
  const auto bytes = readFile(path, kMaximumPlistBytes, error);
  if (!bytes &&
      (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory))
    return {};
  if (!bytes) return {nullptr, error.message()};
  auto parsed = parsePlist(*bytes);
  return {std::move(parsed.dictionary), std::move(parsed.problem)};
}

void apply(const PlistFile::Changes& changes, plist_t dictionary) {
  for (const auto& [key, value] : changes) {
    if (value) {
      plist_dict_set_item(dictionary, key.c_str(), toPlist(*value).release());
    } else {
      plist_dict_remove_item(dictionary, key.c_str());
    }
  }
}

}  // namespace

PlistFile::Contents PlistFile::read() const { return readPlist(path_); }

PlistFile::Update PlistFile::update(const Changes& changes, const PropertyDictionary& everything,
                                    const std::string& date) const {
  if (const auto error = makeFolder(path_.parent_path())) return {error.message(), {}, {}};
  const auto target = followLinks(path_);
  auto lockPath = target;
  lockPath += ".lock";
  std::error_code error;
  const auto lock = FileLock::acquire(lockPath, kLockPatience, error);
  if (!lock) return {error.message(), {}, {}};

  auto contents = readPlist(target);
  if (!contents.problem.empty()) contents.dictionary = toPlist(everything);
  if (!contents.dictionary) contents.dictionary = toPlist(PropertyDictionary());
  apply(changes, contents.dictionary.get());
  const std::string xml = plistXml(contents.dictionary.get());
  // What we would refuse to read must not take the place of what can be read.
  if (const auto refused = plistRefusal(xml)) return {"the settings would be " + *refused, {}, {}};

  Replacement replacement(target);
  if ((error = replacement.write(xml))) return {error.message(), {}, {}};
  Update update;
  if (!contents.problem.empty()) {
    auto wanted = target;
    wanted += ".corrupt-" + date;
    update.keptAs = keepAside(target, wanted, error);
    if (error) return {error.message(), {}, {}};
    update.problem = std::move(contents.problem);
  }
  if ((error = replacement.replace())) update.failure = error.message();
  return update;
}

}  // namespace kelvane
