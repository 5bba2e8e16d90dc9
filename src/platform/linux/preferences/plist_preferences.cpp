#include "platform/linux/preferences/plist_preferences.h"

#include <cstdio>
#include <utility>

#include "platform/linux/files/safe_files.h"

namespace kelvane {
namespace {

std::string timestamp() {
  const std::unique_ptr<GDateTime, decltype(&g_date_time_unref)> now(g_date_time_new_now_utc(),
                                                                     &g_date_time_unref);
  return GCharPtr(g_date_time_format(now.get(), "%Y%m%dT%H%M%SZ")).get();
}

}  // namespace

std::filesystem::path PlistPreferences::standardPath() {
  return std::filesystem::path(g_get_user_config_dir()) / "kelvane" / "org.kelvane.Kelvane.plist";
}

void PlistPreferences::reportOnStandardError(const std::string& line) {
  std::fprintf(stderr, "kelvane: %s\n", line.c_str());
}

PlistPreferences::PlistPreferences(std::filesystem::path path, Report report)
    : file_(std::move(path)), report_(std::move(report)) {
  const auto contents = file_.read();
  if (!contents.problem.empty())
    reportUnreadable(contents.problem,
                     "default settings are used, and the first change keeps the file as " +
                         file_.path().filename().string() + ".corrupt-DATE");
  load(valuesOf(contents.dictionary.get()));
}

PlistPreferences::~PlistPreferences() {
  watches_.clear();
  {
    const std::lock_guard lock(stateMutex_);
    if (idleSource_ != 0) g_source_remove(idleSource_);
  }
  write();
}

void PlistPreferences::holdWrites() {
  const std::lock_guard lock(stateMutex_);
  areWritesHeld_ = true;
}

void PlistPreferences::followOtherProcesses() {
  isFollowing_ = true;
  {
    const std::lock_guard lock(stateMutex_);
    areWritesHeld_ = false;
  }
  writeLater({});
  watchFolders();
  // What happened between reading the file and now.
  reload();
}

void PlistPreferences::setObject(const std::string& key, PropertyValue value) {
  // As the file will have it, so that reading it again is no change.
  PreferencesTable::setObject(key, asKept(std::move(value)));
}

bool PlistPreferences::synchronize() { return write(); }

void PlistPreferences::storedValueChanged(const std::string& key) { writeLater({key}); }

void PlistPreferences::writeLater(std::set<std::string> keys) {
  const std::lock_guard lock(stateMutex_);
  unwritten_.merge(keys);
  if (unwritten_.empty() || areWritesHeld_ || idleSource_ != 0) return;
  idleSource_ = g_idle_add(onIdle, this);
}

gboolean PlistPreferences::onIdle(gpointer self) {
  auto& preferences = *static_cast<PlistPreferences*>(self);
  {
    const std::lock_guard lock(preferences.stateMutex_);
    preferences.idleSource_ = 0;
  }
  preferences.write();
  // The write may have made the folder.
  if (preferences.isFollowing_ && preferences.watchFolders()) preferences.reload();
  return G_SOURCE_REMOVE;
}

bool PlistPreferences::write() {
  const std::lock_guard writing(fileMutex_);
  std::set<std::string> keys;
  {
    const std::lock_guard lock(stateMutex_);
    keys = std::exchange(unwritten_, {});
  }
  if (keys.empty()) return true;

  const auto everything = stored();
  PlistFile::Changes changes;
  for (const auto& key : keys) {
    const auto found = everything.find(key);
    changes.emplace(key, found == everything.end() ? std::nullopt : std::optional(found->second));
  }
  const auto update = file_.update(changes, everything, timestamp());
  if (!update.problem.empty())
    reportUnreadable(update.problem, "it is kept as " + update.keptAs.string());
  reportFailure(update.failure);
  if (update.failure.empty()) return true;
  const std::lock_guard lock(stateMutex_);
  unwritten_.merge(keys);
  return false;
}

// A file that can't be read just now may be one that is being written: its values stay, and the
// event after this one, or our next write, finds out.
void PlistPreferences::reload() {
  PlistFile::Changes changes;
  {
    const std::lock_guard reading(fileMutex_);
    const auto contents = file_.read();
    if (!contents.problem.empty()) return;
    const auto values = valuesOf(contents.dictionary.get());
    const auto known = stored();
    for (const auto& [key, value] : values)
      if (const auto found = known.find(key); found == known.end() || found->second != value)
        changes.emplace(key, value);
    for (const auto& [key, value] : known)
      if (!values.contains(key)) changes.emplace(key, std::nullopt);
  }
  for (const auto& [key, value] : changes)
    // Ours comes after theirs, also when an observer has just set it.
    if (!isUnwritten(key)) changedElsewhere(key, value);
  // What could not be written: others have found the room that it lacked.
  if (!changes.empty()) writeLater({});
}

bool PlistPreferences::isUnwritten(const std::string& key) {
  const std::lock_guard lock(stateMutex_);
  return unwritten_.contains(key);
}

// The folder of the file, and the one of its target when it is a symbolic link; those that exist.
bool PlistPreferences::watchFolders() {
  std::set<std::filesystem::path> folders;
  for (const auto& file : {file_.path(), followLinks(file_.path())}) {
    std::error_code error;
    auto folder = std::filesystem::canonical(file.parent_path(), error);
    if (!error) folders.insert(std::move(folder));
  }
  if (folders == watchedFolders_) return false;
  watches_.clear();
  for (const auto& folder : folders)
    watches_.push_back(std::make_unique<FolderWatch>(
        folder, [this](const std::string& name) { folderChanged(name); }));
  watchedFolders_ = std::move(folders);
  return true;
}

void PlistPreferences::folderChanged(const std::string& name) {
  if (name.empty()) {
    watchedFolders_.clear();
    watchFolders();
  } else if (name != file_.path().filename() && name != followLinks(file_.path()).filename()) {
    return;
  }
  reload();
}

void PlistPreferences::reportUnreadable(const std::string& problem, const std::string& whatNow) {
  if (std::exchange(hasReportedUnreadable_, true)) return;
  report_("the preferences in " + file_.path().string() + " can't be read (" + problem +
          "): " + whatNow);
}

// Once, until something else goes wrong or all is well again.
void PlistPreferences::reportFailure(const std::string& failure) {
  if (!failure.empty() && failure != reportedFailure_)
    report_("can't write the preferences to " + file_.path().string() + " (" + failure +
            "); the next change tries again");
  reportedFailure_ = failure;
}

}  // namespace kelvane
