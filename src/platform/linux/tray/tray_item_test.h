// A tray on a bus of its own, and an item in it as a host sees it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/tray/linux_status_bar.h"
#include "platform/linux/tray/tray_bus_test.h"
#include "platform/memory/memory_menu.h"

namespace kelvane {

inline constexpr const char* kItem = "org.kde.StatusNotifierItem";
inline constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
inline constexpr const char* kWatcherXml = R"xml(<interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
</interface>)xml";

class TrayItemTest : public PrivateBusTest {
 protected:
  TrayItemTest() : session(connect()), host(connect()) {
    options.sessionBus = session.get();
    options.busAddress = address;
    options.replaceUncoveredCharacters = [](std::string text) {
      return text == "57﹪" ? "57%" : text;
    };
    menu.make = [this] {
      MenuLine line;
      line.title = menuText;
      return std::vector<MenuLine>{line};
    };
  }

  void start() {
    bar = std::make_unique<LinuxStatusBar>(loop, fonts, options);
    item = bar->makeItem(kSquareStatusItemLength);
    item->setMenu(&menu);
    item->setImage(picture(0.5));
  }
  // A square of one grey, and how often it was drawn.
  Image picture(double grey) {
    return {{22, 22}, false, [this, grey](Canvas& canvas, const Rect& rect) {
              ++drawings;
              canvas.fill(rect, {grey, grey, grey, 1}, CompositeOperation::sourceOver);
            }};
  }
  std::unique_ptr<Service> watcher(int refusals = 0) {
    return serve(kWatcher, "/StatusNotifierWatcher", kWatcherXml,
                 [this, refusals](const ExportedObject::Call& call) mutable -> GVariant* {
                   if (refusals-- > 0) return nullptr;
                   const char* name = nullptr;
                   g_variant_get(call.arguments, "(&s)", &name);
                   EXPECT_STREQ(name, call.sender);
                   registered.push_back(name);
                   listen(name);
                   return g_variant_new("()");
                 });
  }
  void listen(const std::string& name) {
    signals = std::make_unique<SignalSubscription>(
        host.get(), SignalSubscription::Match{name, kItem, "", "/StatusNotifierItem", ""},
        [this](const char*, const char* member, GVariant*) { heard.push_back(member); });
  }
  bool isRegistered(std::size_t times) {
    return runUntil([&] { return registered.size() >= times && bar->isRegistered(); });
  }

  GVariantPtr properties() {
    const BusReply reply = call(
        host.get(), {registered.back(), "/StatusNotifierItem", "org.freedesktop.DBus.Properties"},
        "GetAll", g_variant_new("(s)", kItem), "(a{sv})");
    EXPECT_TRUE(reply) << reply.error;
    return GVariantPtr(reply ? g_variant_get_child_value(reply.value.get(), 0) : nullptr);
  }
  // One property as text; "absent" when there is none.
  std::string property(const char* name) {
    const GVariantPtr all = properties();
    const GVariantPtr value(g_variant_lookup_value(all.get(), name, nullptr));
    return value ? GCharPtr(g_variant_print(value.get(), FALSE)).get() : "absent";
  }
  // "WIDTHxHEIGHT:FIRST PIXEL" of each picture.
  std::vector<std::string> pictures() {
    const GVariantPtr all = properties();
    const GVariantPtr value(
        g_variant_lookup_value(all.get(), "IconPixmap", G_VARIANT_TYPE("a(iiay)")));
    std::vector<std::string> result;
    for (gsize i = 0; i < g_variant_n_children(value.get()); ++i) {
      int width = 0, height = 0;
      GVariant* rawBytes = nullptr;
      g_variant_get_child(value.get(), i, "(ii@ay)", &width, &height, &rawBytes);
      const GVariantPtr bytes(rawBytes);
      gsize size = 0;
      const auto* data =
          static_cast<const unsigned char*>(g_variant_get_fixed_array(bytes.get(), &size, 1));
      EXPECT_EQ(size, static_cast<gsize>(width * height * 4));
      const GCharPtr text(g_strdup_printf("%dx%d:%02X%02X%02X%02X", width, height, data[0], data[1],
                                          data[2], data[3]));
      result.push_back(text.get());
    }
    return result;
  }
  std::string menuLabel() {
    const BusReply label =
        call(host.get(), {registered.back(), "/MenuBar", "com.canonical.dbusmenu"}, "GetProperty",
             g_variant_new("(is)", 1, "label"));
    return GCharPtr(g_variant_print(label.value.get(), FALSE)).get();
  }
  void callItem(const char* method, GVariant* arguments) {
    EXPECT_TRUE(
        call(host.get(), {registered.back(), "/StatusNotifierItem", kItem}, method, arguments))
        << method;
  }

  GlibRunLoop loop;
  FontFaces fonts;
  BusPtr session, host;
  TrayOptions options;
  MemoryMenu menu;
  std::string menuText = "Fully Charged";
  int drawings = 0;
  std::vector<std::string> registered, heard;
  std::unique_ptr<SignalSubscription> signals;
  std::unique_ptr<LinuxStatusBar> bar;
  std::unique_ptr<StatusItem> item;  // goes before the bar
};

}  // namespace kelvane
