#include "programs/kelvane-windows/x11_popup.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <gdk/x11/gdkx.h>
#include <glibmm/main.h>

#include "programs/kelvane-windows/x11_windows.h"

// The toolkit means to leave X behind one day, and says so of every function.
G_GNUC_BEGIN_IGNORE_DEPRECATIONS

namespace kelvane {
namespace {

constexpr double kFarthest = 32'000;  // what X can name
constexpr unsigned kRetry = 20;       // milliseconds
constexpr unsigned kFirstOfWheel = 4;
constexpr int kMostRetries = 100;  // while whoever was clicked has the pointer

// Windows come and go while they are talked about.
class ErrorsIgnored {
 public:
  explicit ErrorsIgnored(GdkSurface* surface) : display_(gdk_surface_get_display(surface)) {
    gdk_x11_display_error_trap_push(display_);
  }
  ~ErrorsIgnored() { gdk_x11_display_error_trap_pop_ignored(display_); }
  ErrorsIgnored(const ErrorsIgnored&) = delete;
  ErrorsIgnored& operator=(const ErrorsIgnored&) = delete;

 private:
  GdkDisplay* display_;
};

Display* displayOf(GdkSurface* surface) {
  return gdk_x11_display_get_xdisplay(gdk_surface_get_display(surface));
}

}  // namespace

X11Popup::X11Popup(GtkWindow* window, std::optional<Point> anchor, std::function<void()> elsewhere)
    : window_(window), elsewhere_(std::move(elsewhere)) {
  gtk_widget_realize(GTK_WIDGET(window_));
  surface_ = gtk_native_get_surface(GTK_NATIVE(window_));
  GdkDisplay* display = gdk_surface_get_display(surface_);
  Display* xDisplay = displayOf(surface_);
  xWindow_ = gdk_x11_surface_get_xid(surface_);

  const int scale = gdk_surface_get_scale_factor(surface_);
  const Point where = anchor ? *anchor : pointerPlace();
  anchor_ = {std::clamp(where.x, -kFarthest, kFarthest) / scale,
             std::clamp(where.y, -kFarthest, kFarthest) / scale};

  XSetWindowAttributes attributes{};
  attributes.override_redirect = True;
  XChangeWindowAttributes(xDisplay, xWindow_, CWOverrideRedirect, &attributes);
  const Atom type = XInternAtom(xDisplay, "_NET_WM_WINDOW_TYPE_POPUP_MENU", False);
  XChangeProperty(xDisplay, xWindow_, XInternAtom(xDisplay, "_NET_WM_WINDOW_TYPE", False), XA_ATOM,
                  32, PropModeReplace, reinterpret_cast<const unsigned char*>(&type), 1);
  g_signal_connect(display, "xevent", G_CALLBACK(heard), this);
  g_signal_connect_swapped(
      surface_, "layout", G_CALLBACK(+[](X11Popup* self, int, int, GdkSurface*) { self->place(); }),
      this);
  place();
}

X11Popup::~X11Popup() {
  patience_.disconnect();
  g_signal_handlers_disconnect_by_data(gdk_surface_get_display(surface_), this);
  g_signal_handlers_disconnect_by_data(surface_, this);
  const ErrorsIgnored scope(surface_);
  XUngrabPointer(displayOf(surface_), CurrentTime);
  Window focus = None;
  int revert = 0;
  XGetInputFocus(displayOf(surface_), &focus, &revert);
  if (focus == xWindow_)
    XSetInputFocus(displayOf(surface_), hadFocus_, RevertToParent, CurrentTime);
}

void X11Popup::place() {
  GtkRequisition size;
  gtk_widget_get_preferred_size(GTK_WIDGET(window_), nullptr, &size);
  const Point at = popupPlace(surface_, anchor_, {double(size.width), double(size.height)});
  const int scale = gdk_surface_get_scale_factor(surface_);
  XMoveWindow(displayOf(surface_), xWindow_, static_cast<int>(std::lround(at.x)) * scale,
              static_cast<int>(std::lround(at.y)) * scale);
}

void X11Popup::takeInput() {
  const ErrorsIgnored scope(surface_);
  int revert = 0;
  XGetInputFocus(displayOf(surface_), &hadFocus_, &revert);
  XSetInputFocus(displayOf(surface_), xWindow_, RevertToParent, CurrentTime);
  if (grabPointer()) return;
  patience_ = Glib::signal_timeout().connect(
      [this, tries = 0]() mutable { return !grabPointer() && ++tries < kMostRetries; }, kRetry);
}

// So that the toolkit hears of what is pressed inside, and we of what is pressed outside.
bool X11Popup::grabPointer() {
  return XGrabPointer(displayOf(surface_), xWindow_, True, ButtonPressMask, GrabModeAsync,
                      GrabModeAsync, None, None, CurrentTime) == GrabSuccess;
}

gboolean X11Popup::heard(GdkDisplay*, void* data, X11Popup* self) {
  const auto* event = static_cast<const XEvent*>(data);
  if (event->type != ButtonPress || event->xbutton.window != self->xWindow_) return FALSE;
  if (event->xbutton.button >= kFirstOfWheel) return TRUE;
  const auto elsewhere = self->elsewhere_;  // which may destroy it all
  elsewhere();
  return TRUE;
}

}  // namespace kelvane

G_GNUC_END_IGNORE_DEPRECATIONS
