#include "programs/kelvane-commands/demo_page.h"

#include <fstream>

#include "platform/linux/drawing/png_file.h"
#include "programs/kelvane-commands/item_sketch.h"

namespace kelvane {
namespace {

constexpr double kScale = 2;

struct Variant {
  const char* suffix;
  SketchPlace place;
};

constexpr Slot kWide{.height = 22, .scale = kScale};
constexpr Slot kSquare{.shape = Slot::Shape::square, .height = 22, .scale = kScale};
constexpr Variant kVariants[] = {{"wide-light", {kWide, Appearance::light}},
                                 {"wide-dark", {kWide, Appearance::dark}},
                                 {"square-light", {kSquare, Appearance::light}},
                                 {"square-dark", {kSquare, Appearance::dark}}};

constexpr const char* kPageHead = R"(<!DOCTYPE html>
<html lang="en"><meta charset="utf-8"><title>Kelvane demo</title>
<style>
body { font: 15px/1.5 system-ui, sans-serif; max-width: 46rem; margin: 3rem auto; padding: 0 1rem; }
table { border-collapse: collapse; width: 100%; }
td { padding: .35rem .75rem; border-bottom: 1px solid #ddd; }
td.bar { text-align: center; }
td.light { background: #ececec; }
td.dark { background: #2b2b2e; }
img { height: 22px; vertical-align: middle; }
</style>
<h1>Kelvane</h1>
<p>The item at each step of the demo: as wide as it is drawn, and in the square of bars that keep no
other shape; on a light bar and on a dark one.</p>
<table>
)";

bool isInked(const Bitmap& bitmap, int x, int y) {
  if (y >= bitmap.height) return false;
  const auto at = static_cast<std::size_t>(y) * static_cast<std::size_t>(bitmap.width) +
                  static_cast<std::size_t>(x);
  return (bitmap.pixels[at] >> 24U) > 0x60;
}

}  // namespace

std::optional<std::string> DemoPage::addStep(const DemoStep& step, DeviceRegistry& registry,
                                             PowerSources& powerSources, Preferences& preferences) {
  rows_ += "<tr><td>" + step.caption;
  for (const Variant& variant : kVariants) {
    const std::string name = step.name + "-" + variant.suffix + ".png";
    const Bitmap bitmap = sketchItem(registry, powerSources, preferences, fonts_, variant.place);
    if (const auto failure = writePng(bitmap, folder_ / name)) return failure;
    const bool isDark = variant.place.bar == Appearance::dark;
    rows_ += std::string("<td class=\"bar ") + (isDark ? "dark" : "light") + "\"><img src=\"" +
             name + "\" alt=\"\">";
  }
  rows_ += "\n";
  return std::nullopt;
}

std::optional<std::string> DemoPage::writeIndex() const {
  const auto path = folder_ / "index.html";
  std::ofstream page(path);
  page << kPageHead << rows_ << "</table>\n";
  page.close();
  if (!page) return "can't write " + path.string();
  return std::nullopt;
}

std::string drawnInTerminal(const Bitmap& bitmap) {
  std::string text;
  for (int y = 0; y < bitmap.height; y += 2) {
    std::string line;
    bool isEmpty = true;
    for (int x = 0; x < bitmap.width; ++x) {
      const bool top = isInked(bitmap, x, y);
      const bool bottom = isInked(bitmap, x, y + 1);
      isEmpty = isEmpty && !top && !bottom;
      line += top ? (bottom ? "█" : "▀") : bottom ? "▄" : " ";
    }
    if (!isEmpty) text += "    " + line + "\n";
  }
  return text;
}

}  // namespace kelvane
