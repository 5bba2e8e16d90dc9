#include "platform/linux/desktop/linux_system_info.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace kelvane {
namespace {

constexpr std::size_t kMostBytes = 64 * 1024;
constexpr int kMostOutputs = 256;

// A regular file's text, cut at 64 KiB; absent when it can't be read.
std::optional<std::string> readText(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
  if (file < 0) return std::nullopt;
  std::optional<std::string> text;
  struct stat about {};
  if (fstat(file, &about) == 0 && S_ISREG(about.st_mode)) {
    text.emplace();
    std::array<char, 4096> buffer{};
    while (text->size() < kMostBytes) {
      const ssize_t got = read(file, buffer.data(), buffer.size());
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) break;
      text->append(buffer.data(), static_cast<std::size_t>(got));
    }
  }
  close(file);
  return text;
}

// Device-tree texts end with a NUL, others with a line feed.
std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kSpace(" \t\r\n\0", 5);
  const auto first = text.find_first_not_of(kSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

// Calls `use` with each line until it answers true.
template <typename Use>
void forEachLine(std::string_view text, Use use) {
  while (!text.empty()) {
    const auto end = text.find('\n');
    if (use(text.substr(0, end)) || end == std::string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}

std::optional<std::uint64_t> wholeNumber(std::string_view text) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end != text.data() ? std::optional(value) : std::nullopt;
}

std::optional<std::string> osReleaseEntry(const std::string& root, std::string_view key) {
  for (const char* path : {"/etc/os-release", "/usr/lib/os-release"})
    if (const auto text = readText(root + path)) return osReleaseValue(*text, key);
  return std::nullopt;
}

constexpr std::array<std::pair<std::string_view, std::string_view>, 48> kLanguages{{
    {"af", "Afrikaans"},
    {"ar", "Arabic"},
    {"be", "Belarusian"},
    {"bg", "Bulgarian"},
    {"bn", "Bangla"},
    {"ca", "Catalan"},
    {"cs", "Czech"},
    {"cy", "Welsh"},
    {"da", "Danish"},
    {"de", "German"},
    {"el", "Greek"},
    {"en", "English"},
    {"eo", "Esperanto"},
    {"es", "Spanish"},
    {"et", "Estonian"},
    {"eu", "Basque"},
    {"fa", "Persian"},
    {"fi", "Finnish"},
    {"fr", "French"},
    {"ga", "Irish"},
    {"gl", "Galician"},
    {"he", "Hebrew"},
    {"hi", "Hindi"},
    {"hr", "Croatian"},
    {"hu", "Hungarian"},
    {"id", "Indonesian"},
    {"is", "Icelandic"},
    {"it", "Italian"},
    {"ja", "Japanese"},
    {"ko", "Korean"},
    {"lt", "Lithuanian"},
    {"lv", "Latvian"},
    {"nb", "Norwegian Bokmål"},
    {"nl", "Dutch"},
    {"nn", "Norwegian Nynorsk"},
    {"pl", "Polish"},
    {"pt", "Portuguese"},
    {"ro", "Romanian"},
    {"ru", "Russian"},
    {"sk", "Slovak"},
    {"sl", "Slovenian"},
    {"sr", "Serbian"},
    {"sv", "Swedish"},
    {"th", "Thai"},
    {"tr", "Turkish"},
    {"uk", "Ukrainian"},
    {"vi", "Vietnamese"},
    {"zh", "Chinese"},
}};

}  // namespace

std::optional<std::string> osReleaseValue(std::string_view text, std::string_view key) {
  std::string value;
  forEachLine(text, [&](std::string_view line) {
    line = trimmed(line);
    if (!line.starts_with(key) || line.substr(key.size(), 1) != "=") return false;
    line.remove_prefix(key.size() + 1);
    const char quote = line.empty() ? '\0' : line.front();
    const bool isQuoted = quote == '"' || quote == '\'';
    if (isQuoted) line.remove_prefix(1);
    for (std::size_t i = 0; i < line.size(); ++i) {
      if (isQuoted && line[i] == quote) break;
      // Within single quotes a backslash is itself, as in a shell.
      if (line[i] == '\\' && quote != '\'' && i + 1 < line.size()) ++i;
      value += line[i];
    }
    return true;
  });
  return value.empty() ? std::nullopt : std::optional(value);
}

std::optional<std::string> localeFromEnvironmentValue(std::string_view value) {
  const std::string_view name = value.substr(0, value.find_first_of(".@"));
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  const std::string_view language = name.substr(0, name.find('_'));
  if (language.size() < 2 || language.size() > 3 || name.size() > 16 ||
      !std::ranges::all_of(language, isLetter))
    return std::nullopt;
  const bool isPlain = std::ranges::all_of(
      name, [&](char c) { return isLetter(c) || c == '_' || (c >= '0' && c <= '9'); });
  return isPlain ? std::optional<std::string>(name) : std::nullopt;
}

std::optional<std::uint64_t> proportionalBytes(std::string_view smapsRollup) {
  std::optional<std::uint64_t> kilobytes;
  forEachLine(smapsRollup, [&](std::string_view line) {
    if (!line.starts_with("Pss:")) return false;
    kilobytes = wholeNumber(trimmed(line.substr(4)));
    return true;
  });
  return kilobytes ? std::optional(*kilobytes * 1024) : std::nullopt;
}

LinuxSystemInfo::LinuxSystemInfo(std::string root) : root_(std::move(root)) {}

LinuxSystemInfo::~LinuxSystemInfo() = default;

std::optional<SystemVersion> LinuxSystemInfo::macOSVersion() { return std::nullopt; }

std::string LinuxSystemInfo::systemDescription() {
  if (const auto prettyName = osReleaseEntry(root_, "PRETTY_NAME")) return *prettyName;
  return osReleaseEntry(root_, "NAME").value_or("Linux");
}

bool LinuxSystemInfo::isLowPowerModeEnabled() {
  if (!profile_)
    profile_ = std::make_unique<PowerProfileMirror>([this] {
      if (lowPowerModeChanged_) lowPowerModeChanged_();
    });
  return profile_->isPowerSaver();
}

void LinuxSystemInfo::setLowPowerModeObserver(std::function<void()> changed) {
  lowPowerModeChanged_ = std::move(changed);
}

std::optional<std::string> LinuxSystemInfo::hardwareModel() {
  for (const char* path : {"/sys/class/dmi/id/product_name", "/proc/device-tree/model"}) {
    const auto text = readText(root_ + path);
    if (text && !trimmed(*text).empty()) return std::string(trimmed(*text));
  }
  return std::nullopt;
}

std::optional<std::string> LinuxSystemInfo::architecture() {
  utsname names{};
  if (uname(&names) != 0) return std::nullopt;
  return std::string(names.machine);
}

std::string LinuxSystemInfo::localeIdentifier() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    // The first that is set and not empty counts.
    const char* value = std::getenv(variable);
    if (value && *value) return localeFromEnvironmentValue(value).value_or("en_US");
  }
  return "en_US";
}

