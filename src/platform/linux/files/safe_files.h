// Reading and replacing small files so that nobody ever sees half of one. Any thread, any process.
//
// What fails is answered as the error of the system call.
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include <sys/types.h>

#include "platform/linux/files/unique_fd.h"

namespace kelvane {

// Where a path leads once its last component, if that is a symbolic link, is followed; also when
// there is nothing there. Links in a circle lead nowhere in particular.
std::filesystem::path followLinks(std::filesystem::path path);

// The whole of a regular file; absent, with `error` set, when it can't be read. A file of more than
// `limit` bytes is cut off one byte after them.
std::optional<std::string> readFile(const std::filesystem::path& path, std::size_t limit,
                                    std::error_code& error);

// Like mkdir -p, for the user alone.
std::error_code makeFolder(const std::filesystem::path& folder);

// Held by one process, or one holder of it in a process, at a time; the file it makes stays.
class FileLock {
 public:
  // Waits up to `patience`. A file system without locks is answered with a lock that keeps nobody
  // out: storing at all is better than not.
  static std::optional<FileLock> acquire(const std::filesystem::path& path,
                                         std::chrono::milliseconds patience,
                                         std::error_code& error);

 private:
  explicit FileLock(UniqueFd fd) : fd_(std::move(fd)) {}
  UniqueFd fd_;
};

// A file being written beside the one it will replace; it goes away unless `replace` succeeds. Only
// one at a time for a target: where several may write it, whoever makes it holds the target's lock.
class Replacement {
 public:
  // `mode` is the file's, less the process's umask.
  explicit Replacement(std::filesystem::path target, mode_t mode = 0600);
  ~Replacement();
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  // Writes the contents and waits until they are on the disk.
  std::error_code write(std::string_view bytes);
  // Puts it in the target's place, and waits until that is on the disk.
  std::error_code replace();

 private:
  const mode_t mode_;
  const std::filesystem::path target_;
  const std::filesystem::path temporary_;
};

// Gives the file a second name, or the new name where that can't be. The name is altered when there
// is something of that name; answers the one that was given.
std::filesystem::path keepAside(const std::filesystem::path& file,
                                const std::filesystem::path& wanted, std::error_code& error);

}  // namespace kelvane
