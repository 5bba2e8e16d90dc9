// What a session and a computer offer Kelvane, as it was found. Plain values, any thread.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/color.h"
#include "platform/linux/desktop/autostart_entry.h"
#include "platform/linux/power/sysfs_supply.h"
#include "platform/linux/power/upower_snapshot.h"
#include "platform/linux/tray/host_profile.h"
#include "platform/property_value.h"

namespace kelvane {

// Of a service on a bus. startable: nobody has its name, but the bus starts it for who calls it.
enum class Presence { absent, startable, running };

struct TrayFacts {
  std::string process;  // that has the watcher's name; empty when it can't be known
  TrayHost host = TrayHost::unknown;
  bool isAnswering = false;         // it has a list of items
  std::optional<bool> showsItems;   // somebody shows what it collects; absent: it does not say
  Slot slot;                        // that suits the host, with the desktop's scale
  std::string scaleSource;          // who said the scale; empty: nobody
  std::optional<Appearance> bar;    // absent when it can't be known
  std::optional<bool> darkWindows;  // absent: no preference
};

struct ApplicationFacts {
  bool isRunning = false;
  bool isItemRegistered = false;
  std::vector<std::pair<int, int>> pictures;  // width and height in pixels, as the tray has them
};

struct UPowerFacts {
  bool isWanted = true;    // it was not left out by an option
  std::string busProblem;  // why the system bus can't be reached; empty when it can
  Presence presence = Presence::absent;
  bool isAnswering = false;
  std::string version;
  UPowerDevice display;
  std::vector<std::pair<std::string, UPowerDevice>> devices;  // by the kernel's names
};

struct PowerFacts {
  std::string directory;         // the tree of supplies
  std::vector<Supply> supplies;  // what it lists
  UPowerFacts upower;
};

struct NotifierFacts {
  Presence presence = Presence::absent;
  bool isAnswering = false;
  std::string name, version;
  std::vector<std::string> abilities;
};

struct LoginFacts {
  std::string path;                       // of the entry
  std::optional<AutostartReading> entry;  // absent: there is none
  std::string problem;                    // why there is one but it can't be read; empty otherwise
  bool hasProgram = false;                // what it starts is there
};

struct PreferencesFacts {
  std::string path;
  std::optional<unsigned> mode;  // permission bits; absent: there is no file
  std::string problem;           // why it can't be read; empty otherwise
  PropertyDictionary values;
};

// What is asked on the session bus is empty when that can't be reached.
struct DoctorFacts {
  std::vector<std::string> desktops;       // see DesktopSession
  std::vector<std::string> distributions;  // see distributionNames
  std::string sessionBus;                  // its address
  std::string sessionBusProblem;           // why it can't be reached; empty when it can
  std::optional<TrayFacts> tray;           // absent: nobody has the watcher's name
  ApplicationFacts application;
  PowerFacts power;
  NotifierFacts notifier;
  Presence portal = Presence::absent;
  LoginFacts login;
  PreferencesFacts preferences;
};

}  // namespace kelvane
