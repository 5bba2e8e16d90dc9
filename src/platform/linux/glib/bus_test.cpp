#include "platform/linux/glib/bus.h"

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include "platform/linux/glib/bus_message.h"
#include "platform/linux/glib/exported_object.h"
#include "platform/linux/glib/private_bus_test.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using State = BusConnection::State;

constexpr const char* kPath = "/org/kelvane/Test";
constexpr const char* kInterface = "org.kelvane.Test";
constexpr const char* kPropertiesInterface = "org.freedesktop.DBus.Properties";

std::string printed(GVariant* value) { return GCharPtr(g_variant_print(value, TRUE)).get(); }

class BusTest : public ::testing::Test {
 protected:
  ~BusTest() override { runUntilIdle(); }

  BusReply call(const BusTarget& target, const char* method, GVariant* arguments = nullptr,
                const char* type = "r") {
    BusCalls calls;
    std::unique_ptr<BusReply> answer;
    calls.call(ours.get(), target, method, arguments, type,
               [&](BusReply reply) { answer = std::make_unique<BusReply>(std::move(reply)); });
    EXPECT_EQ(answer, nullptr) << "never at once";
    EXPECT_TRUE(runUntil([&] { return answer != nullptr; })) << method;
    return answer ? std::move(*answer) : BusReply{};
  }

  PrivateBus bus;
  BusPtr ours = bus.connect();
  BusPtr others = bus.connect();
  const BusTarget daemon{"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"};
};

