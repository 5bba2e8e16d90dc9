// Everything the application needs of a computer. `main` fills it with the adaptors that the build
// chose and passes it down; it outlives the application. Main thread, but for `preferences`.
#pragma once

namespace kelvane {

class DeviceRegistry;
class Graphics;
class LoginItems;
class PowerSources;
class Preferences;
class RunLoop;
class StatusBar;
class SystemInfo;
class TextFormats;
class UserNotifications;
class Windows;
class Workspace;

struct Platform {
  DeviceRegistry& deviceRegistry;
  PowerSources& powerSources;
  Preferences& preferences;
  RunLoop& runLoop;
  StatusBar& statusBar;
  Graphics& graphics;
  UserNotifications& userNotifications;
  Windows& windows;
  LoginItems& loginItems;
  Workspace& workspace;
  SystemInfo& systemInfo;
  TextFormats& textFormats;
};

}  // namespace kelvane
