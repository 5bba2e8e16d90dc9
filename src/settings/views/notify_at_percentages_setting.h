// The levels at which to notify: a button, and the sheet that it opens. Main thread.
#pragma once

#include <string>
#include <vector>

#include "settings/views/view_context.h"
#include "settings/views/view_scope.h"

namespace kelvane {

class NotifyAtPercentagesSetting {
 public:
  // The offered levels, in the order in which they are shown.
  NotifyAtPercentagesSetting(const ViewContext& context, std::vector<double> percentages);

  ViewNode body(ViewScope& scope, const std::string& id);

 private:
  ViewNode sheet(ViewScope& scope, const std::string& id);
  ViewNode column(ViewScope& scope, const std::string& id, const std::string& title,
                  const SettingKey<Levels>& key) const;

  const ViewContext& context_;
  std::vector<double> percentages_;
  ViewState<bool> isShowingSheet_;
};

}  // namespace kelvane
