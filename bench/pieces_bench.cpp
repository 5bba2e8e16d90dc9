// What the pieces of one redraw cost, each by itself. Figures for the eye; nothing is judged.

#include <benchmark/benchmark.h>

#include "app/app_main.h"
#include "battery/battery.h"
#include "menu/battery_menu.h"
#include "menu/tq_menu.h"
#include "menubar/item_text.h"
#include "platform/linux/drawing/backing.h"
#include "platform/linux/drawing/linux_graphics.h"
#include "platform/linux/power/sysfs_device_registry.h"
#include "platform/memory/memory_computer.h"
#include "programs/kelvane-commands/item_sketch.h"
#include "settings/settings_keys.h"

namespace kelvane {
namespace {

void renderItem(benchmark::State& state, Slot::Shape shape) {
  MemoryComputer computer;
  computer.set({.percent = 57});
  FontFaces fonts;
  const SketchPlace place{{.shape = shape, .height = 22, .scale = 2}, Appearance::dark};
  for (auto _ : state)
    benchmark::DoNotOptimize(
        sketchItem(computer.registry, computer.powerSources, computer.preferences, fonts, place));
}
BENCHMARK_CAPTURE(renderItem, wide, Slot::Shape::wide);
BENCHMARK_CAPTURE(renderItem, square, Slot::Shape::square);

// From the notification to the picture, without any bus: the application, its menu and the drawing.
void changeOfBattery(benchmark::State& state) {
  MemoryComputer computer;
  computer.preferences.setObject("__hasLaunched__", true);  // or the welcome waits for an answer
  computer.set({.percent = 57});
  computer.statusBar.slot = {.shape = Slot::Shape::square, .height = 22, .scale = 1};
  FontFaces fonts;
  LinuxGraphics graphics(fonts);
  const Platform all = computer.platform();
  AppMain application({all.deviceRegistry, all.powerSources, all.preferences, all.runLoop,
                       all.statusBar, graphics, all.userNotifications, all.windows, all.loginItems,
                       all.workspace, all.systemInfo, all.textFormats},
                      {.identifier = "org.kelvane.Kelvane"});
  application.appState();
  computer.runLoop.run();
  MemoryStatusItemState& item = *computer.statusBar.item();
  int percent = 57;
  for (auto _ : state) {
    percent = 97 - percent;
    computer.change({.percent = percent});
    item.menu->needsUpdate();
    benchmark::DoNotOptimize(renderImage(fonts, *item.image, item.slot.scale, Color{1, 1, 1, 1}));
    item.calls.clear();
  }
}
BENCHMARK(changeOfBattery);

void addBacking(benchmark::State& state) {
  MemoryComputer computer;
  computer.set({.percent = 57});
  FontFaces fonts;
  const Bitmap bitmap = sketchItem(computer.registry, computer.powerSources, computer.preferences,
                                   fonts, {{.height = 22, .scale = 2}, Appearance::dark});
  for (auto _ : state) benchmark::DoNotOptimize(withBacking(bitmap, {0, 0, 0, 0.9}, 16, 2));
}
BENCHMARK(addBacking);

void rebuildMenu(benchmark::State& state) {
  MemoryComputer computer;
  computer.set({.percent = 57, .estimate = 7500});
  const Battery battery(computer.registry, computer.powerSources, computer.runLoop);
  TqMenu menu;
  for (auto _ : state)
    rebuildBatteryMenu(menu,
                       {battery, computer.runLoop, computer.systemInfo, computer.textFormats, {}});
}
BENCHMARK(rebuildMenu);

// Of this computer; on one without power supplies it is the price of finding none.
void readAdapterState(benchmark::State& state) {
  SysfsDeviceRegistry registry("/sys/class/power_supply");
  const ServiceHandle battery = registry.findService("AppleSmartBattery");
  for (auto _ : state) benchmark::DoNotOptimize(registry.property(battery, "ExternalConnected"));
}
BENCHMARK(readAdapterState);

}  // namespace
}  // namespace kelvane
