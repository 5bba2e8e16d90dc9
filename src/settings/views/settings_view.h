// All that the settings window shows: its tabs. Main thread.
#pragma once

#include "settings/views/general_settings.h"
#include "settings/views/menu_bar_settings.h"

namespace kelvane {

class SettingsView {
 public:
  explicit SettingsView(const ViewContext& context);

  // The tree as it is now; what it lives on goes into the scope, which the view outlives.
  ViewNode body(ViewScope& scope);

 private:
  GeneralSettings general_;
  MenuBarSettings menuBar_;
};

}  // namespace kelvane
