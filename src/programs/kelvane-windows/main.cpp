// Kelvane's windows, in a program of their own: the resident one starts it when the first of them
// is wanted and says over an inherited socket what to show.

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <variant>

#include <fcntl.h>
#include <giomm/init.h>
#include <glibmm/init.h>
#include <glibmm/main.h>
#include <glibmm/miscutils.h>
#include <gtkmm/init.h>

#include "platform/linux/windows/window_protocol.h"
#include "programs/kelvane-windows/line_channel.h"
#include "programs/kelvane-windows/look.h"
#include "programs/kelvane-windows/open_windows.h"
#include "programs/kelvane-windows/symbols.h"

namespace kelvane {
namespace {

// A few widgets don't need the graphics card, whose driver costs more than all else.
void keepLight() {
  setenv("GSK_RENDERER", "cairo", 0);
  setenv("GDK_DEBUG", "gl-disable", 0);
  setenv("GDK_DISABLE", "gl,vulkan", 0);
}

bool startToolkit() {
  Glib::init();
  Gio::init();
  // The windows' class, by which desktops find the name and the icon of whose they are.
  Glib::set_prgname(kApplicationIcon);
  Glib::set_application_name("Kelvane");
  if (!gtk_init_check()) return false;
  Gtk::init_gtkmm_internals();
  addIcons();
  addLook();
  return true;
}

int fail(const std::string& text) {
  std::fprintf(stderr, "kelvane-windows: %s\n", text.c_str());
  return 1;
}

int run(UniqueFd socket) {
  const auto loop = Glib::MainLoop::create();
  int exitCode = 0;
  bool isGreeted = false;
  LineChannel* channel = nullptr;
  OpenWindows windows([&](const WindowEvent& event) { channel->send(encode(event)); });

  const auto end = [&](const std::string& error) {
    channel->end();
    if (!error.empty()) exitCode = fail(error);
    loop->quit();
  };
  const auto greet = [&](const std::string& line) {
    const Decoded<Greeting> greeting = decodeGreeting(line);
    if (!greeting.message) return end(greeting.error);
    isGreeted = true;
    windows.greet(*greeting.message);
  };
  LineChannel lines(std::move(socket),
                    {[&](const std::string& line) {
                       if (!isGreeted) return greet(line);
                       const Decoded<WindowRequest> request = decodeRequest(line);
                       if (!request.message) return end(request.error);
                       std::visit([&](const auto& each) { windows.handle(each); },
                                  *request.message);
                     },
                     end});
  channel = &lines;
  lines.send(encode(Greeting{}));
  loop->run();
  return exitCode;
}

}  // namespace
}  // namespace kelvane

int main() {
  if (fcntl(kelvane::kWindowProgramFd, F_GETFD) < 0)
    return kelvane::fail("it is started by kelvane, which tells it what to show");
  kelvane::keepLight();
  if (!kelvane::startToolkit()) return kelvane::fail("there is no display to show windows on");
  return kelvane::run(kelvane::UniqueFd(kelvane::kWindowProgramFd));
}