std::string LinuxSystemInfo::languageNameInEnglish() {
  const std::string locale = localeIdentifier();
  const std::string code = locale.substr(0, locale.find('_'));
  const auto found =
      std::ranges::find(kLanguages, code, [](const auto& each) { return each.first; });
  return found == kLanguages.end() ? code : std::string(found->second);
}

std::optional<std::uint64_t> LinuxSystemInfo::memoryFootprint() {
  if (const auto rollup = readText(root_ + "/proc/self/smaps_rollup"))
    if (const auto bytes = proportionalBytes(*rollup)) return bytes;
  // statm(5): total pages, then resident ones.
  const auto pages = readText(root_ + "/proc/self/statm");
  const auto space = pages ? pages->find(' ') : std::string::npos;
  const long pageSize = sysconf(_SC_PAGESIZE);
  if (space == std::string::npos || pageSize <= 0) return std::nullopt;
  const auto resident = wholeNumber(std::string_view(*pages).substr(space + 1));
  return resident ? std::optional(*resident * static_cast<std::uint64_t>(pageSize)) : std::nullopt;
}

int LinuxSystemInfo::screenCount() {
  int connected = 0;
  int outputs = 0;
  std::error_code error;
  for (std::filesystem::directory_iterator next(root_ + "/sys/class/drm", error), end;
       !error && next != end && outputs < kMostOutputs; next.increment(error), ++outputs) {
    const auto status = readText((next->path() / "status").string());
    if (status && trimmed(*status) == "connected") ++connected;
  }
  return connected;
}

double LinuxSystemInfo::primaryScreenScale() { return 1; }

ModifierKeys LinuxSystemInfo::modifierKeys() { return {}; }

}  // namespace kelvane
