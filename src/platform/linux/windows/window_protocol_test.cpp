#include "platform/linux/windows/window_protocol.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/windows/line_buffer.h"

namespace kelvane {
namespace {

using testing::HasSubstr;

ViewNode fullNode() {
  ViewNode node{.kind = ViewNode::Kind::radioGroup,
                .id = "general/“type”",
                .label = "Type:\n\t\"%.0f\xEF\xB9\xAA\"",
                .action = "setType",
                .help = "help",
                .symbol = "gearshape",
                .isOn = false,
                .options = {"Text", "Icon"},
                .selection = 0,
                .isHorizontal = true,
                .isDefault = true,
                .alignment = ViewNode::Alignment::center,
                .spacing = 40,
                .paddingTop = 16.5,
                .paddingBottom = 2,
                .width = 0.1,
                .equalWidthGroup = "labels",
                .children = {{.kind = ViewNode::Kind::divider, .id = "d"}}};
  return node;
}

Picture icon() {
  using Kind = PathStep::Kind;
  return {"LowBatteryIcon",
          {64, 32.25},
          {{{{Kind::move, {{{0.1, 2}}}},
             {Kind::line, {{{1e-9, -2}}}},
             {Kind::curve, {{{1, 2}, {3, 4}, {5, 6}}}},
             {Kind::close}},
            0.5,
            Color{0.1, 0.2, 0.3, 0.4}},
           {}},
          false};
}

std::vector<ShownLine> menuLines() {
  using Kind = MenuLine::Kind;
  const AttributedText text{{{"57", 15, FontWeight::medium, Color{1, 0, 0, 1}}, {"%"}}};
  return {{.line = 0, .attributedTitle = text, .isEnabled = false},
          {.line = 1, .kind = Kind::placeholder},
          {.line = 2, .title = "Health", .keyEquivalent = {.option = true}, .isAlternate = true},
          {.line = 3, .kind = Kind::separator},
          {.line = 4,
           .title = "More",
           .keyEquivalent = {",", true},
           .submenu = {{.line = 5, .title = "FAQ"}}}};
}

// Each field of each message has to be there, and to come back as it was.
TEST(WindowProtocol, EveryMessageHasOneForm) {
  const ViewNode plain{.id = "t"};
  const struct {
    WindowRequest request;
    const char* line;
  } requests[] = {
      {OpenWindow{4294967295U, "Kelvane", plain},
       R"({"kind":"open","title":"Kelvane","tree":{"id":"t","kind":"text"},"window":4294967295})"},
      {ApplySteps{1,
                  {{ViewStep::Kind::insert, "p", 2, "", plain},
                   {ViewStep::Kind::remove, "", 0, "r", {}},
                   {ViewStep::Kind::set, "", 0, "t", plain}}},
       R"({"kind":"apply","steps":[{"index":2,"kind":"insert","node":{"id":"t","kind":"text"},)"
       R"("parent":"p"},{"id":"r","kind":"remove"},)"
       R"({"id":"t","kind":"set","node":{"id":"t","kind":"text"}}],"window":1})"},
      {CloseWindow{1}, R"({"kind":"close","window":1})"},
      {FrontWindow{1, "t0k"}, R"({"kind":"front","token":"t0k","window":1})"},
      {ShowAlert{2, {"T", "M", AlertStyle::critical, {"a", "b"}, 370, icon()}},
       R"({"alert":2,"buttons":["a","b"],"icon":{"isTemplate":false,"layers":[{"color":[0.1,0.2,)"
       R"(0.3,0.4],"opacity":0.5,"path":[["move",0.1,2.0],["line",1e-09,-2.0],["curve",1.0,2.0,)"
       R"(3.0,4.0,5.0,6.0],["close"]]},{"path":[]}],"name":"LowBatteryIcon","size":[64.0,32.25]},)"
       R"("kind":"alert","message":"M","minimumWidth":370.0,"style":"critical","title":"T"})"},
      {AbortAlert{2}, R"({"alert":2,"kind":"abortAlert"})"},
      {ShowAbout{{"n", "i", "v", "b", "©"}},
       R"({"build":"b","copyright":"©","identifier":"i","kind":"about","name":"n","version":"v"})"},
      {ShowPopover{3, "Hello", 1000, 15, false, Point{1900, 3}},
       R"({"anchor":[1900.0,3.0],"inset":15.0,"isAnimated":false,"kind":"popover",)"
       R"("maximumTextWidth":1000.0,"popover":3,"text":"Hello"})"},
      {ClosePopover{3}, R"({"kind":"closePopover","popover":3})"},
      {ActivateWindows{"t0k"}, R"({"kind":"activate","token":"t0k"})"},
      {ActivateWindows{"", Point{1212, 17}}, R"({"anchor":[1212.0,17.0],"kind":"activate"})"},
      {DarkChanged{}, R"({"dark":null,"kind":"dark"})"},
      {DarkChanged{true}, R"({"dark":true,"kind":"dark"})"},
      {ShowMenu{4, menuLines(), Point{1190, 16}, "t0k"},
       R"({"anchor":[1190.0,16.0],"kind":"menu","lines":[{"attributedTitle":{"runs":[{"color":)"
       R"([1.0,0.0,0.0,1.0],"fontSize":15.0,"text":"57","weight":"medium"},{"text":"%"}]},)"
       R"("isEnabled":false,"line":0},{"kind":"placeholder","line":1},{"isAlternate":true,)"
       R"("keyEquivalent":{"option":true},"line":2,"title":"Health"},{"kind":"separator","line":3},)"
       R"({"keyEquivalent":{"command":true,"key":","},"line":4,"submenu":[{"line":5,"title":"FAQ"}],)"
       R"("title":"More"}],"menu":4,"token":"t0k"})"},
      {ShowMenu{4}, R"({"kind":"menu","lines":[],"menu":4})"},
      {CloseMenu{4}, R"({"kind":"closeMenu","menu":4})"},
  };
  for (const auto& row : requests) {
    EXPECT_EQ(encode(row.request), std::string(row.line) + "\n");
    const auto back = decodeRequest(row.line);
    ASSERT_TRUE(back.message) << back.error;
    EXPECT_EQ(encode(*back.message), encode(row.request));
  }
  const struct {
    WindowEvent event;
    const char* line;
  } events[] = {
      {NodeActed{1, "a", "general/x", -1},
       R"({"action":"a","id":"general/x","kind":"acted","value":-1,"window":1})"},
      {WindowClosed{1}, R"({"kind":"closed","window":1})"},
      {AlertAnswered{2, 1}, R"({"alert":2,"button":1,"kind":"answered"})"},
      {AboutClosed{}, R"({"kind":"aboutClosed"})"},
      {PopoverClosed{3}, R"({"kind":"popoverClosed","popover":3})"},
      {PopoverRefused{3}, R"({"kind":"popoverRefused","popover":3})"},
      {MenuChosen{4, 2}, R"({"kind":"menuChosen","line":2,"menu":4})"},
      {MenuClosed{4}, R"({"kind":"menuClosed","menu":4})"},
      {MenuClosed{4, true}, R"({"hasLostFocus":true,"kind":"menuClosed","menu":4})"},
      {ItemClicked{{1212, 17}, {2424, 34}},
       R"({"kind":"itemClicked","place":[2424.0,34.0],"told":[1212.0,17.0]})"},
  };
  for (const auto& row : events) {
    EXPECT_EQ(encode(row.event), std::string(row.line) + "\n");
    const auto back = decodeEvent(row.line);
    ASSERT_TRUE(back.message) << back.error;
    EXPECT_EQ(encode(*back.message), encode(row.event));
  }
  EXPECT_EQ(encode(Greeting{}), "{\"dark\":null,\"protocol\":1,\"reducedMotion\":false}\n");
  const Greeting dark{1, true, true};
  EXPECT_EQ(decodeGreeting(encode(dark)).message, dark);
}

TEST(WindowProtocol, ATreeComesBackWhole) {
  const ViewNode node = fullNode();
  const auto back = decodeView(encodeView(node));
  ASSERT_TRUE(back.message) << back.error;
  EXPECT_EQ(*back.message, node);
  EXPECT_THAT(encodeView(node), HasSubstr(R"("alignment":"center")"));
}

TEST(WindowProtocol, NonsenseIsAnErrorOnOneLine) {
  const std::string deep = R"({"kind":"open","window":1,"title":"[[","tree":)";
  const struct {
    std::string line;
    const char* error;
  } rows[] = {
      {"", "not a JSON object"},
      {"[]", "not a JSON object"},
      {R"({"kind":"close","window":1} x)", "not a JSON object"},
      {"{\"kind\":\"close\",\"window\":1,\"x\":\"\xC3\"}", "not a JSON object"},
      {R"({"kind":"front","window":1e999})", "not a JSON object"},
      {R"({"window":1})", "has no kind"},
      {R"({"kind":5})", "has no kind"},
      {R"({"kind":"closed","window":1})", "an unknown kind: \"closed\""},
      {R"({"kind":"a\nb"})", R"(unknown kind: "a\nb")"},
      {R"({"kind":"close"})", "“close” is malformed: “window” is missing"},
      {R"({"kind":"close","window":-1})", "“window” is not what it should be"},
      {R"({"kind":"close","window":4294967296})", "“window” is not"},
      {R"({"kind":"close","window":18446744073709551615})", "“window” is not"},
      {R"({"kind":"close","window":1.0})", "“window” is not"},
      {R"({"kind":"close","window":"1"})", "“window” is not"},
      {R"({"kind":"alert","alert":1,"title":"","style":"loud"})", "“style” is not"},
      {R"({"kind":"alert","alert":1,"title":"","buttons":["a",1]})", "“buttons” is not"},
      {R"({"kind":"popover","popover":1,"text":"","anchor":[1]})", "“anchor” is not"},
      {R"({"kind":"alert","alert":1,"title":"","icon":{"name":"","size":[1,1],)"
       R"("layers":[{"path":[["line",1]]}]}})",
       "“path” is not"},
      {R"({"kind":"menu","menu":1,"lines":[{"title":"x"}]})", "“line” is missing"},
      {R"({"kind":"menu","menu":1,"lines":[{"line":0,"submenu":[{"line":1,"kind":"x"}]}]})",
       "“kind” is not"},
      {R"({"kind":"apply","window":1,"steps":[{"kind":"set","id":"x"}]})", "“node” is missing"},
      {deep + std::string(65, '['), "nested too deeply"},
      {deep + R"({"kind":"text","id":"a\"","x":)" + std::string(63, '['), "nested too deeply"},
      {std::string(kMaximumLine + 1, ' '), "too long"},
  };
  for (const auto& row : rows) {
    const auto decoded = decodeRequest(row.line);
    EXPECT_FALSE(decoded.message) << row.line;
    EXPECT_THAT(decoded.error, HasSubstr(row.error)) << row.line;
    EXPECT_EQ(decoded.error.find('\n'), std::string::npos);
  }
  EXPECT_EQ(decodeGreeting(R"({"protocol":2})").error,
            "the other side speaks protocol 2, this one 1");
  for (const char* line : {"{}", R"({"kind":"dark","dark":null})", R"({"protocol":"1"})"})
    EXPECT_EQ(decodeGreeting(line).error, "there is no greeting") << line;
}

TEST(WindowProtocol, WhatIsNewIsIgnoredAndWhatIsForeignIsReplaced) {
  EXPECT_TRUE(decodeRequest(R"({"kind":"close","window":1,"since":[{"any":null}]})").message);
  EXPECT_TRUE(decodeGreeting(R"({"protocol":1,"dark":null,"reducedMotion":true,"x":1})").message);
  EXPECT_EQ(
      encode(WindowEvent(NodeActed{.id = "\xFFz"})),
      "{\"action\":\"\",\"id\":\"\xEF\xBF\xBDz\",\"kind\":\"acted\",\"value\":0,\"window\":0}\n");
}

TEST(LineBuffer, PutsLinesTogether) {
  LineBuffer lines(5);
  const struct {
    const char* piece;
    std::vector<std::string> lines;
    bool hasRest;
  } rows[] = {{"a", {}, true},
              {"b\n\ncdef\ng", {"ab", "", "cdef"}, true},
              {"\n", {"g"}, false},
              {"1234", {}, true},
              {"\n12345\n", {"1234"}, true}};
  for (const auto& row : rows) {
    EXPECT_FALSE(lines.isOverlong());
    lines.add(row.piece);
    for (const std::string& line : row.lines) EXPECT_EQ(lines.next(), line);
    EXPECT_EQ(lines.next(), std::nullopt);
    EXPECT_EQ(lines.hasRest(), row.hasRest);
  }
  EXPECT_TRUE(lines.isOverlong());
  LineBuffer endless(5);
  endless.add("12345");
  EXPECT_EQ(endless.next(), std::nullopt);
  EXPECT_TRUE(endless.isOverlong());
}

}  // namespace
}  // namespace kelvane
