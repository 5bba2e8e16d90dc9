// What is known of the programs that show tray items: which one owns the watcher's name, and how it
// treats an item. Pure tables, any thread. Every row was measured on the host itself, except where
// the row says otherwise.
#pragma once

#include <string_view>

#include "platform/status_bar.h"

namespace kelvane {

enum class TrayHost { unknown, xfce, lxqt, mate, waybar, plasma, gnome, cinnamon, swaybar };

// For where nothing tells pixels per point: a picture that a host shrinks is soft, one that it
// enlarges is blocks. A host that picks well is offered one for scale 1 besides.
inline constexpr double kScaleWhenUnknown = 2;

// Where the colour behind the item comes from.
enum class BarColor {
  alwaysDark,     // whatever the colour scheme is
  panelSettings,  // the panel has its own switch for a dark look, and a theme
  colorScheme,    // the desktop's colour scheme
  unknown,        // set where nobody can ask for it (a style sheet, a theme)
};

struct HostProfile {
  TrayHost host = TrayHost::unknown;
  // The slot at scale 1. The scale is the desktop's, not the host's.
  Slot slot;
  BarColor barColor = BarColor::unknown;
  // Offered several sizes the host takes the one with the pixels that it shows, at every scale;
  // others take the largest and shrink it, or one for scale 1 and enlarge it.
  bool picksBestSize = false;
  // The host calls Activate on a left click; otherwise it opens the menu by itself.
  bool callsActivate = true;
  // The coordinates of Activate are the pointer's in the root window.
  bool givesRootCoordinates = false;
  // The title of a tool tip is read as markup, so that "&" and "<" must be escaped.
  bool readsMarkupInToolTip = false;
  // The names of keys in a menu's shortcuts are Qt's ("," for a comma), not GTK's ("comma").
  bool usesQtKeyNames = false;
  // Whatever it is told has changed, the host reads all properties anew.
  bool readsAllAtOnce = false;
};

// The host whose process is called `processName` (/proc/PID/comm: at most 15 bytes).
TrayHost hostOfProcess(std::string_view processName);

const HostProfile& profileOf(TrayHost host);

}  // namespace kelvane
