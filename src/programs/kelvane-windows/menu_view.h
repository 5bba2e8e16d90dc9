// The lines of a menu as widgets: one below the other, a submenu's below its own line. Main thread.
//
// The line that has the focus is the one that is lit up, be it by the pointer or by a key.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>

#include "platform/linux/windows/window_protocol.h"

namespace kelvane {

class MenuView {
 public:
  // `chosen` is called with the number of a line that can be chosen and has no submenu.
  MenuView(const std::vector<ShownLine>& lines, std::function<void(std::uint32_t)> chosen);
  MenuView(const MenuView&) = delete;
  MenuView& operator=(const MenuView&) = delete;

  Gtk::Widget& widget() { return box_; }

  // Shows the alternates of these modifiers in place of the lines before them.
  void hold(bool command, bool option);

  // Moves the light by one line, which goes round; or to an end.
  void step(int direction);
  void goToEnd(int direction);
  // Opens the submenu of the line and goes into it; closes the one that the line is in, or its own.
  void enterSubmenu();
  void leaveSubmenu();
  void chooseFocused();
  // The next line that begins with this character.
  void goToInitial(gunichar character);
  // Whether a line has this key equivalent, which is then chosen.
  bool chooseKey(gunichar character, bool command, bool option);

 private:
  struct Row {
    ShownLine line;
    Row* parent = nullptr;
    std::string text;               // as shown
    Gtk::Widget* widget = nullptr;  // null: takes no room
    Gtk::Button* button = nullptr;  // null: none that could be chosen
    Gtk::Image* arrow = nullptr;
    Gtk::Box* submenu = nullptr;  // null: it has none
  };

  void add(Gtk::Box& box, const std::vector<ShownLine>& lines, Row* parent);
  void addLine(Gtk::Box& box, Row& row);
  void choose(Row& row);
  void open(Row& row, bool isOpen);
  std::vector<Row*> reachable() const;
  Row* focused() const;

  std::function<void(std::uint32_t)> chosen_;
  Gtk::Box box_;
  std::vector<std::unique_ptr<Row>> rows_;  // a submenu's after the line that it belongs to
};

}  // namespace kelvane
