#include "platform/linux/desktop/autostart_entry.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {
namespace {

constexpr const char* kGroup = "Desktop Entry";

struct GKeyFileDeleter {
  void operator()(GKeyFile* file) const { g_key_file_unref(file); }
};
using GKeyFilePtr = std::unique_ptr<GKeyFile, GKeyFileDeleter>;

// The value of a key that holds a text, as it is written in the file.
std::string textValue(std::string_view text) {
  std::string value;
  for (const char c : text) {
    switch (c) {
      case '\\':
        value += "\\\\";
        break;
      case '\n':
        value += "\\n";
        break;
      case '\t':
        value += "\\t";
        break;
      case '\r':
        value += "\\r";
        break;
      default:
        value += c;
    }
  }
  return value.starts_with(' ') ? "\\s" + value.substr(1) : value;
}

// One word of a command line.
std::string commandWord(std::string_view text) {
  const bool isPlain = std::ranges::all_of(text, [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("/._-+").find(c) != std::string_view::npos;
  });
  if (isPlain) return std::string(text);
  std::string word = "\"";
  for (const char c : text) {
    if (std::string_view("\"`$\\").find(c) != std::string_view::npos) word += '\\';
    if (c == '%') word += '%';  // Alone it would begin a field code.
    word += c;
  }
  return word + "\"";
}

std::string text(GKeyFile* file, const char* key) {
  const GCharPtr value(g_key_file_get_string(file, kGroup, key, nullptr));
  return value ? value.get() : "";
}

// The program of a command line.
std::string firstWord(const std::string& command) {
  char** words = nullptr;
  if (!g_shell_parse_argv(command.c_str(), nullptr, &words, nullptr)) return "";
  const std::string first = words[0];
  g_strfreev(words);
  return first;
}

// Absent when the key is missing or holds something else.
std::optional<bool> flag(GKeyFile* file, const char* key) {
  const std::string value = text(file, key);
  if (value == "true") return true;
  return value == "false" ? std::optional(false) : std::nullopt;
}

bool lists(GKeyFile* file, const char* key, const std::string& desktop) {
  std::string names = text(file, key);
  std::ranges::replace(names, ';', ':');
  return std::ranges::count(desktopNames(names), desktop) > 0;
}

// The first of the desktop's names that either key knows decides.
bool isForDesktop(GKeyFile* file, const std::vector<std::string>& desktops) {
  for (const std::string& desktop : desktops) {
    if (lists(file, "OnlyShowIn", desktop)) return true;
    if (lists(file, "NotShowIn", desktop)) return false;
  }
  return !g_key_file_has_key(file, kGroup, "OnlyShowIn", nullptr);
}

}  // namespace

std::string autostartEntry(const std::string& program) {
  return "[Desktop Entry]\n"
         "Type=Application\n"
         "Name=Kelvane\n"
         "Comment=Shows the laptop’s battery in the tray\n"
         "Icon=org.kelvane.Kelvane\n"
         "Exec=" +
         textValue(commandWord(program)) +
         "\n"
         "TryExec=" +
         textValue(program) +
         "\n"
         "Terminal=false\n"
         "StartupNotify=false\n"
         "X-GNOME-Autostart-enabled=true\n";
}

AutostartReading readAutostartEntry(const std::string& entry, const DesktopSession& session) {
  const GKeyFilePtr owner(g_key_file_new());
  GKeyFile* file = owner.get();
  if (!g_key_file_load_from_data(file, entry.data(), entry.size(), G_KEY_FILE_NONE, nullptr) ||
      !g_key_file_has_group(file, kGroup))
    return {std::nullopt, "it is no desktop entry", ""};
  AutostartReading reading{false, "", firstWord(text(file, "Exec"))};
  const auto because = [&](std::string reason) {
    reading.reason = std::move(reason);
    return reading;
  };
  // A hidden entry need not say anything else.
  if (flag(file, "Hidden").value_or(false)) return because("Hidden=true");
  if (text(file, "Type") != "Application" || text(file, "Exec").empty()) {
    reading.isStarted.reset();
    return because("it does not say what to start");
  }
  for (const char* key : {"X-GNOME-Autostart-enabled", "X-MATE-Autostart-enabled"})
    if (!flag(file, key).value_or(true)) return because(std::string(key) + "=false");
  if (flag(file, "X-systemd-skip").value_or(false)) return because("X-systemd-skip=true");
  const std::string needed = text(file, "TryExec");
  if (!needed.empty() && !session.hasProgram(needed)) return because("TryExec=" + needed);
  if (!isForDesktop(file, session.desktops)) return because("it is for other desktops");
  reading.isStarted = true;
  return reading;
}

std::optional<bool> isStartedAtLogin(const std::string& entry, const DesktopSession& session) {
  return readAutostartEntry(entry, session).isStarted;
}

}  // namespace kelvane
