#include "platform/macos/windows/symbols.h"

#include "platform/macos/drawing/ns_image.h"
#include "platform/macos/foundation/strings.h"

namespace kelvane {
namespace {

void addRect(std::vector<PathStep>& path, const Rect& rect) {
  const double right = rect.x + rect.width;
  const double top = rect.y + rect.height;
  path.push_back({.kind = PathStep::Kind::move, .points = {Point{rect.x, rect.y}}});
  for (const Point& corner : {Point{right, rect.y}, Point{right, top}, Point{rect.x, top}})
    path.push_back({.kind = PathStep::Kind::line, .points = {corner}});
  path.push_back({.kind = PathStep::Kind::close});
}

// A screen with a bar at its top.
Picture menuBarPicture() {
  PictureLayer layer;
  addRect(layer.path, {.x = 3, .y = 5, .width = 26, .height = 22});
  addRect(layer.path, {.x = 5, .y = 7, .width = 22, .height = 14});
  return {.name = "menubar.rectangle", .size = {32, 32}, .layers = {std::move(layer)}};
}

}  // namespace

NSImage* symbolImage(const std::string& name, const std::string& label) {
  if (@available(macOS 11, *))
    return [NSImage imageWithSystemSymbolName:nsString(name)
                     accessibilityDescription:nsString(label)];
  if (name == "gearshape") return [NSImage imageNamed:NSImageNamePreferencesGeneral];
  return name == "menubar.rectangle" ? nsImage(menuBarPicture()) : nil;
}

}  // namespace kelvane
