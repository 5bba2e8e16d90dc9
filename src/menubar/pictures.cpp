#include "menubar/pictures.h"

#include <array>
#include <string>
#include <utility>

#include "kit/fatal_error.h"
#include "menubar/path_builder.h"

namespace kelvane {
namespace {

// Edges lie on whole points, so that the frame is crisp at every whole scale.
constexpr Size kBodySize{28, 14};
constexpr double kBoltWidth = 8;  // the bolt and its distance from the body

PictureLayer layer(const PathBuilder& path) { return {path.steps(), 1, {}}; }
PictureLayer layer(const PathBuilder& path, Color color) { return {path.steps(), 1, color}; }

// Frame and terminal of the battery, starting at `x`.
PathBuilder body(double x) {
  PathBuilder path;
  path.roundedFrame({x, 0, 26, 14}, 4, 1);
  path.roundedRect({x + 26.9, 4.5, 1.1, 5}, {.bottomRight = 1.1, .topRight = 1.1});
  return path;
}

Picture batteryIcon() { return {"BatteryIcon", kBodySize, {layer(body(0))}, true}; }

Picture batteryChargingIcon() {
  return {"BatteryChargingIcon",
          {kBodySize.width + kBoltWidth, kBodySize.height},
          {layer(boltOutline({0.2, 1, 6.6, 12})), layer(body(kBoltWidth))},
          true};
}

// A plug lying on its side, its pins to the right.
Picture powerIcon() {
  PathBuilder plug;
  plug.roundedRect({5, 0.5, 7.5, 11},
                   {.bottomLeft = 5.5, .bottomRight = 1, .topRight = 1, .topLeft = 5.5});
  PathBuilder cord;
  cord.roundedRect({0, 5, 6, 2}, {.bottomLeft = 1, .topLeft = 1});
  PathBuilder pins;
  pins.roundedRect({12.5, 2.4, 4.5, 2}, {.bottomRight = 1, .topRight = 1});
  pins.roundedRect({12.5, 7.6, 4.5, 2}, {.bottomRight = 1, .topRight = 1});
  return {"PowerIcon", {17, 12}, {layer(plug), layer(cord), layer(pins)}, true};
}

// A battery standing upright with its last bit of charge, on a tile.
Picture lowBatteryIcon() {
  constexpr Color kTile{0.17, 0.18, 0.21, 1};
  constexpr Color kShell{0.93, 0.94, 0.96, 1};
  constexpr Color kCharge{1.0, 0.27, 0.23, 1};
  PathBuilder tile, shell, charge, mark;
  tile.roundedRect({2, 2, 60, 60}, PathBuilder::all(14));
  shell.roundedFrame({20, 10, 24, 40}, 6, 3);
  shell.roundedRect({27, 51.5, 10, 3.5}, {.topRight = 2, .topLeft = 2});
  charge.roundedRect({25, 15, 14, 7}, PathBuilder::all(2));
  mark.roundedRect({30.4, 33, 3.2, 11}, PathBuilder::all(1.6));
  mark.roundedRect({30.2, 26.5, 3.6, 3.6}, PathBuilder::all(1.8));
  return {"LowBatteryIcon",
          {64, 64},
          {layer(tile, kTile), layer(shell, kShell), layer(charge, kCharge), layer(mark, kShell)},
          false};
}

}  // namespace

PathBuilder boltOutline(const Rect& rect) {
  const auto at = [&rect](double u, double v) {
    return Point{rect.x + u * rect.width, rect.y + v * rect.height};
  };
  PathBuilder path;
  path.polygon(
      {at(0.66, 1), at(0, 0.43), at(0.44, 0.43), at(0.34, 0), at(1, 0.58), at(0.56, 0.58)});
  return path;
}

const Picture& namedPicture(std::string_view name) {
  static const std::array pictures{batteryIcon(), batteryChargingIcon(), powerIcon(),
                                   lowBatteryIcon()};
  for (const Picture& picture : pictures)
    if (picture.name == name) return picture;
  fatalError("no picture is named " + std::string(name));
}

}  // namespace kelvane
