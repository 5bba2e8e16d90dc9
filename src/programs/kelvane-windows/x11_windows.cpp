#include "programs/kelvane-windows/x11_windows.h"

#include <algorithm>
#include <cmath>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <gdk/x11/gdkx.h>

#include "platform/linux/windows/click_place.h"

// The toolkit means to leave X behind one day, and says so of every function.
G_GNUC_BEGIN_IGNORE_DEPRECATIONS

namespace kelvane {
namespace {

constexpr int kGap = 16;    // pixels at scale 1 between the anchor, inside the item, and a window
constexpr int kMargin = 4;  // pixels to the edges of the screen
constexpr double kFarthest = 32'000;  // what X can name

GdkSurface* surfaceOf(GtkWindow* window) {
  GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window));
  return surface && GDK_IS_X11_SURFACE(surface) ? surface : nullptr;
}

Display* displayOf(GdkSurface* surface) {
  return gdk_x11_display_get_xdisplay(gdk_surface_get_display(surface));
}

// Of the monitor that a point of the root window is on, in the toolkit's pixels: all of it, and
// what panels leave of it.
struct MonitorArea {
  GdkRectangle whole{};
  GdkRectangle free{};
};
MonitorArea monitorAt(GdkSurface* surface, const Point& point) {
  GListModel* monitors = gdk_display_get_monitors(gdk_surface_get_display(surface));
  MonitorArea found;
  const guint count = g_list_model_get_n_items(monitors);
  for (guint i = 0; i < count; ++i) {
    auto* monitor = static_cast<GdkMonitor*>(g_list_model_get_item(monitors, i));
    GdkRectangle area;
    gdk_monitor_get_geometry(monitor, &area);
    const bool isOn = point.x >= area.x && point.x < area.x + area.width && point.y >= area.y &&
                      point.y < area.y + area.height;
    if (i == 0 || isOn) {
      found.whole = area;
      gdk_x11_monitor_get_workarea(monitor, &found.free);
    }
    g_object_unref(monitor);
    if (isOn) break;
  }
  return found;
}

}  // namespace

bool canPlaceWindows() { return GDK_IS_X11_DISPLAY(gdk_display_get_default()); }

void presentInFront(GtkWindow* window) {
  gtk_widget_realize(GTK_WIDGET(window));
  // Without a time, window managers take it for something that comes uncalled.
  if (GdkSurface* surface = surfaceOf(window))
    gtk_window_present_with_time(window, gdk_x11_get_server_time(surface));
  else
    gtk_window_present(window);
}

void keepAbove(GtkWindow* window) {
  GdkSurface* surface = surfaceOf(window);
  if (!surface) return;
  Display* display = displayOf(surface);
  constexpr long kAdd = 1;
  constexpr long kByApplication = 1;
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = gdk_x11_surface_get_xid(surface);
  event.xclient.message_type = XInternAtom(display, "_NET_WM_STATE", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = kAdd;
  event.xclient.data.l[1] = static_cast<long>(XInternAtom(display, "_NET_WM_STATE_ABOVE", False));
  event.xclient.data.l[3] = kByApplication;
  XSendEvent(display, DefaultRootWindow(display), False,
             SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

Point pointerPlace() {
  Display* display = gdk_x11_display_get_xdisplay(gdk_display_get_default());
  Window window = None;
  int x = 0, y = 0, unused = 0;
  unsigned mask = 0;
  XQueryPointer(display, DefaultRootWindow(display), &window, &window, &x, &y, &unused, &unused,
                &mask);
  return {static_cast<double>(x), static_cast<double>(y)};
}

Point clickPlaceOnScreen(const Point& told) {
  // On X there is one scale for all monitors.
  GListModel* monitors = gdk_display_get_monitors(gdk_display_get_default());
  auto* monitor = static_cast<GdkMonitor*>(g_list_model_get_item(monitors, 0));
  const int scale = monitor ? gdk_monitor_get_scale_factor(monitor) : 1;
  if (monitor) g_object_unref(monitor);
  return clickPlace(told, pointerPlace(), scale);
}

Point popupPlace(GdkSurface* surface, const Point& anchor, const Size& size) {
  const auto [whole, free] = monitorAt(surface, anchor);
  const double right = free.x + free.width - size.width;
  const double bottom = free.y + free.height - size.height;
  const bool isBesideColumn = anchor.x < free.x || anchor.x >= free.x + free.width;
  const bool isBesideRow = anchor.y < free.y || anchor.y >= free.y + free.height;
  Point at = anchor;
  if (!isBesideColumn && !isBesideRow) {
    const bool isBelow = anchor.y < whole.y + whole.height / 2.0;
    at.y = isBelow ? anchor.y + kGap : anchor.y - kGap - size.height;
  }
  // On a panel this is its edge. What is too large keeps its beginning.
  return {std::max<double>(std::min(at.x, right), free.x),
          std::max<double>(std::min(at.y, bottom), free.y)};
}

void placeNear(GtkWindow* window, const Point& anchor) {
  gtk_widget_realize(GTK_WIDGET(window));
  GdkSurface* surface = surfaceOf(window);
  if (!surface || !std::isfinite(anchor.x) || !std::isfinite(anchor.y)) return;
  const int scale = gdk_surface_get_scale_factor(surface);
  const Point point = {std::clamp(anchor.x, -kFarthest, kFarthest) / scale,
                       std::clamp(anchor.y, -kFarthest, kFarthest) / scale};
  const GdkRectangle area = monitorAt(surface, point).whole;
  GtkRequisition size;
  gtk_widget_get_preferred_size(GTK_WIDGET(window), nullptr, &size);

  const double left = area.x + kMargin;
  const double right = std::max<double>(area.x + area.width - kMargin - size.width, left);
  const bool isBelow = point.y < area.y + area.height / 2.0;
  const double x = std::clamp(point.x - size.width / 2.0, left, right);
  const double y = isBelow ? point.y + kGap : point.y - kGap - size.height;

  Display* display = displayOf(surface);
  const Window xWindow = gdk_x11_surface_get_xid(surface);
  XSetWindowAttributes attributes{};
  attributes.override_redirect = True;
  XChangeWindowAttributes(display, xWindow, CWOverrideRedirect, &attributes);
  XMoveWindow(display, xWindow, static_cast<int>(std::lround(x * scale)),
              static_cast<int>(std::lround(y * scale)));
}

}  // namespace kelvane

G_GNUC_END_IGNORE_DEPRECATIONS
