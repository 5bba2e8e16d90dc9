#include "platform/linux/tray/dbus_menu.h"

#include <algorithm>

#include <malloc.h>
#include <systemd/sd-bus.h>

#include "platform/linux/glib/bus_message.h"
#include "platform/linux/tray/tray_bus_test.h"
#include "platform/memory/memory_menu.h"

namespace kelvane {
namespace {

using testing::ElementsAre;

constexpr const char* kMenu = "com.canonical.dbusmenu";

class DbusMenuTest : public PrivateBusTest {
 protected:
  // Ids: 1 a text, 2 a separator, 3 a command, 4 a submenu with 5 in it; the submenu is another one
  // after each update.
  DbusMenuTest() : ours(connect()), host(connect()), menu(loop, {}) {
    lines.make = [this] {
      std::vector<MenuLine> made;
      for (int i = 0; i < extraLines; ++i) made.push_back(line("extra", false));
      made.push_back(line(text, false));
      made.back().action = [this] { ++chosen; };
      MenuLine separator;
      separator.kind = MenuLine::Kind::separator;
      made.push_back(separator);
      made.push_back(line("Preferences…", isEnabled));
      made.back().action = [this] { ++chosen; };
      made.back().keyEquivalent = {",", true, false};
      made.push_back(line("More", true));
      MenuLine question = line("FAQ", true);
      question.action = [this] { ++asked; };
      more = std::make_shared<MemoryMenu>(std::vector<MenuLine>{question});
      made.back().submenu = more;
      return made;
    };
    signals = std::make_unique<SignalSubscription>(
        host.get(), SignalSubscription::Match{nameOf(ours), kMenu, "", DbusMenu::kPath, ""},
        [this](const char*, const char* member, GVariant* parameters) {
          const GCharPtr printed(g_variant_print(parameters, FALSE));
          heard.push_back(std::string(member) + printed.get());
        });
    menu.setMenu(&lines);
    menu.exportOn(ours.get(), KeyNames::gtk);
    menu.update();
    EXPECT_EQ(printed("GetProperty", g_variant_new("(is)", 1, "label")), "(<'57%'>,)");
    EXPECT_THAT(heard, ::testing::IsEmpty());  // nobody has read what would be out of date
  }
  ~DbusMenuTest() override { menu.setMenu(nullptr); }

  static MenuLine line(const std::string& title, bool isEnabled) {
    MenuLine made;
    made.title = title;
    made.isEnabled = isEnabled;
    return made;
  }
  static std::string nameOf(const BusPtr& connection) { return connection->uniqueName(); }
  BusReply ask(const char* method, GVariant* arguments) {
    return call(host.get(), {nameOf(ours), DbusMenu::kPath, kMenu}, method, arguments);
  }
  // The answer as text, "error" for an error.
  std::string printed(const char* method, GVariant* arguments) {
    const BusReply reply = ask(method, arguments);
    if (!reply) return "error";
    return GCharPtr(g_variant_print(reply.value.get(), FALSE)).get();
  }
  std::string event(int id, const char* name) {
    return printed("Event", g_variant_new("(isvu)", id, name, g_variant_new_string(""), 0));
  }
  static GVariant* parse(const char* text) {
    return g_variant_parse(nullptr, text, nullptr, nullptr, nullptr);
  }

