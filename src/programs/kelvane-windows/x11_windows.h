// What the toolkit leaves to the X Window System. Main thread; on other displays nothing happens.
#pragma once

#include <gtk/gtk.h>

#include "platform/geometry.h"

namespace kelvane {

// Whether windows can be put where we want them.
bool canPlaceWindows();

// Shows a window in front of the others and gives it the focus.
void presentInFront(GtkWindow* window);

// Keeps a mapped window above the others.
void keepAbove(GtkWindow* window);

// Where the pointer is, in pixels of the root window.
Point pointerPlace();

// Where the item has just been clicked, in pixels of the root window, by what its host says of it.
Point clickPlaceOnScreen(const Point& told);

// Where a popup of this size belongs that was asked for at `anchor`, all in the toolkit's pixels:
// beside the panel that the anchor is on, else below or above the anchor, and wholly on the
// monitor.
Point popupPlace(GdkSurface* surface, const Point& anchor, const Size& size);

// Makes a window, before it is first shown, one that no window manager moves, frames or lists, near
// `anchor`: pixels of the root window, y downwards. Below it, or above it in the lower half of the
// screen, and as far to the side as it must be to be seen whole.
void placeNear(GtkWindow* window, const Point& anchor);

}  // namespace kelvane
