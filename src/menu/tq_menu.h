// The item's menu: lines that are thrown away and built anew, and what happens to the menu as
// publishers. Main thread; it outlives the item it is attached to.
#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "platform/menu.h"
#include "reactive/subject.h"

namespace kelvane {

class TqMenu : public Menu {
 public:
  explicit TqMenu(std::string title = "") : title_(std::move(title)) {}

  const std::string& title() const { return title_; }
  bool isOpen() const { return isOpen_; }

  // Whether the menu is shown: once at subscribing, then each opening and closing.
  const Publisher<bool>& isOpenPublisher() const { return isOpenPublisher_; }
  // The menu is about to be shown; subscribers build its lines anew.
  const Publisher<std::monostate>& needsUpdatePublisher() const { return needsUpdatePublisher_; }

  // Called after the publisher; empty: nothing.
  std::function<void(TqMenu&)> onUpdate;

  void removeAllItems() { lines_.clear(); }
  void addItem(MenuLine line) { lines_.push_back(std::move(line)); }
  void addSeparator() { lines_.push_back({.kind = MenuLine::Kind::separator}); }

  const std::vector<MenuLine>& lines() const override { return lines_; }
  void needsUpdate() override;
  void willOpen() override { setOpen(true); }
  void didClose() override { setOpen(false); }

 private:
  void setOpen(bool isOpen);

  std::string title_;
  CurrentValueSubject<bool> isOpenSubject_{false};
  PassthroughSubject<std::monostate> needsUpdateSubject_;
  bool isOpen_ = false;
  Publisher<bool> isOpenPublisher_ = isOpenSubject_.publisher();
  Publisher<std::monostate> needsUpdatePublisher_ = needsUpdateSubject_.publisher();
  std::vector<MenuLine> lines_;
};

}  // namespace kelvane