TEST_F(BusTest, SpeaksTheTypesAsAnotherLibraryDoes) {
  const auto stranger = bus.connectStranger();
  std::vector<std::string> heard;
  const SignalSubscription here(ours.get(), {.interface = kInterface, .member = "Here"},
                                [&](const char*, const char*, GVariant* parameters) {
                                  heard.push_back("here " + printed(parameters));
                                });
  const guint there = g_dbus_connection_signal_subscribe(
      stranger.get(), nullptr, kInterface, "There", nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
      [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
         GVariant* parameters, gpointer list) {
        static_cast<std::vector<std::string>*>(list)->push_back("there " + printed(parameters));
      },
      &heard, nullptr);
  askBus(ours.get(), "GetId");
  g_variant_unref(g_dbus_connection_call_sync(
      stranger.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      "GetId", nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
  for (const char* text : {
           "()",
           "(byte 0xff, true, int16 -2, uint16 65535, -4, uint32 5, int64 -6, uint64 7, -1.5)",
           "('gr\u00fcn', '', objectpath '/a/b', signature 'a{sv}')",
           "(<1>, <<'deep'>>, <@av []>)",
           "([byte 0x01, 0x02], @ay [], [1.5, 2.5], [true, false], @ai [], [int64 1])",
           "({'a': <1>, 'b': <[(1, 2.5)]>}, @a{sv} {}, {uint32 1: ['x', 'y']})",
           "([(22, 22, [byte 0x00, 0xff])], [@as [], ['x']], (('nested',), byte 0x01))",
       }) {
    heard.clear();
    const std::string whole = printed(sinkVariant(g_variant_new_parsed(text)).get());
    g_dbus_connection_emit_signal(stranger.get(), nullptr, kPath, kInterface, "Here",
                                  g_variant_new_parsed(text), nullptr);
    EXPECT_TRUE(runUntil([&] { return heard.size() == 1; })) << text;
    ours->emit(kPath, kInterface, "There", g_variant_new_parsed(text));
    EXPECT_TRUE(runUntil([&] { return heard.size() == 2; })) << text;
    EXPECT_THAT(heard, ElementsAre("here " + whole, "there " + whole));
  }
  g_dbus_connection_signal_unsubscribe(stranger.get(), there);
}

TEST_F(BusTest, WhatCantBeWrittenIsNotSent) {
  std::vector<std::string> heard;
  const SignalSubscription subscription(ours.get(), {.interface = kInterface},
                                        [&](const char*, const char*, GVariant* parameters) {
                                          heard.push_back(printed(parameters));
                                        });
  askBus(ours.get(), "GetId");
  const auto say = [&](const BusWrite& write) { others->emit(kPath, kInterface, "Here", write); };
  say([](BusWriter& body) {
    body.objectPath("no path");
    body.text("too late");
  });
  say([](BusWriter& body) { body.structure("i", [&] { body.text("no number"); }); });
  say([](BusWriter& body) { body.array("s", [&] { body.variant("i", [&] { body.int32(1); }); }); });
  say([](BusWriter& body) {
    body.text("gr\u00fcn \xff");
    body.text(std::string("a\0b", 3));
  });
  say([](BusWriter& body) {
    body.structure("ai", [&] { body.int32s({1, -2}); });
    body.parts(sinkVariant(g_variant_new_parsed("(true, <'x'>)")).get());
  });
  EXPECT_TRUE(runUntil([&] { return heard.size() >= 2; }));
  EXPECT_THAT(heard, ElementsAre("('gr\u00fcn \ufffd', 'a\ufffdb')", "(([1, -2],), true, <'x'>)"));
}

TEST_F(BusTest, ANamedSenderIsItsOwnerAndNobodyElse) {
  std::vector<std::string> heard;
  const SignalSubscription subscription(
      ours.get(), {.sender = "org.kelvane.Service", .interface = kInterface},
      [&](const char*, const char* member, GVariant*) { heard.push_back(member); });
  const auto say = [&](const BusPtr& who, const char* what) {
    // To us alone, which no rule of the bus holds back.
    sd_bus_message* raw = nullptr;
    sd_bus_message_new_signal(who->handle(), &raw, kPath, kInterface, what);
    const BusMessagePtr message(raw);
    sd_bus_send_to(who->handle(), raw, ours->uniqueName().c_str(), nullptr);
    askBus(who.get(), "GetId");
    askBus(ours.get(), "GetId");
    runUntilIdle();
  };
  say(others, "BeforeThereIsOne");
  askBus(others.get(), "RequestName", g_variant_new("(su)", "org.kelvane.Service", 0));
  say(others, "Owner");
  const BusPtr impostor = bus.connect();
  say(impostor, "Impostor");
  EXPECT_THAT(heard, ElementsAre("Owner"));
}

TEST_F(BusTest, ALoopInsideAHandlerTakesNoOtherMessage) {
  std::string order;
  const SignalSubscription subscription(ours.get(), {.interface = kInterface},
                                        [&](const char*, const char*, GVariant*) {
                                          order += "(";
                                          runUntilIdle();
                                          order += ")";
                                        });
  askBus(ours.get(), "GetId");
  for (int i = 0; i < 2; ++i) others->emit(kPath, kInterface, "Twice");
  askBus(others.get(), "GetId");
  EXPECT_TRUE(runUntil([&] { return order == "()()"; })) << order;
  EXPECT_EQ(ours->state(), State::ready);
}

TEST_F(BusTest, CallsEndWithOneAnswerOrNone) {
  EXPECT_TRUE(call(daemon, "GetId", nullptr, "(s)"));
  EXPECT_THAT(call(daemon, "GetId", nullptr, "(u)").error, HasSubstr("(s), not (u)"));
  const BusReply none = call({"org.kelvane.None", kPath, kInterface}, "Do");
  EXPECT_EQ(none.errorName, "org.freedesktop.DBus.Error.NameHasNoOwner");
  EXPECT_EQ(call(daemon, "no name").error, "the call can't be made");

  // Dropped, and dropped by its own answer.
  int answers = 0;
  auto calls = std::make_unique<BusCalls>();
  calls->call(ours.get(), daemon, "GetId", nullptr, "(s)", [&](const BusReply&) { ++answers; });
  calls = std::make_unique<BusCalls>();
  for (int i = 0; i < 2; ++i)
    calls->call(ours.get(), daemon, "GetId", nullptr, "(s)", [&](const BusReply&) {
      ++answers;
      calls.reset();
    });
  EXPECT_TRUE(runUntil([&] { return !calls; }));
  askBus(ours.get(), "GetId");
  runUntilIdle();
  EXPECT_EQ(answers, 1);

  // The end of the connection is an answer, too, and so is its having ended.
  const auto interface = parseInterface(
      "<node><interface name='org.kelvane.Test'><method name='Wait'/></interface></node>");
  std::vector<BusInvocation> waiting;
  const ExportedObject object(
      others.get(), kPath, *interface,
      {[&](const ExportedObject::Call& each) { waiting.push_back(each.invocation); }, nullptr});
  std::vector<State> states;
  const auto observation = ours->observe([&] { states.push_back(ours->state()); });
  BusCalls late;
  std::string error;
  late.call(ours.get(), {others->uniqueName(), kPath, kInterface}, "Wait", nullptr, "()",
            [&](const BusReply& reply) { error = reply.error; });
  ASSERT_TRUE(runUntil([&] { return !waiting.empty(); }));
  ours->close();
  EXPECT_TRUE(runUntil([&] { return !error.empty() && !states.empty(); }));
  EXPECT_THAT(states, ElementsAre(State::closed));
  EXPECT_NE(call(daemon, "GetId").error, "");
}

TEST_F(BusTest, ExportedObjectsAnswerWhatTheyDescribe) {
  const auto interface = parseInterface(R"(<node><interface name="org.kelvane.Test">
    <method name="Double"><arg type="i" direction="in"/><arg type="i" direction="out"/></method>
    <property name="Here" type="s" access="read"/><property name="Gone" type="s" access="read"/>
    </interface></node>)");
  const auto second = parseInterface(
      "<node><interface name='org.kelvane.Second'><property name='Spoilt' type='o' "
      "access='read'/></interface></node>");
  const ExportedObject object(others.get(), kPath, *interface,
                              {[](const ExportedObject::Call& each) {
                                 int number = 0;
                                 g_variant_get(each.arguments, "(i)", &number);
                                 each.invocation.answer(g_variant_new("(i)", 2 * number));
                               },
                               [](std::string_view name) -> BusWrite {
                                 if (name != "Here") return nullptr;
                                 return [](BusWriter& value) { value.text("yes"); };
                               }});
  const ExportedObject beside(others.get(), kPath, *second, {nullptr, [](std::string_view) {
                                                               return [](BusWriter& value) {
                                                                 value.objectPath("no path");
                                                               };
                                                             }});
  struct Row {
    const char* interface;
    const char* method;
    const char* arguments;
    const char* answer;  // or the last part of an error's name
  };
  for (const Row& row : {
           Row{kInterface, "Double", "(21,)", "(42,)"},
           Row{kInterface, "Double", "('x',)", "InvalidArgs"},
           Row{kInterface, "Double", "()", "InvalidArgs"},
           Row{kInterface, "Halve", "(21,)", "UnknownMethod"},
           Row{"org.kelvane.Second", "Double", "(21,)", "UnknownMethod"},
           Row{"org.kelvane.Third", "Double", "(21,)", "Unknown"},
           Row{kPropertiesInterface, "Get", "('org.kelvane.Test', 'Here')", "(<'yes'>,)"},
           Row{kPropertiesInterface, "Get", "('org.kelvane.Test', 'Gone')", "InvalidArgs"},
           Row{kPropertiesInterface, "Get", "('org.kelvane.Third', 'Here')", "InvalidArgs"},
           Row{kPropertiesInterface, "Get", "('org.kelvane.Test',)", "InvalidArgs"},
           Row{kPropertiesInterface, "GetAll", "('org.kelvane.Test',)", "({'Here': <'yes'>},)"},
           Row{kPropertiesInterface, "GetAll", "('org.kelvane.Second',)", "Failed"},
           Row{kPropertiesInterface, "Set", "('org.kelvane.Test', 'Here', <'no'>)", "InvalidArgs"},
       }) {
    const BusReply reply = call({others->uniqueName(), kPath, row.interface}, row.method,
                                g_variant_new_parsed(row.arguments));
    EXPECT_THAT(reply ? printed(reply.value.get()) : reply.errorName, HasSubstr(row.answer))
        << row.interface << " " << row.method << row.arguments;
  }

  const auto described = [&](const char* path) {
    const BusReply reply =
        call({others->uniqueName(), path, "org.freedesktop.DBus.Introspectable"}, "Introspect");
    const char* text = "";
    if (reply) g_variant_get(reply.value.get(), "(&s)", &text);
    return GDBusNodeInfoPtr(g_dbus_node_info_new_for_xml(text, nullptr));
  };
  const auto node = described(kPath);
  ASSERT_NE(node, nullptr);
  EXPECT_NE(g_dbus_node_info_lookup_interface(node.get(), kInterface), nullptr);
  EXPECT_NE(g_dbus_node_info_lookup_interface(node.get(), "org.kelvane.Second"), nullptr);
  for (const auto& [path, child] : {std::pair{"/", "org"}, std::pair{"/org", "kelvane"}}) {
    const auto above = described(path);
    ASSERT_NE(above, nullptr) << path;
    EXPECT_STREQ(above->nodes[0]->path, child);
    EXPECT_EQ(above->nodes[1], nullptr);
  }
  EXPECT_EQ(described("/or"), nullptr);
}

TEST(BusConnection, TellsOfABusThatIsNotThereOrHangsUp) {
  std::string problem;
  EXPECT_EQ(BusConnection::open("", &problem), nullptr);
  EXPECT_EQ(BusConnection::open("unix:path=/nowhere/bus", &problem), nullptr);
  EXPECT_THAT(problem, HasSubstr("No such file"));
  EXPECT_EQ(BusConnection::open("nonsense", &problem), nullptr);

  auto bus = std::make_unique<PrivateBus>();
  const BusPtr opening = BusConnection::open(bus->address());
  ASSERT_NE(opening, nullptr);
  EXPECT_EQ(opening->state(), State::opening);
  std::vector<State> states;
  const auto observation = opening->observe([&] { states.push_back(opening->state()); });
  EXPECT_TRUE(runUntil([&] { return states.size() == 1; }));
  EXPECT_THAT(opening->uniqueName(), HasSubstr(":1."));
  const BusPtr never = BusConnection::open(bus->address());
  bus.reset();
  EXPECT_TRUE(runUntil([&] { return states.size() == 2; }));
  EXPECT_THAT(states, ElementsAre(State::ready, State::closed));
  EXPECT_FALSE(never->waitUntilReady());
}

}  // namespace
}  // namespace kelvane
