// What the resident program and its window program say to each other over a socket pair: plain
// structs and their one form as text. Any thread; nothing here throws, whatever the text is.
//
// UTF-8, one JSON object a line, at most `kMaximumLine` bytes with its end. The first line each way
// is a greeting, sent without waiting for the other one. Then the resident sends requests, and the
// window program events. Windows, alerts, popovers and menus have numbers of the resident's
// choosing, which are never used again; what names a number that is gone is ignored, for the two
// cross.
//
// The window program stays, windows or not, until it reads the end of the stream: only the resident
// knows that it has asked for nothing more. It then ends with status 0, as there is nothing to
// save.
//
// Fields that are missing have their default, unless there is none, and fields that are not known
// are ignored. An unknown kind of message is an error, and after an error neither side goes on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/application_information.h"
#include "platform/geometry.h"
#include "platform/menu.h"
#include "platform/text.h"
#include "platform/view_tree.h"
#include "platform/windows.h"

namespace kelvane {

inline constexpr int kWindowProtocol = 1;
inline constexpr std::size_t kMaximumLine = std::size_t{1} << 20;  // bytes
inline constexpr int kMaximumDepth = 64;                           // of objects and lists
// The end of the socket pair that the window program inherits.
inline constexpr int kWindowProgramFd = 3;

// The window program's has the number only; what it says of the rest is ignored.
struct Greeting {
  int protocol = kWindowProtocol;
  std::optional<bool> isDark;  // the desktop wants dark windows; absent: it does not say
  bool isMotionReduced = false;
  bool operator==(const Greeting&) const = default;
};

// --- From the resident.

// Answered by any number of `NodeActed` and, unless the resident closes it, one `WindowClosed`. It
// is shown and presented at once.
struct OpenWindow {
  std::uint32_t window = 0;
  std::string title;
  ViewNode tree;
};
struct ApplySteps {
  std::uint32_t window = 0;
  std::vector<ViewStep> steps;
};
struct CloseWindow {  // has no answer
  std::uint32_t window = 0;
};
struct FrontWindow {
  std::uint32_t window = 0;
  std::string token;  // as in `ActivateWindows`
};
// Answered by one `AlertAnswered`.
struct ShowAlert {
  std::uint32_t alert = 0;
  Alert content;
};
struct AbortAlert {  // has no answer
  std::uint32_t alert = 0;
};
// One about panel at a time; a second one only presents it anew. Answered by one `AboutClosed` when
// the user closes it.
struct ShowAbout {
  ApplicationInformation information;
};
// Answered by one `PopoverClosed`, or by `PopoverRefused` when it can't be shown where it belongs.
struct ShowPopover {
  std::uint32_t popover = 0;
  std::string text;
  double maximumTextWidth = 0;  // points; 0: any
  double inset = 0;             // points on each side
  bool isAnimated = true;
  std::optional<Point> anchor;  // in the item, pixels of the root window, y downwards
};
struct ClosePopover {  // has no answer
  std::uint32_t popover = 0;
};
// A line of a menu, as in `MenuLine`.
struct ShownLine {
  std::uint32_t line = 0;  // a number of its own among all lines of the menu
  MenuLine::Kind kind = MenuLine::Kind::item;
  std::string title;
  std::optional<AttributedText> attributedTitle;
  bool isEnabled = true;
  KeyEquivalent keyEquivalent;
  bool isAlternate = false;
  std::vector<ShownLine> submenu;  // empty: it has none
  bool operator==(const ShownLine&) const = default;
};
// Answered by one `MenuChosen` or `MenuClosed`, unless the resident closes it. One menu at a time;
// a second one takes the place of the first, which then has no answer. It gets the keyboard.
struct ShowMenu {
  std::uint32_t menu = 0;
  std::vector<ShownLine> lines;
  // In the item, where the host says that it has just been clicked: pixels of the root window, or
  // the host's own, y downwards; absent: at the pointer. Where windows can't be placed it is not
  // looked at.
  std::optional<Point> anchor;
  std::string token;  // as in `ActivateWindows`
};
struct CloseMenu {  // has no answer
  std::uint32_t menu = 0;
};
// Brings what is open to the front. The activation token, unless it is empty, is good for one
// window: if none is open, it is kept for the next to be shown.
struct ActivateWindows {
  std::string token;
  std::optional<Point> anchor;  // as in `ShowMenu`, if it is for a click on the item
};
struct DarkChanged {
  std::optional<bool> isDark;
};

using WindowRequest =
    std::variant<OpenWindow, ApplySteps, CloseWindow, FrontWindow, ShowAlert, AbortAlert, ShowAbout,
                 ShowPopover, ClosePopover, ActivateWindows, DarkChanged, ShowMenu, CloseMenu>;

// --- From the window program.

// As in `ViewWindowEvents::acted`.
struct NodeActed {
  std::uint32_t window = 0;
  std::string action;
  std::string id;
  int value = 0;
};
struct WindowClosed {  // the user closed it
  std::uint32_t window = 0;
};
struct AlertAnswered {
  std::uint32_t alert = 0;
  int button = 0;  // index; 0 also for the default button, and when it was dismissed
};
struct AboutClosed {};
struct PopoverClosed {
  std::uint32_t popover = 0;
};
struct PopoverRefused {
  std::uint32_t popover = 0;
};
struct MenuChosen {  // and the menu is gone
  std::uint32_t menu = 0;
  std::uint32_t line = 0;
};
struct MenuClosed {
  std::uint32_t menu = 0;
  bool hasLostFocus = false;  // because of that, perhaps by a click on the item
};
// Comes for an anchor of a click that is not in pixels of the root window.
struct ItemClicked {
  Point told;   // that anchor
  Point place;  // the same in such pixels
};

using WindowEvent = std::variant<NodeActed, WindowClosed, AlertAnswered, AboutClosed, PopoverClosed,
                                 PopoverRefused, MenuChosen, MenuClosed, ItemClicked>;

// --- As text.

// One line with its end. Bytes that are not UTF-8 become U+FFFD.
std::string encode(const Greeting& greeting);
std::string encode(const WindowRequest& request);
std::string encode(const WindowEvent& event);

// Exactly one of the two is there; the error is for people, on one line.
template <typename Message>
struct Decoded {
  std::optional<Message> message;
  std::string error;
};

// A line, with or without its end. A greeting with another protocol's number is an error.
Decoded<Greeting> decodeGreeting(std::string_view line);
Decoded<WindowRequest> decodeRequest(std::string_view line);
Decoded<WindowEvent> decodeEvent(std::string_view line);

// A tree by itself, as `OpenWindow` has it, on one line without its end.
std::string encodeView(const ViewNode& tree);
Decoded<ViewNode> decodeView(std::string_view text);

}  // namespace kelvane
