// A menu on the bus, com.canonical.dbusmenu: the host reads the lines and draws them, and tells
// what the user did. Main thread.
//
// Anyone on the bus may call, so no argument is believed: unknown ids are errors, events that make
// no sense are ignored, and a flood of calls costs little more than the answers: what the menu is
// told or asked of them, it is told or asked once in a turn of the main loop.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include <glib.h>

#include "platform/linux/glib/bus.h"
#include "platform/linux/glib/exported_object.h"
#include "platform/linux/tray/dbus_menu_layout.h"
#include "platform/linux/tray/dbus_menu_values.h"
#include "platform/menu.h"
#include "platform/portable/run_loop_queue.h"

namespace kelvane {

class DbusMenu {
 public:
  static constexpr const char* kPath = "/MenuBar";

  // `rewrite` is applied to every title; empty: none.
  DbusMenu(RunLoopQueue& loop, std::function<std::string(std::string)> rewrite);
  ~DbusMenu();
  DbusMenu(const DbusMenu&) = delete;
  DbusMenu& operator=(const DbusMenu&) = delete;

  // Called on the main queue when the user may have opened the menu: a host says so, or asks what
  // is to be shown.
  void setShownObserver(std::function<void()> shown) { shown_ = std::move(shown); }

  // The menu that is exported; not owned. Null: an empty menu.
  void setMenu(Menu* menu);

  // From here on the menu is at `kPath`, with the lines of the next `update`; that one tells
  // nobody, as nobody has read any before.
  void exportOn(BusConnection* connection, KeyNames names);
  void withdraw();

  // Asks the menu to update, at most once in a turn of the main loop, and tells hosts what is
  // different. True when lines have come or gone. Nothing while it is not exported.
  bool update();

 private:
  // A menu that was told it is shown.
  struct OpenMenu {
    std::shared_ptr<Menu> submenu;  // null for the root
    Menu* menu;
    std::unique_ptr<NameWatch> host;
  };

  void handle(const ExportedObject::Call& call);
  void getLayout(const ExportedObject::Call& call);
  void getGroupProperties(const ExportedObject::Call& call);
  void getProperty(const ExportedObject::Call& call);
  void event(const ExportedObject::Call& call);
  void eventGroup(const ExportedObject::Call& call);
  void aboutToShow(const ExportedObject::Call& call);
  void aboutToShowGroup(const ExportedObject::Call& call);

  void receive(const MenuEntry& entry, const std::string& event, const char* sender);
  void choose(const MenuEntry& entry);
  void open(const MenuEntry& entry, const char* sender);
  void close(int id);
  void closeAll();
  void tellShown();
  void tellMenusLater();
  void tellMenus();
  void tellOpening(int id, const std::string& host);

  RunLoopQueue& loop_;
  DbusMenuLayout layout_;
  Menu* menu_ = nullptr;
  KeyNames names_ = KeyNames::gtk;
  std::unique_ptr<ExportedObject> object_;
  std::map<int, std::string> hosts_;  // of the menus that are shown, by what hosts have said
  std::map<int, OpenMenu> open_;      // by what the menus were told
  guint revision_ = 1;
  bool isUpdating_ = false;
  bool isUpdated_ = false;         // in this turn
  bool isUnread_ = false;          // since it was exported
  bool isActionWaiting_ = false;   // on the main queue
  bool isTellingWaiting_ = false;  // on the main queue
  std::function<void()> shown_;
  bool isShownWaiting_ = false;  // on the main queue
  std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace kelvane
