// A stand-in for UPower on a bus of the test's own, that says what a test tells it to, sense or
// nonsense. Main thread; the default main context is iterated by the tests.
#pragma once

#include <map>
#include <string>

#include <gio/gio.h>

#include "platform/linux/glib/glib_ptr.h"
#include "platform/linux/glib/private_bus_test.h"

namespace kelvane {

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

 private:
  struct Device {
    GVariantPtr properties;
    guint registration = 0;
  };
  static void answer(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                     GVariant*, GDBusMethodInvocation*, gpointer);

  GObjectPtr<GDBusConnection> connection_;
  GDBusNodeInfoPtr interfaces_;
  guint daemon_ = 0;  // its registration
  std::map<std::string, Device> devices_;
  std::map<std::string, int> getAllCounts_;
};

// A stand-in for login1, on the same terms.
class FakeLogin {
 public:
  explicit FakeLogin(const PrivateBus& bus);
  void prepareForSleep(GVariant* parameters);

 private:
  GObjectPtr<GDBusConnection> connection_;
};

}  // namespace kelvane
