// The user's preferences in a property-list file that may be shared with other processes.
//
// Made and destroyed on the main thread; reading, setting and observing on any. What is set is
// written once per turn of the main loop, after what is more urgent; `synchronize` and the end of
// the object write at once. A write that fails is reported and tried again with the next one, and
// when another process has stored something.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "platform/linux/glib/glib_ptr.h"
#include "platform/linux/preferences/folder_watch.h"
#include "platform/linux/preferences/plist_file.h"
#include "platform/portable/preferences_table.h"

namespace kelvane {

class PlistPreferences : public PreferencesTable {
 public:
  // Told what the user should know, in one line; on any thread.
  using Report = std::function<void(const std::string&)>;

  // $XDG_CONFIG_HOME/kelvane/org.kelvane.Kelvane.plist, or the same in ~/.config.
  static std::filesystem::path standardPath();
  // "kelvane: " and the line, to standard error.
  static void reportOnStandardError(const std::string& line);

  // Reads the file; nothing is written until something is set. A file that can't be read is
  // reported and counts as empty.
  explicit PlistPreferences(std::filesystem::path path = standardPath(),
                            Report report = reportOnStandardError);
  ~PlistPreferences() override;

  // What is set from here on is written once other processes are followed: a start has more urgent
  // things to do than to wait for the disk. `synchronize` and the end write at once all the same.
  void holdWrites();
  // From here on what other processes store is told to the observers, from the main loop.
  void followOtherProcesses();

  void setObject(const std::string& key, PropertyValue value) override;
  bool synchronize() override;

 protected:
  void storedValueChanged(const std::string& key) override;

 private:
  // These keys, and those that could not be written before.
  void writeLater(std::set<std::string> keys);
  static gboolean onIdle(gpointer self);
  bool write();
  void reload();
  bool isUnwritten(const std::string& key);
  // Whether other folders than before are watched now.
  bool watchFolders();
  void folderChanged(const std::string& name);
  void reportUnreadable(const std::string& problem, const std::string& whatNow);
  void reportFailure(const std::string& failure);

  const PlistFile file_;
  const Report report_;

  // Held while the file is read or written; taken before `stateMutex_`, not while observers run.
  std::mutex fileMutex_;
  bool hasReportedUnreadable_ = false;
  std::string reportedFailure_;

  std::mutex stateMutex_;
  std::set<std::string> unwritten_;  // keys set here and not on the disk yet
  guint idleSource_ = 0;             // 0: no write is due
  bool areWritesHeld_ = false;

  // Main thread.
  bool isFollowing_ = false;
  std::set<std::filesystem::path> watchedFolders_;
  std::vector<std::unique_ptr<FolderWatch>> watches_;
};

}  // namespace kelvane
