// A message bus of the test's own, and a stand-in for UPower on it that says what a test tells it
// to, sense or nonsense. Main thread; the default main context is iterated by the tests.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include <gio/gio.h>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {

// Iterates the main context until `done` or for 5 seconds; whether it was done.
bool runUntil(const std::function<bool()>& done);

class PrivateBus {
 public:
  // `activatable`: the folder with the .service files of what the bus may start; none when empty.
  // Throws when there is no dbus-daemon.
  explicit PrivateBus(const std::string& activatable = "");
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  const std::string& address() const { return address_; }
  GObjectPtr<GDBusConnection> connect() const;

 private:
  std::string folder_;
  std::string address_;
  GObjectPtr<GSubprocess> daemon_;
};

// Properties are texts of GVariant's format: "{'Type': <uint32 2>, 'Percentage': <57.0>}".
class FakeUPower {
 public:
  explicit FakeUPower(const PrivateBus& bus);
  ~FakeUPower();

  // Adds or replaces a device without telling; its name is the last part of its path.
  void set(const std::string& device, const std::string& properties);
  void announce(const std::string& device);  // DeviceAdded
  void remove(const std::string& device);    // with DeviceRemoved
  // Takes the properties over and sends PropertiesChanged.
  void change(const std::string& device, const std::string& properties);
  void emit(const std::string& path, const std::string& interface, const std::string& member,
            const std::string& parameters);

  int getAllCount(const std::string& device) const;
  bool isSilent = false;  // answers no call while true

 private:
  struct Device {
    GVariantPtr properties;
    guint registration = 0;
  };
  static void answer(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                     GVariant*, GDBusMethodInvocation*, gpointer);

  GObjectPtr<GDBusConnection> connection_;
  GDBusNodeInfoPtr interfaces_;
  std::map<std::string, Device> devices_;
  std::map<std::string, int> getAllCounts_;
};

}  // namespace kelvane
