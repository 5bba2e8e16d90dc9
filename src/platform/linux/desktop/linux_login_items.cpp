#include "platform/linux/desktop/linux_login_items.h"

#include <system_error>
#include <utility>

#include <glib.h>

#include "platform/linux/desktop/autostart_entry.h"
#include "platform/linux/files/safe_files.h"

namespace kelvane {
namespace {

constexpr std::size_t kMostBytes = 64 * 1024;
constexpr std::size_t kMostEntries = 512;

}  // namespace

std::filesystem::path userAutostartFolder() {
  return std::filesystem::path(g_get_user_config_dir()) / "autostart";
}

LinuxLoginItems::LinuxLoginItems(std::filesystem::path folder, std::filesystem::path helper,
                                 DesktopSession session)
    : folder_(std::move(folder)), helper_(std::move(helper)), session_(std::move(session)) {}

std::optional<std::vector<PropertyDictionary>> LinuxLoginItems::jobs() {
  std::vector<PropertyDictionary> jobs;
  std::error_code error;
  std::filesystem::directory_iterator next(folder_, error);
  if (error == std::errc::no_such_file_or_directory) return jobs;
  if (error) return std::nullopt;
  for (; !error && next != std::filesystem::directory_iterator() && jobs.size() < kMostEntries;
       next.increment(error)) {
    const std::filesystem::path& path = next->path();
    std::error_code unknown;
    if (path.extension() != ".desktop" || !std::filesystem::is_regular_file(path, unknown))
      continue;
    PropertyDictionary job = {{"Label", path.stem().string()}};
    const auto text = readFile(path, kMostBytes, unknown);
    if (text && text->size() <= kMostBytes)
      if (const auto isOn = isStartedAtLogin(*text, session_)) job.emplace("OnDemand", *isOn);
    jobs.push_back(std::move(job));
  }
  return jobs;
}

bool LinuxLoginItems::setEnabled(const std::string& label, bool enabled) {
  if (label.empty() || label.find('/') != std::string::npos ||
      label.find('\0') != std::string::npos)
    return false;
  const std::filesystem::path entry = folder_ / (label + ".desktop");
  if (enabled) return write(entry);
  std::error_code error;
  std::filesystem::remove(entry, error);
  return !error || error == std::errc::not_a_directory;
}

bool LinuxLoginItems::write(const std::filesystem::path& entry) const {
  if (!helper_.is_absolute() || makeFolder(folder_)) return false;
  Replacement replacement(entry, 0644);
  return !replacement.write(autostartEntry(helper_.string())) && !replacement.replace();
}

}  // namespace kelvane
