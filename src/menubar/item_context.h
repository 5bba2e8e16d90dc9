// What the item's content is made from. Main thread; a set of references, all of which outlive it.
#pragma once

namespace kelvane {

class Battery;
class Graphics;
struct SettingsKeys;

struct ItemContext {
  const Battery& battery;
  const SettingsKeys& settings;
  Graphics& graphics;
};

}  // namespace kelvane
