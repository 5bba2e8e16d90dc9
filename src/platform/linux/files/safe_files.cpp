#include "platform/linux/files/safe_files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace kelvane {
namespace {

std::error_code lastError() { return {errno, std::generic_category()}; }

// Calls again when a signal interrupted it.
template <typename Call>
auto retrying(Call&& call) {
  decltype(call()) result;
  do {
    result = call();
  } while (result < 0 && errno == EINTR);
  return result;
}

std::error_code syncFolder(const std::filesystem::path& folder) {
  const UniqueFd fd(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!fd) return lastError();
  if (retrying([&] { return fsync(fd.get()); }) == 0 || errno == EINVAL) return {};
  return lastError();
}

}  // namespace

std::filesystem::path followLinks(std::filesystem::path path) {
  for (int links = 0; links < 40; ++links) {
    std::error_code error;
    const auto target = std::filesystem::read_symlink(path, error);
    if (error) break;
    path = path.parent_path() / target;
  }
  return path;
}

std::optional<std::string> readFile(const std::filesystem::path& path, std::size_t limit,
                                    std::error_code& error) {
  // O_NONBLOCK: a named pipe must not keep us waiting for its writer.
  const UniqueFd fd(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!fd || fstat(fd.get(), &status) != 0) {
    error = lastError();
    return std::nullopt;
  }
  if (!S_ISREG(status.st_mode)) {
    error = std::make_error_code(std::errc::not_supported);
    return std::nullopt;
  }
  std::string bytes;
  std::array<char, 4096> chunk;
  while (bytes.size() <= limit) {
    const auto wanted = std::min(chunk.size(), limit + 1 - bytes.size());
    const auto count = retrying([&] { return read(fd.get(), chunk.data(), wanted); });
    if (count < 0) {
      error = lastError();
      return std::nullopt;
    }
    if (count == 0) break;
    bytes.append(chunk.data(), static_cast<std::size_t>(count));
  }
  error.clear();
  return bytes;
}

std::error_code makeFolder(const std::filesystem::path& folder) {
  if (mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) return {};
  if (errno == ENOENT && folder.has_relative_path()) {
    if (const auto error = makeFolder(folder.parent_path())) return error;
    if (mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) return {};
  }
  return {errno, std::generic_category()};
}

std::optional<FileLock> FileLock::acquire(const std::filesystem::path& path,
                                          std::chrono::milliseconds patience,
                                          std::error_code& error) {
  constexpr std::chrono::milliseconds kPause{5};
  UniqueFd fd(open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
  if (!fd) {
    error = lastError();
    return std::nullopt;
  }
  while (flock(fd.get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) break;
    if (patience <= std::chrono::milliseconds::zero()) {
      error = std::make_error_code(std::errc::device_or_resource_busy);
      return std::nullopt;
    }
    patience -= kPause;
    std::this_thread::sleep_for(kPause);
  }
  error.clear();
  return FileLock(std::move(fd));
}

Replacement::Replacement(std::filesystem::path target, mode_t mode)
    : mode_(mode),
      target_(std::move(target)),
      temporary_(target_.parent_path() / ("." + target_.filename().string() + ".new")) {}

Replacement::~Replacement() { unlink(temporary_.c_str()); }

std::error_code Replacement::write(std::string_view bytes) {
  unlink(temporary_.c_str());  // left behind by one who died
  const UniqueFd fd(
      open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode_));
  if (!fd) return lastError();
  while (!bytes.empty()) {
    const auto count = retrying([&] { return ::write(fd.get(), bytes.data(), bytes.size()); });
    if (count < 0) return lastError();
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  if (retrying([&] { return fsync(fd.get()); }) != 0) return lastError();
  return {};
}

std::error_code Replacement::replace() {
  if (rename(temporary_.c_str(), target_.c_str()) != 0) return lastError();
  return syncFolder(target_.parent_path());
}

std::filesystem::path keepAside(const std::filesystem::path& file,
                                const std::filesystem::path& wanted, std::error_code& error) {
  auto name = wanted;
  for (int number = 2; std::filesystem::exists(std::filesystem::symlink_status(name, error));
       ++number) {
    name = wanted;
    name += "-" + std::to_string(number);
  }
  error.clear();
  if (link(file.c_str(), name.c_str()) != 0 && rename(file.c_str(), name.c_str()) != 0)
    error = lastError();
  return name;
}

}  // namespace kelvane
