#include "platform/linux/tray/dbus_menu.h"

#include <iterator>
#include <utility>
#include <vector>

#include "platform/linux/tray/dbus_menu_interface.h"

namespace kelvane {
namespace {

BusWrite readMenuProperty(std::string_view property) {
  if (property == "Version") return [](BusWriter& value) { value.uint32(3); };
  if (property == "TextDirection") return [](BusWriter& value) { value.text("ltr"); };
  if (property == "Status") return [](BusWriter& value) { value.text("normal"); };
  if (property == "IconThemePath") return [](BusWriter& value) { value.array("s", [] {}); };
  return nullptr;
}

std::vector<int> readIds(GVariant* ids) {
  gsize count = 0;
  const auto* values = static_cast<const gint32*>(g_variant_get_fixed_array(ids, &count, 4));
  return {values, values + count};
}

void refuseId(const ExportedObject::Call& call) {
  call.invocation.refuse(kInvalidArguments, "No such menu item");
}

}  // namespace

DbusMenu::DbusMenu(RunLoopQueue& loop, std::function<std::string(std::string)> rewrite)
    : loop_(loop), layout_(std::move(rewrite)) {}

DbusMenu::~DbusMenu() { withdraw(); }

void DbusMenu::setMenu(Menu* menu) {
  if (menu == menu_) return;
  closeAll();
  menu_ = menu;
  isUpdated_ = false;
  update();
}

void DbusMenu::exportOn(BusConnection* connection, KeyNames names) {
  static const BusInterfacePtr interface = parseInterface(kDbusMenuInterface);
  withdraw();
  names_ = names;
  object_ = std::make_unique<ExportedObject>(
      connection, kPath, *interface,
      ExportedObject::Handlers{[this](const ExportedObject::Call& call) { handle(call); },
                               readMenuProperty});
  isUnread_ = true;
}

void DbusMenu::withdraw() {
  object_.reset();
  closeAll();
}

bool DbusMenu::update() {
  if (!object_) return false;
  const bool isUnread = std::exchange(isUnread_, false);
  // A menu that redraws its item while it updates must not get here again.
  if (isUpdating_ || isUpdated_) return false;
  isUpdating_ = true;
  if (menu_) menu_->needsUpdate();
  const MenuChange change = menu_ ? layout_.update(menu_->lines()) : layout_.update({});
  isUpdating_ = false;
  isUpdated_ = true;
  loop_.async([this, alive = std::weak_ptr(isAlive_)] {
    if (!alive.expired()) isUpdated_ = false;
  });

  std::vector<int> gone;
  for (const auto& [id, host] : hosts_)
    if (!layout_.find(id)) gone.push_back(id);
  for (const int id : gone) close(id);

  if (change.layout) ++revision_;
  // What was called back may have withdrawn the menu.
  if (!object_ || isUnread) return change.layout;
  if (change.layout) {
    object_->emit("LayoutUpdated", [this](BusWriter& body) {
      body.uint32(revision_);
      body.int32(DbusMenuLayout::kRootId);
    });
  } else if (!change.changed.empty()) {
    object_->emit("ItemsPropertiesUpdated",
                  [&](BusWriter& body) { writeMenuChange(body, change, layout_); });
  }
  return change.layout;
}

void DbusMenu::handle(const ExportedObject::Call& call) {
  if (call.method == "GetLayout") return getLayout(call);
  if (call.method == "GetGroupProperties") return getGroupProperties(call);
  if (call.method == "GetProperty") return getProperty(call);
  if (call.method == "Event") return event(call);
  if (call.method == "EventGroup") return eventGroup(call);
  if (call.method == "AboutToShow") return aboutToShow(call);
  return aboutToShowGroup(call);
}

void DbusMenu::getLayout(const ExportedObject::Call& call) {
  int parent = 0;
  int depth = 0;
  GVariant* rawNames = nullptr;
  g_variant_get(call.arguments, "(ii@as)", &parent, &depth, &rawNames);
  const GVariantPtr names(rawNames);
  const MenuEntry* entry = layout_.find(parent);
  if (!entry) return refuseId(call);
  const PropertyFilter filter = propertyFilterOf(names.get());
  call.invocation.answer([&](BusWriter& body) {
    body.uint32(revision_);
    writeMenuLayout(body, *entry, depth, filter, names_);
  });
}

void DbusMenu::getGroupProperties(const ExportedObject::Call& call) {
  GVariant* rawIds = nullptr;
  GVariant* rawNames = nullptr;
  g_variant_get(call.arguments, "(@ai@as)", &rawIds, &rawNames);
  const GVariantPtr idList(rawIds);
  const GVariantPtr nameList(rawNames);
  const PropertyFilter filter = propertyFilterOf(nameList.get());
  // Each entry once, however often it is asked for; unknown ids are left out; no ids are all.
  const std::vector<int> ids = readIds(idList.get());
  const std::set<int> wanted(ids.begin(), ids.end());
  call.invocation.answer([&](BusWriter& body) {
    body.array("(ia{sv})", [&] {
      for (const auto& [id, entry] : layout_.entries())
        if (wanted.empty() || wanted.contains(id))
          writeMenuProperties(body, *entry, filter, names_);
    });
  });
}

void DbusMenu::getProperty(const ExportedObject::Call& call) {
  int id = 0;
  const char* name = nullptr;
  g_variant_get(call.arguments, "(i&s)", &id, &name);
  const MenuEntry* entry = layout_.find(id);
  if (!entry) return refuseId(call);
  const BusWrite write = menuProperty(*entry, name, names_);
  if (!write) return call.invocation.refuse(kInvalidArguments, "No such property");
  call.invocation.answer(write);
}

void DbusMenu::event(const ExportedObject::Call& call) {
  int id = 0;
  const char* name = nullptr;
  g_variant_get(call.arguments, "(i&svu)", &id, &name, nullptr, nullptr);
  const MenuEntry* entry = layout_.find(id);
  if (!entry) return refuseId(call);
  receive(*entry, name, call.sender);
  call.invocation.answer();
}

void DbusMenu::eventGroup(const ExportedObject::Call& call) {
  const GVariantPtr events(g_variant_get_child_value(call.arguments, 0));
  std::vector<int> unknown;
  const gsize count = g_variant_n_children(events.get());
  for (gsize i = 0; i < count; ++i) {
    const GVariantPtr each(g_variant_get_child_value(events.get(), i));
    int id = 0;
    const char* name = nullptr;
    g_variant_get(each.get(), "(i&svu)", &id, &name, nullptr, nullptr);
    // Looked up one by one: what an event calls back may change the layout.
    if (const MenuEntry* entry = layout_.find(id)) {
      receive(*entry, name, call.sender);
    } else {
      unknown.push_back(id);
    }
  }
  if (count > 0 && unknown.size() == count) return refuseId(call);
  call.invocation.answer([&](BusWriter& body) { body.int32s(unknown); });
}

void DbusMenu::aboutToShow(const ExportedObject::Call& call) {
  int id = 0;
  g_variant_get(call.arguments, "(i)", &id);
  if (!layout_.find(id)) return refuseId(call);
  tellShown();
  const bool hasChanged = update();
  call.invocation.answer([&](BusWriter& body) { body.boolean(hasChanged); });
}

void DbusMenu::aboutToShowGroup(const ExportedObject::Call& call) {
  const GVariantPtr idList(g_variant_get_child_value(call.arguments, 0));
  std::vector<int> known;
  std::vector<int> unknown;
  for (const int id : readIds(idList.get())) (layout_.find(id) ? known : unknown).push_back(id);
  if (known.empty() && !unknown.empty()) return refuseId(call);
  if (!known.empty()) tellShown();
  if (known.empty() || !update()) known.clear();
  call.invocation.answer([&](BusWriter& body) {
    body.int32s(known);
    body.int32s(unknown);
  });
}

void DbusMenu::receive(const MenuEntry& entry, const std::string& event, const char* sender) {
  if (event == "clicked") return choose(entry);
  if (event == "opened") return open(entry, sender);
  if (event == "closed") return close(entry.id);
}

void DbusMenu::choose(const MenuEntry& entry) {
  // Nobody chooses twice within one turn; a second one is dropped rather than piled up.
  if (entry.isSeparator || !entry.isEnabled || !entry.action || isActionWaiting_) return;
  isActionWaiting_ = true;
  loop_.async([this, alive = std::weak_ptr(isAlive_), action = entry.action] {
    if (!alive.expired()) isActionWaiting_ = false;
    action();
  });
}

void DbusMenu::open(const MenuEntry& entry, const char* sender) {
  tellShown();
  if (entry.hasSubmenu && hosts_.try_emplace(entry.id, sender).second) tellMenusLater();
}

void DbusMenu::tellShown() {
  if (!shown_ || std::exchange(isShownWaiting_, true)) return;
  loop_.async([this, alive = std::weak_ptr(isAlive_)] {
    if (alive.expired()) return;
    isShownWaiting_ = false;
    shown_();
  });
}

void DbusMenu::close(int id) {
  if (hosts_.erase(id) > 0) tellMenusLater();
}

void DbusMenu::closeAll() {
  hosts_.clear();
  tellMenus();
}

void DbusMenu::tellMenusLater() {
  if (std::exchange(isTellingWaiting_, true)) return;
  loop_.async([this, alive = std::weak_ptr(isAlive_)] {
    if (alive.expired()) return;
    isTellingWaiting_ = false;
    tellMenus();
  });
}

void DbusMenu::tellMenus() {
  std::vector<OpenMenu> closed;
  for (auto each = open_.begin(); each != open_.end();) {
    const auto next = std::next(each);
    if (!hosts_.contains(each->first)) closed.push_back(std::move(open_.extract(each).mapped()));
    each = next;
  }
  for (const OpenMenu& each : closed) each.menu->didClose();
  // A copy: what is called back may end it all.
  for (const auto& [id, host] : std::map(hosts_))
    if (hosts_.contains(id) && !open_.contains(id)) tellOpening(id, host);
}

void DbusMenu::tellOpening(int id, const std::string& host) {
  const MenuEntry* entry = layout_.find(id);
  Menu* menu = id == DbusMenuLayout::kRootId ? menu_ : entry ? entry->submenu.get() : nullptr;
  if (!menu || !object_) return;
  auto watch = std::make_unique<NameWatch>(object_->connection(), host,
                                           [this, id](const std::string& owner) {
                                             if (owner.empty()) close(id);
                                           });
  open_.emplace(id, OpenMenu{entry->submenu, menu, std::move(watch)});
  menu->willOpen();
}

}  // namespace kelvane
