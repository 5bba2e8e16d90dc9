#include "programs/kelvane-commands/item_sketch.h"

#include "battery/battery.h"
#include "kit/kit_keys.h"
#include "menu/tq_menu.h"
#include "menubar/status_item_controller.h"
#include "platform/linux/drawing/linux_graphics.h"
#include "platform/linux/tray/item_picture.h"
#include "platform/memory/memory_run_loop.h"
#include "settings/settings_keys.h"

namespace kelvane {

Bitmap sketchOf(FontFaces& fonts, const MemoryStatusItemState& item) {
  return renderItem(fonts, item.effectiveSlot(), item.effectiveAppearance(),
                    {item.length, item.title, item.image});
}

Bitmap sketchItem(DeviceRegistry& registry, PowerSources& powerSources, Preferences& preferences,
                  FontFaces& fonts, const SketchPlace& place) {
  MemoryRunLoop loop;
  MemoryStatusBar statusBar;
  statusBar.slot = place.slot;
  statusBar.appearance = place.bar;
  LinuxGraphics graphics(fonts);
  const SettingsKeys settings(preferences);
  const KitKeys kitKeys(preferences);
  const Battery battery(registry, powerSources, loop);
  TqMenu menu;
  StatusItemController controller(statusBar, preferences, kitKeys, {battery, settings, graphics},
                                  menu);
  controller.updateStatusItem();
  return sketchOf(fonts, *statusBar.item());
}

}  // namespace kelvane
