// The application on the session bus: one name, so that it runs once, and
// org.freedesktop.Application, by which desktops start it, open it again and choose its actions.
// Main thread.
//
// Anyone on the bus may call; what the application doesn't know is answered with an error or
// ignored, and nothing is opened for a caller.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <glib.h>

#include "platform/linux/glib/exported_object.h"
#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {

class ApplicationService {
 public:
  static constexpr const char* kName = "org.kelvane.Kelvane";
  static constexpr const char* kPath = "/org/kelvane/Kelvane";

  struct Handlers {
    std::function<void()> activate;                               // opened, or opened again
    std::function<void(const std::string& action)> chooseAction;  // one of `actions`
  };
  // The actions that are answered; others are errors.
  static constexpr const char* kQuit = "quit";
  static constexpr const char* kPreferences = "preferences";

  enum class Claim { granted, taken, failed };

  // Answers calls from here on; `bus` outlives this.
  ApplicationService(BusConnection* bus, Handlers handlers);
  ~ApplicationService();
  ApplicationService(const ApplicationService&) = delete;
  ApplicationService& operator=(const ApplicationService&) = delete;

  // Asks the bus for the name, which it has until this is destroyed. `failed` is said in one line
  // on standard error.
  Claim claim();

 private:
  void handle(const ExportedObject::Call& call);

  BusPtr bus_;
  Handlers handlers_;
  std::unique_ptr<ExportedObject> object_;
  bool hasName_ = false;
};

}  // namespace kelvane
