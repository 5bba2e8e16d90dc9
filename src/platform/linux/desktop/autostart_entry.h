// The text of an entry in the desktop's autostart folder: written and understood. Pure functions.
#pragma once

#include <optional>
#include <string>

#include "platform/linux/desktop/desktop_session.h"

namespace kelvane {

// An entry that starts this program, given by its absolute path, on every desktop.
std::string autostartEntry(const std::string& program);

struct AutostartReading {
  // Whether the desktop of this session starts the entry at login; see below.
  std::optional<bool> isStarted;
  std::string reason;   // why it does not, as the entry has it ("Hidden=true"); empty if it does
  std::string program;  // what it starts; empty when it does not say
};
AutostartReading readAutostartEntry(const std::string& entry, const DesktopSession& session);

// Only whether it is started. False for what the user or the
// desktop has switched off, for another desktop's entry and for a program that is not there; absent
// when the text is no entry that says what to start.
std::optional<bool> isStartedAtLogin(const std::string& entry, const DesktopSession& session);

}  // namespace kelvane
