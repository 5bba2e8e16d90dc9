#include "settings/views/settings_view.h"

#include <utility>

namespace kelvane {
namespace {

constexpr double kWidth = 300;

struct SettingsTab {
  const char* title;
  const char* symbol;
};
constexpr SettingsTab kGeneralTab{"General", "gearshape"};
constexpr SettingsTab kMenuBarTab{"Menu Bar", "menubar.rectangle"};

ViewNode makeTab(const SettingsTab& tab, const std::string& id, ViewNode content) {
  ViewNode node = makeNode(ViewNode::Kind::tab, id, tab.title);
  node.symbol = tab.symbol;
  node.children.push_back(std::move(content));
  return node;
}

}  // namespace

SettingsView::SettingsView(const ViewContext& context) : general_(context), menuBar_(context) {}

ViewNode SettingsView::body(ViewScope& scope) {
  ViewNode tabs = makeNode(ViewNode::Kind::tabView, "settings");
  tabs.width = kWidth;
  tabs.children = {
      makeTab(kGeneralTab, "settings/general", general_.body(scope, "settings/general/form")),
      makeTab(kMenuBarTab, "settings/menuBar", menuBar_.body(scope, "settings/menuBar/form"))};
  return tabs;
}

}  // namespace kelvane