  GlibRunLoop loop;
  BusPtr ours, host;
  MemoryMenu lines;
  std::shared_ptr<MemoryMenu> more;
  std::string text = "57%";
  bool isEnabled = true;
  int extraLines = 0;
  int chosen = 0;
  int asked = 0;
  DbusMenu menu;
  std::unique_ptr<SignalSubscription> signals;
  std::vector<std::string> heard;
};

TEST_F(DbusMenuTest, AnswersEveryCallOfTheProtocol) {
  const struct {
    const char* method;
    const char* arguments;
    const char* answer;
  } cases[] = {
      {"GetLayout", "(0, -1, @as ['label'])",
       "(2, (0, {}, [<(1, {'label': <'57%'>}, @av [])>, <(2, @a{sv} {}, @av [])>, <(3, {'label': "
       "<'Preferences…'>}, @av [])>, <(4, {'label': <'More'>}, [<(5, {'label': <'FAQ'>}, @av "
       "[])>])>]))"},
      {"GetLayout", "(0, 0, @as [])", "(2, (0, {'children-display': <'submenu'>}, []))"},
      {"GetLayout", "(4, 1, @as ['type'])", "(2, (4, {}, [<(5, @a{sv} {}, @av [])>]))"},
      {"GetLayout", "(99, -1, @as [])", "error"},
      {"GetLayout", "(-1, -1, @as [])", "error"},
      {"GetGroupProperties", "([1, 1, 99, 2], @as [])",
       "([(1, {'label': <'57%'>, 'enabled': <false>}), (2, {'type': <'separator'>})],)"},
      {"GetGroupProperties", "([99], @as [])", "([],)"},
      {"GetProperty", "(3, 'shortcut')", "(<[['Control', 'comma']]>,)"},
      {"GetProperty", "(3, 'toggle-type')", "error"},
      {"GetProperty", "(99, 'label')", "error"},
      {"AboutToShow", "(0,)", "(false,)"},
      {"AboutToShow", "(99,)", "error"},
      {"AboutToShowGroup", "([0, 99],)", "([], [99])"},
      {"AboutToShowGroup", "([98, 99],)", "error"},
      {"AboutToShowGroup", "(@ai [],)", "([], [])"},
      {"EventGroup", "([(99, 'clicked', <''>, uint32 0), (1, 'clicked', <1>, 0)],)", "([99],)"},
      {"EventGroup", "([(99, 'clicked', <''>, uint32 0)],)", "error"},
      // Arguments of other types, and calls that do not exist.
      {"Event", "('0', 'clicked')", "error"},
      {"GetLayout", "()", "error"},
      {"AboutToShow", "(uint32 0,)", "error"},
      {"Delete", "(0,)", "error"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(printed(each.method, parse(each.arguments)), each.answer)
        << each.method << each.arguments;
  }
  EXPECT_EQ(chosen, 0);
}

TEST_F(DbusMenuTest, RunsAnActionOnTheMainQueueAndOnlyOfALineThatCanBeChosen) {
  for (const int id : {0, 1, 2, 4}) EXPECT_EQ(event(id, "clicked"), "()") << id;
  EXPECT_EQ(event(99, "clicked"), "error");
  EXPECT_EQ(event(3, "hovered"), "()");
  EXPECT_EQ(event(3, ""), "()");
  runUntilIdle();
  EXPECT_EQ(chosen, 0);
  // A thousand clicks in one call are one, and it has not run inside the call.
  GVariantBuilder clicks;
  g_variant_builder_init(&clicks, G_VARIANT_TYPE("a(isvu)"));
  for (int i = 0; i < 1000; ++i)
    g_variant_builder_add(&clicks, "(isvu)", 3, "clicked", g_variant_new_int32(i), 0);
  EXPECT_EQ(printed("EventGroup", g_variant_new("(a(isvu))", &clicks)), "([],)");
  EXPECT_TRUE(runUntil([&] { return chosen > 0; }));
  runUntilIdle();
  EXPECT_EQ(chosen, 1);
  event(3, "clicked");
  EXPECT_TRUE(runUntil([&] { return chosen == 2; }));
  // A submenu built anew keeps its ids, and nobody is told.
  const auto before = more;
  menu.update();
  EXPECT_NE(more, before);
  event(5, "clicked");
  EXPECT_TRUE(runUntil([&] { return asked == 1; }));
  EXPECT_THAT(heard, ElementsAre());
}

TEST_F(DbusMenuTest, TellsTextsByPropertiesAndLinesByTheLayout) {
  text = "56%";
  menu.update();
  EXPECT_TRUE(runUntil([&] { return !heard.empty(); }));
  EXPECT_THAT(heard, ElementsAre("ItemsPropertiesUpdated([(1, {'label': <'56%'>})], [])"));
  // In the same turn nothing is asked again.
  const int updates = lines.updates;
  menu.update();
  menu.update();
  runUntilIdle();
  menu.update();
  menu.update();
  EXPECT_EQ(lines.updates, updates + 2);
  runUntilIdle();
  EXPECT_EQ(heard.size(), 1U);
  isEnabled = false;
  menu.update();
  EXPECT_TRUE(runUntil([&] { return heard.size() == 2; }));
  EXPECT_EQ(heard.back(), "ItemsPropertiesUpdated([(3, {'enabled': <false>})], [])");
  isEnabled = true;
  text = "55%";
  runUntilIdle();
  menu.update();
  EXPECT_TRUE(runUntil([&] { return heard.size() == 3; }));
  EXPECT_EQ(heard.back(),
            "ItemsPropertiesUpdated([(1, {'label': <'55%'>}), (3, {'enabled': <true>})], [])");

  extraLines = 1;
  EXPECT_EQ(printed("AboutToShow", g_variant_new("(i)", 0)), "(true,)");
  EXPECT_TRUE(runUntil([&] { return heard.size() == 4; }));
  EXPECT_EQ(heard.back(), "LayoutUpdated(3, 0)");
  EXPECT_EQ(event(3, "clicked"), "()");
  EXPECT_TRUE(runUntil([&] { return chosen == 1; }));
}

TEST_F(DbusMenuTest, FollowsWhoOpenedIt) {
  EXPECT_EQ(event(0, "closed"), "()");
  // Opened and closed a thousand times within one turn is nothing.
  GVariantBuilder flicker;
  g_variant_builder_init(&flicker, G_VARIANT_TYPE("a(isvu)"));
  for (int i = 0; i < 2000; ++i)
    g_variant_builder_add(&flicker, "(isvu)", 0, i % 2 == 0 ? "opened" : "closed",
                          g_variant_new_int32(i), 0);
  EXPECT_EQ(printed("EventGroup", g_variant_new("(a(isvu))", &flicker)), "([],)");
  runUntilIdle();
  EXPECT_THAT(lines.history, ElementsAre());
  event(0, "opened");
  event(0, "opened");
  event(4, "opened");
  event(3, "opened");
  runUntilIdle();
  event(4, "closed");
  runUntilIdle();
  EXPECT_THAT(lines.history, ElementsAre("opened"));
  EXPECT_THAT(more->history, ElementsAre("opened", "closed"));
  // Rebuilt meanwhile, the one that was opened is closed.
  event(4, "opened");
  runUntilIdle();
  const std::weak_ptr stillOpen = more;
  menu.update();
  const auto opened = stillOpen.lock();
  ASSERT_NE(opened, nullptr);
  event(4, "closed");
  runUntilIdle();
  EXPECT_THAT(opened->history, ElementsAre("opened", "closed", "opened", "closed"));
  EXPECT_THAT(more->history, ElementsAre());
  // The host leaves the bus without a word.
  event(4, "opened");
  runUntilIdle();
  host->close();
  EXPECT_TRUE(runUntil([&] { return lines.history.size() == 2 && more->history.size() == 2; }));
  EXPECT_THAT(lines.history, ElementsAre("opened", "closed"));
  host = connect();
  event(0, "opened");
  runUntilIdle();
  menu.withdraw();
  EXPECT_THAT(lines.history, ElementsAre("opened", "closed", "opened", "closed"));
}

TEST_F(DbusMenuTest, AFloodOfEventsLeavesNothingBehind) {
  const auto flood = [&] {
    for (int i = 0; i < 3000; ++i) {
      const BusMessagePtr message =
          newCall(*host, {nameOf(ours), DbusMenu::kPath, kMenu}, "Event",
                  g_variant_new("(isvu)", i % 7, i % 3 != 0 ? "clicked" : "opened",
                                g_variant_new_string("x"), 0),
                  false);
      sd_bus_message_set_expect_reply(message.get(), 0);
      sd_bus_send(host->handle(), message.get(), nullptr);
    }
    EXPECT_EQ(event(0, "closed"), "()");
    runUntilIdle();
    return mallinfo2().uordblks;
  };
  // Queues of the bus library grow now and then and keep their room; a leak grows every time.
  constexpr std::size_t kAllowed = 150'000;  // 50 bytes an event
  std::size_t leastGrowth = kAllowed;
  std::size_t floods = 1;
  for (std::size_t before = flood(); floods < 10 && leastGrowth >= kAllowed; ++floods) {
    const std::size_t after = flood();
    leastGrowth = std::min(leastGrowth, after > before ? after - before : 0);
    before = after;
  }
  EXPECT_LT(leastGrowth, kAllowed);
  EXPECT_GT(chosen, 0);
  EXPECT_THAT(lines.history, testing::SizeIs(2 * floods));
}

}  // namespace
}  // namespace kelvane
