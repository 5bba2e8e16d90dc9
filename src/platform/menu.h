// A menu as plain lines, and the calls its host makes. Main thread.
//
// The application owns menus and their lines; a platform keeps a pointer while a menu is attached
// and asks for the lines whenever it is about to show or export them.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/text.h"

namespace kelvane {

class Menu;

// A key and its modifiers; an empty key with modifiers only selects an alternate line.
struct KeyEquivalent {
  std::string key;
  bool command = false;
  bool option = false;
  bool operator==(const KeyEquivalent&) const = default;
};

struct MenuLine {
  enum class Kind {
    item,
    separator,
    placeholder,  // takes no room; only there so that the next line can be its alternate
  };
  Kind kind = Kind::item;
  std::string title;
  std::optional<AttributedText> attributedTitle;  // shown instead of `title` where a host can
  bool isEnabled = true;
  KeyEquivalent keyEquivalent;
  bool isAlternate = false;  // shown in place of the line before while its modifiers are held
  std::shared_ptr<Menu> submenu;
  std::function<void()> action;  // empty: choosing the line does nothing
};

class Menu {
 public:
  virtual ~Menu() = default;

  // The lines as of the last update. Valid until the next call of `needsUpdate`.
  virtual const std::vector<MenuLine>& lines() const = 0;

  // The host's calls: about to be shown or exported (the lines may change inside), shown, gone.
  virtual void needsUpdate() = 0;
  virtual void willOpen() = 0;
  virtual void didClose() = 0;
};

}  // namespace kelvane
