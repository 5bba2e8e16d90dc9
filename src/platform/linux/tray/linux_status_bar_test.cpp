#include "platform/linux/tray/linux_status_bar.h"

#include "platform/linux/tray/tray_bus_test.h"
#include "platform/memory/memory_menu.h"

namespace kelvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kItem = "org.kde.StatusNotifierItem";
constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kWatcherXml = R"xml(<interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
</interface>)xml";

class LinuxStatusBarTest : public PrivateBusTest {
 protected:
  LinuxStatusBarTest() : session(connect()), host(connect()) {
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

TEST_F(LinuxStatusBarTest, RegistersWithEverythingInPlace) {
  const auto host1 = watcher();
  start();
  ASSERT_TRUE(isRegistered(1));
  EXPECT_EQ(property("Id"), "'org.kelvane.Kelvane'");
  EXPECT_EQ(property("Category"), "'Hardware'");
  EXPECT_EQ(property("Status"), "'Active'");
  EXPECT_EQ(property("Menu"), "'/MenuBar'");
  for (const char* name : {"ToolTip", "XAyatanaLabel", "IconName", "OverlayIconPixmap"})
    EXPECT_EQ(property(name), "absent") << name;
  EXPECT_THAT(pictures(), ElementsAre("44x44:FF808080"));
  EXPECT_EQ(drawings, 1);
  EXPECT_EQ(bar->hostName(), "linux_tray_test");
  EXPECT_EQ(menuLabel(), "(<'Fully Charged'>,)");
}

TEST_F(LinuxStatusBarTest, RegistersWithEveryNewWatcherForEver) {
  start();
  runUntilIdle();
  EXPECT_EQ(drawings, 0);  // nobody to show it to
  EXPECT_EQ(bar->hostName(), "");

  auto first = watcher();
  ASSERT_TRUE(isRegistered(1));
  const auto second = watcher();  // takes the name over directly
  ASSERT_TRUE(isRegistered(2));
  EXPECT_EQ(second->calls.size(), 1U);
  first.reset();
  runUntilIdle();
  EXPECT_EQ(registered.size(), 2U);
  second->connection->close();
  ASSERT_TRUE(runUntil([&] { return bar->hostName().empty(); }));
  const auto third = watcher();
  ASSERT_TRUE(isRegistered(3));
  EXPECT_EQ(registered[0], registered[2]);
  // One that owns its name before it is ready is asked again.
  const auto fourth = watcher(2);
  ASSERT_TRUE(isRegistered(4));
  EXPECT_EQ(fourth->calls.size(), 3U);
}

TEST_F(LinuxStatusBarTest, HidingIsLeavingTheBus) {
  const auto host1 = watcher();
  start();
  ASSERT_TRUE(isRegistered(1));
  bool hasLeft = false;
  const NameWatch watch(host.get(), registered[0],
                        [&](const std::string& owner) { hasLeft = owner.empty(); });
  item->setVisible(false);
  EXPECT_FALSE(item->isVisible());
  ASSERT_TRUE(runUntil([&] { return hasLeft; }));
  item->setImage(picture(0.2));
  runUntilIdle();
  EXPECT_EQ(drawings, 1);

  item->setVisible(true);
  EXPECT_TRUE(item->isVisible());
  ASSERT_TRUE(isRegistered(2));
  EXPECT_NE(registered[0], registered[1]);
  EXPECT_THAT(pictures(), ElementsAre("44x44:FF333333"));
  EXPECT_EQ(drawings, 2);
  // Hidden and shown within one turn is nothing, and hidden before the connection stands is hidden.
  item->setVisible(false);
  item->setVisible(true);
  runUntilIdle();
  EXPECT_EQ(properties() != nullptr, true);
  item->setVisible(false);
  runUntilIdle();
  item->setVisible(true);
  g_main_context_iteration(nullptr, FALSE);
  item->setVisible(false);
  runUntilIdle();
  EXPECT_EQ(registered.size(), 2U);
  EXPECT_FALSE(bar->isRegistered());
  EXPECT_FALSE(bar->isItemWanted());
}

TEST_F(LinuxStatusBarTest, RendersOnceInATurnAndTellsOnlyWhatDiffers) {
  const auto host1 = watcher();
  start();
  ASSERT_TRUE(isRegistered(1));
  const int before = drawings;
  const int updates = menu.updates;
  for (int i = 0; i < 100; ++i) {
    item->setTitle("");
    item->setLength(22);
    item->setImage(picture(0.25));
  }
  ASSERT_TRUE(runUntil([&] { return !heard.empty(); }));
  EXPECT_EQ(drawings, before + 1);
  EXPECT_EQ(menu.updates, updates + 1);
  EXPECT_THAT(heard, ElementsAre("NewIcon"));

  item->setImage(picture(0.25));
  ASSERT_TRUE(runUntil([&] { return drawings == before + 2; }));
  EXPECT_THAT(pictures(), ElementsAre("44x44:FF404040"));
  EXPECT_THAT(heard, ElementsAre("NewIcon"));
}

TEST_F(LinuxStatusBarTest, MenuChangesWhileTheItemStays) {
  const auto host1 = watcher();
  bar = std::make_unique<LinuxStatusBar>(loop, fonts, options);
  bar->menuChanged();  // before there is an item
  bar.reset();
  start();
  ASSERT_TRUE(isRegistered(1));
  const int before = drawings;
  const int updates = menu.updates;
  for (const char* text : {"a", "b", "Low Power Mode Enabled"}) {
    menuText = text;
    bar->menuChanged();
  }
  ASSERT_TRUE(runUntil([&] { return menu.updates > updates; }));
  EXPECT_EQ(menuLabel(), "(<'Low Power Mode Enabled'>,)");
  EXPECT_EQ(menu.updates, updates + 1);
  EXPECT_EQ(drawings, before);
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(LinuxStatusBarTest, TheToolTipIsTheLatestHoverView) {
  const ProcessName mate("mate-panel");
  const auto host1 = watcher();
  start();
  ASSERT_TRUE(isRegistered(1));
  EXPECT_EQ(property("ToolTip"), "absent");
  std::string text = "57﹪";
  item->addHoverView({[](bool) {}, [] { return "below"; }});
  item->addHoverView({[](bool) {}, [&] { return text; }});
  ASSERT_TRUE(runUntil([&] { return heard.size() == 1; }));
  EXPECT_EQ(property("ToolTip"), "('', [], '57%', '')");
  text = "<2:05 & more";
  item->setImage(picture(0.5));
  ASSERT_TRUE(runUntil([&] { return heard.size() == 2; }));
  EXPECT_EQ(property("ToolTip"), "('', [], '&lt;2:05 &amp; more', '')");
  EXPECT_THAT(heard, ElementsAre("NewToolTip", "NewToolTip"));
}

TEST_F(LinuxStatusBarTest, WhoReadsAllAtOnceIsToldOnce) {
  std::string text = "57%";
  const auto change = [&](double grey, const char* now) {
    heard.clear();
    text = now;
    item->setImage(picture(grey));
    EXPECT_TRUE(runUntil([&] { return !heard.empty(); }));
    item->setImage(std::nullopt);  // what comes before its signal is all that there was
    EXPECT_TRUE(runUntil([&] { return heard.size() > 1 && heard.back() == "NewIcon"; }));
    heard.pop_back();
    return heard;
  };
  start();
  item->addHoverView({[](bool) {}, [&] { return text; }});
  const ProcessName mate("mate-panel");
  const auto host1 = watcher();
  ASSERT_TRUE(isRegistered(1));
  EXPECT_THAT(change(0.6, "56%"), ElementsAre("NewIcon", "NewToolTip"));
  const ProcessName xfce("xfce4-panel");
  const auto host2 = watcher();
  ASSERT_TRUE(isRegistered(2));
  EXPECT_THAT(change(0.7, "55%"), ElementsAre("NewIcon"));
  EXPECT_EQ(property("ToolTip"), "('', [], '55%', '')");
  // Without a new picture the tool tip has its own signal.
  item->setImage(picture(0.8));
  EXPECT_TRUE(runUntil([&] { return heard.size() == 2; }));
  text = "54%";
  item->setImage(picture(0.8));
  EXPECT_TRUE(runUntil([&] { return heard.size() == 3; }));
  EXPECT_EQ(heard.back(), "NewToolTip");
}

TEST_F(LinuxStatusBarTest, GnomeGetsALabelAndAllOthersALeftClick) {
  std::vector<std::string> clicks;
  bool hasMenu = true;
  options.activationToken = [&](const std::string& token) { clicks.push_back("token " + token); };
  options.activated = [&](Menu* shown, std::optional<Point> where) {
    EXPECT_EQ(shown, hasMenu ? &menu : nullptr);
    clicks.push_back(where ? "at " + std::to_string(static_cast<int>(where->x)) : "somewhere");
  };
  options.menuRemoved = [&] { clicks.push_back("no menu"); };
  const ProcessName gnome("gnome-shell");
  std::vector<Slot> slots;
  auto host1 = watcher();
  start();
  const auto observation = item->observeSlot([&] { slots.push_back(item->slot()); });
  item->setTitle("57﹪");
  ASSERT_TRUE(isRegistered(1));
  ASSERT_EQ(slots.size(), 1U);
  EXPECT_EQ(slots[0], (Slot{Slot::Shape::square, 16, 2, true}));
  EXPECT_EQ(property("XAyatanaLabel"), "'57%'");
  EXPECT_THAT(pictures(), ElementsAre("16x16:FF808080", "32x32:FF808080"));
  item->setTitle("");
  ASSERT_TRUE(runUntil([&] { return !heard.empty(); }));
  EXPECT_THAT(heard, ElementsAre("XAyatanaNewLabel"));
  EXPECT_EQ(property("XAyatanaLabel"), "''");
  item->setImage(std::nullopt);
  ASSERT_TRUE(runUntil([&] { return heard.size() > 1; }));
  EXPECT_THAT(heard, ElementsAre("XAyatanaNewLabel", "NewIcon"));
  EXPECT_FALSE(call(host.get(), {registered.back(), "/StatusNotifierItem", kItem}, "Activate",
                    g_variant_new("(ii)", 3, 4)));

  const ProcessName lxqt("lxqt-panel");
  const auto host2 = watcher();
  ASSERT_TRUE(isRegistered(2));
  EXPECT_EQ(property("XAyatanaLabel"), "absent");
  callItem("ProvideXdgActivationToken", g_variant_new("(s)", "t0k"));
  callItem("Activate", g_variant_new("(ii)", 1190, 16));
  ASSERT_TRUE(runUntil([&] { return clicks.size() == 2; }));
  EXPECT_THAT(clicks, ElementsAre("token t0k", "at 1190"));
  callItem("Scroll", g_variant_new("(is)", 1, "sideways"));
  callItem("SecondaryActivate", g_variant_new("(ii)", 1, 1));

  const ProcessName mate("mate-panel");
  const auto host3 = watcher();
  ASSERT_TRUE(isRegistered(3));
  callItem("ContextMenu", g_variant_new("(ii)", 0, 25));
  ASSERT_TRUE(runUntil([&] { return clicks.size() == 3; }));
  EXPECT_EQ(clicks.back(), "somewhere");
  item->setMenu(&menu);
  EXPECT_EQ(clicks.size(), 3U);
  hasMenu = false;
  item->setMenu(nullptr);
  callItem("Activate", g_variant_new("(ii)", 0, 25));
  ASSERT_TRUE(runUntil([&] { return clicks.size() == 5; }));
  EXPECT_EQ(clicks[3], "no menu");
  item->setMenu(&menu);
  item.reset();
  EXPECT_EQ(clicks.size(), 6U) << "the menu may go before the item is gone";
}

TEST_F(LinuxStatusBarTest, TellsAppearanceOnceAtRegistrationAndWhenItChanges) {
  const ProcessName mate("mate-panel");
  guint32 scheme = 2;
  const auto portal =
      serve("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
            R"xml(<interface name="org.freedesktop.portal.Settings">
        <method name="ReadAll"><arg type="as" direction="in"/>
          <arg type="a{sa{sv}}" direction="out"/></method>
        <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
      </interface>)xml",
            [&](const ExportedObject::Call&) {
              return g_variant_new_parsed(
                  "({'org.freedesktop.appearance': {'color-scheme': <%u>},"
                  " 'org.gnome.desktop.interface': {'font-name': <'No Such Font 10'>}},)",
                  scheme);
            });
  start();
  std::vector<Slot::Shape> slots;
  const auto slotObservation = item->observeSlot([&] { slots.push_back(item->slot().shape); });
  std::vector<Appearance> seen;
  const auto observation =
      item->observeEffectiveAppearance([&] { seen.push_back(item->effectiveAppearance()); });
  EXPECT_THAT(seen, ElementsAre(Appearance::dark));
  const auto host1 = watcher();
  ASSERT_TRUE(isRegistered(1));
  EXPECT_THAT(seen, ElementsAre(Appearance::dark, Appearance::light));
  // First for the new font, then for the slot.
  EXPECT_THAT(slots, ElementsAre(Slot::Shape::square, Slot::Shape::wide));
  portal->object->emit("SettingChanged", g_variant_new("(ssv)", "org.freedesktop.appearance",
                                                       "color-scheme", g_variant_new_uint32(1)));
  ASSERT_TRUE(runUntil([&] { return seen.size() == 3; }));
  EXPECT_EQ(seen.back(), Appearance::dark);
}

TEST_F(LinuxStatusBarTest, TheUsersShapeAndColourGoFromHostToHost) {
  const ProcessName lxqt("lxqt-panel");
  const auto host1 = watcher();
  start();
  std::vector<Slot::Shape> shapes;
  std::vector<Appearance> appearances;
  const auto slotObservation = item->observeSlot([&] { shapes.push_back(item->slot().shape); });
  const auto observation =
      item->observeEffectiveAppearance([&] { appearances.push_back(item->effectiveAppearance()); });
  item->setLength(36);
  ASSERT_TRUE(isRegistered(1));
  shapes.clear();
  EXPECT_EQ(item->slot().height, 20);  // within the edge of a backing
  item->setShape(Slot::Shape::wide);
  EXPECT_EQ(item->slot().height, 22);
  item->setAppearance(Appearance::light);
  EXPECT_THAT(shapes, ElementsAre(Slot::Shape::wide));
  EXPECT_THAT(appearances, ElementsAre(Appearance::dark, Appearance::light));
  // No backing any more: the first pixel of a wide picture is empty.
  ASSERT_TRUE(runUntil([&] { return !heard.empty(); }));
  EXPECT_THAT(pictures(), ElementsAre("36x22:00000000", "72x44:00000000"));

  const ProcessName gnome("gnome-shell");
  const auto host2 = watcher();
  ASSERT_TRUE(isRegistered(2));
  EXPECT_EQ(item->slot(), (Slot{Slot::Shape::wide, 16, 2, true}));
  EXPECT_EQ(item->effectiveAppearance(), Appearance::light);
  item->setShape(std::nullopt);
  item->setAppearance(std::nullopt);
  EXPECT_EQ(item->slot().shape, Slot::Shape::square);
  EXPECT_EQ(item->effectiveAppearance(), Appearance::dark);
}

TEST_F(LinuxStatusBarTest, WithoutABusNothingIsShownAndNothingFails) {
  options = {};
  start();
  item->setVisible(false);
  item->setVisible(true);
  runUntilIdle();
  EXPECT_EQ(drawings, 0);
  EXPECT_FALSE(bar->isRegistered());
  EXPECT_TRUE(bar->isItemWanted());
  item.reset();
  EXPECT_FALSE(bar->isItemWanted());
}

TEST_F(LinuxStatusBarTest, ShakesAndComesToRest) {
  const auto host1 = watcher();
  start();
  ASSERT_TRUE(isRegistered(1));
  const auto atRest = pictures();
  heard.clear();
  item->shake({-2, 2, 0}, 0.1);
  ASSERT_TRUE(runUntil([&] { return heard.size() == 1; }));
  // Down, so that the first row is empty.
  EXPECT_THAT(pictures(), ElementsAre("44x44:00000000"));
  ASSERT_TRUE(runUntil([&] { return heard.size() == 3; }));
  EXPECT_THAT(heard, ElementsAre("NewIcon", "NewIcon", "NewIcon"));
  EXPECT_EQ(pictures(), atRest);
  EXPECT_EQ(loop.nextDeadline(), std::nullopt);
}

TEST_F(LinuxStatusBarTest, HearsOfClicksAndOfAMenuThatIsOpened) {
  const auto host1 = watcher();
  start();
  ASSERT_TRUE(isRegistered(1));
  int clicks = 0;
  auto observation = item->observeClicks([&] { ++clicks; });
  const BusCalls::Target menuOfItem{registered.back(), "/MenuBar", "com.canonical.dbusmenu"};
  callItem("Activate", g_variant_new("(ii)", 3, 4));
  EXPECT_TRUE(runUntil([&] { return clicks == 1; }));
  EXPECT_TRUE(call(host.get(), menuOfItem, "AboutToShow", g_variant_new("(i)", 0)));
  EXPECT_TRUE(runUntil([&] { return clicks == 2; }));
  EXPECT_TRUE(call(host.get(), menuOfItem, "AboutToShowGroup", g_variant_new_parsed("([0],)")));
  EXPECT_TRUE(runUntil([&] { return clicks == 3; }));
  EXPECT_TRUE(call(host.get(), menuOfItem, "Event",
                   g_variant_new("(isvu)", 0, "opened", g_variant_new_int32(0), 0)));
  EXPECT_TRUE(runUntil([&] { return clicks == 4; }));
  observation.reset();
  callItem("Activate", g_variant_new("(ii)", 3, 4));
  runUntilIdle();
  EXPECT_EQ(clicks, 4);
}

}  // namespace
}  // namespace kelvane
