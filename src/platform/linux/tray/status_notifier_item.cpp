#include "platform/linux/tray/status_notifier_item.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/linux/tray/watcher.h"

using std::string_view_literals::operator""sv;

namespace kelvane {
namespace {

constexpr const char* kPath = "/StatusNotifierItem";
constexpr const char* kId = "org.kelvane.Kelvane";
constexpr const char* kTitle = "Kelvane";
// A watcher may own its name before it answers, and a bus may be restarting; after these attempts
// the next new owner or the next showing is waited for.
constexpr int kMostFailures = 5;
constexpr double kFirstRetry = 0.25;  // seconds, doubled each time

constexpr const char* kCommonPart = R"xml(
  <property name="Category" type="s" access="read"/>
  <property name="Id" type="s" access="read"/>
  <property name="Title" type="s" access="read"/>
  <property name="Status" type="s" access="read"/>
  <property name="WindowId" type="i" access="read"/>
  <property name="IconPixmap" type="a(iiay)" access="read"/>
  <property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
  <property name="ItemIsMenu" type="b" access="read"/>
  <property name="Menu" type="o" access="read"/>
  <method name="ProvideXdgActivationToken"><arg name="token" type="s" direction="in"/></method>
  <method name="SecondaryActivate">
    <arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/>
  </method>
  <method name="ContextMenu">
    <arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/>
  </method>
  <method name="Scroll">
    <arg name="delta" type="i" direction="in"/><arg name="orientation" type="s" direction="in"/>
  </method>
  <signal name="NewIcon"/>
  <signal name="NewToolTip"/>
)xml";
// GNOME waits for a double click before it opens the menu of an item that has an Activate, and
// shows a label only if the property is there from the start.
constexpr const char* kLabelPart = R"xml(
  <property name="XAyatanaLabel" type="s" access="read"/>
  <property name="XAyatanaLabelGuide" type="s" access="read"/>
  <signal name="XAyatanaNewLabel"><arg type="s"/><arg type="s"/></signal>
)xml";
// Everyone else; MATE shows a label, even an empty one, in place of the icon.
constexpr const char* kActivatePart = R"xml(
  <method name="Activate">
    <arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/>
  </method>
)xml";

const BusInterface& interfaceFor(bool hasLabel) {
  const auto parse = [](const char* part) {
    return parseInterface(std::string(R"(<node><interface name="org.kde.StatusNotifierItem">)") +
                          kCommonPart + part + "</interface></node>");
  };
  static BusInterfacePtr withLabel;
  static BusInterfacePtr withActivate;
  BusInterfacePtr& interface = hasLabel ? withLabel : withActivate;
  if (!interface) interface = parse(hasLabel ? kLabelPart : kActivatePart);
  return *interface;
}

BusWrite writesText(const char* text) {
  return [text](BusWriter& value) { value.text(text); };
}

}  // namespace

StatusNotifierItem::StatusNotifierItem(RunLoopQueue& loop, std::string busAddress, DbusMenu& menu,
                                       Events events)
    : loop_(loop), busAddress_(std::move(busAddress)), menu_(menu), events_(std::move(events)) {}

StatusNotifierItem::~StatusNotifierItem() { disconnect(); }

void StatusNotifierItem::connect() {
  if (connection_ || opening_ || busAddress_.empty()) return;
  retry_.reset();
  opening_ = BusConnection::open(busAddress_);
  if (!opening_) return retryLater(kFirstRetry, &StatusNotifierItem::connect);
  stateChanges_ = opening_->observe([this] { stateChanged(); });
}

void StatusNotifierItem::stateChanged() {
  if (!opening_) {
    if (connection_->state() == BusConnection::State::closed) connectionLost();
    return;
  }
  const BusPtr opened = std::move(opening_);
  if (opened->state() != BusConnection::State::ready)
    return retryLater(kFirstRetry, &StatusNotifierItem::connect);
  connection_ = opened;
  events_.connectionChanged();
}

void StatusNotifierItem::connectionLost() {
  disconnect();
  retryLater(kFirstRetry, &StatusNotifierItem::connect);
  events_.connectionChanged();
}

void StatusNotifierItem::disconnect() {
  retry_.reset();
  stateChanges_.reset();
  opening_.reset();
  calls_.reset();
  isRegistered_ = false;
  if (!connection_) return;
  menu_.withdraw();
  object_.reset();
  connection_->close();
  connection_.reset();
}

void StatusNotifierItem::retryLater(double seconds, void (StatusNotifierItem::*what)()) {
  if (++failures_ > kMostFailures) return;
  retry_ = loop_.startTimer(seconds * (1 << (failures_ - 1)), false, [this, what] {
    const auto running = std::move(retry_);
    (this->*what)();
  });
}

void StatusNotifierItem::registerFor(const HostProfile& profile,
                                     const std::function<void()>& fillIn) {
  if (!connection_) return;
  failures_ = 0;
  retry_.reset();
  isRegistered_ = false;
  // Hosts read within milliseconds, so the objects are there before they hear of them.
  object_.reset();
  hasLabel_ = profile.slot.showsTextBeside;
  isReadAtOnce_ = profile.readsAllAtOnce;
  menu_.exportOn(connection_.get(), profile.usesQtKeyNames ? KeyNames::qt : KeyNames::gtk);
  object_ = std::make_unique<ExportedObject>(
      connection_.get(), kPath, interfaceFor(hasLabel_),
      ExportedObject::Handlers{[this](const ExportedObject::Call& call) { handle(call); },
                               [this](std::string_view name) { return property(name); }});
  callWatcher();
  // The host is still to ask, so it waits for none of this.
  menu_.update();
  isQuiet_ = true;
  fillIn();
  isQuiet_ = false;
}

void StatusNotifierItem::callWatcher() {
  calls_ = std::make_unique<BusCalls>();
  calls_->call(connection_.get(), {Watcher::kName, "/StatusNotifierWatcher", Watcher::kName},
               "RegisterStatusNotifierItem",
               g_variant_new("(s)", connection_->uniqueName().c_str()), "()",
               [this](const BusReply& reply) {
                 isRegistered_ = static_cast<bool>(reply);
                 if (!reply) retryLater(kFirstRetry, &StatusNotifierItem::callWatcher);
               });
}

std::vector<StatusNotifierItem::Pixmap> StatusNotifierItem::pixmapsOf(
    const std::vector<Bitmap>& sizes) {
  std::vector<Pixmap> pixmaps;
  for (const Bitmap& each : sizes)
    if (!each.pixels.empty())
      pixmaps.push_back({each.width, each.height, straightBigEndianArgb(each)});
  return pixmaps;
}

void StatusNotifierItem::writePixmaps(BusWriter& value, const std::vector<Pixmap>& pixmaps) {
  value.array("(iiay)", [&] {
    for (const Pixmap& each : pixmaps)
      value.structure("iiay", [&] {
        value.int32(each.width);
        value.int32(each.height);
        value.bytes(each.argb);
      });
  });
}

void StatusNotifierItem::setContent(const Content& content) {
  std::vector<Pixmap> icon = pixmapsOf(content.icon);
  const bool isIconNew = icon != icon_;
  icon_ = std::move(icon);
  const bool isLabelNew = std::exchange(label_, content.label) != content.label;
  const bool isToolTipNew = std::exchange(toolTip_, content.toolTip) != content.toolTip;
  if (isIconNew) emit("NewIcon");
  if (isLabelNew && hasLabel_)
    emit("XAyatanaNewLabel", [this](BusWriter& body) {
      body.text(label_);
      body.text("");
    });
  if (isToolTipNew && !(isIconNew && isReadAtOnce_)) emit("NewToolTip");
}

void StatusNotifierItem::handle(const ExportedObject::Call& call) {
  // What is done about it may hide the item, so the host gets its answer first.
  const GVariantPtr arguments = shareVariant(call.arguments);
  const std::string method(call.method);
  call.invocation.answer();
  if (method == "ProvideXdgActivationToken") {
    const char* token = nullptr;
    g_variant_get(arguments.get(), "(&s)", &token);
    if (events_.activationToken) events_.activationToken(token);
  } else if (method == "Activate" || method == "ContextMenu") {
    int x = 0;
    int y = 0;
    g_variant_get(arguments.get(), "(ii)", &x, &y);
    if (events_.activated) events_.activated({static_cast<double>(x), static_cast<double>(y)});
  }
  // A middle click and scrolling mean nothing here.
}

BusWrite StatusNotifierItem::property(std::string_view name) const {
  if (name == "Category"sv) return writesText("Hardware");
  if (name == "Id"sv) return writesText(kId);
  if (name == "Title"sv) return writesText(kTitle);
  if (name == "Status"sv) return writesText("Active");
  if (name == "WindowId"sv) return [](BusWriter& value) { value.int32(0); };
  if (name == "IconPixmap"sv) return [this](BusWriter& value) { writePixmaps(value, icon_); };
  // Hosts that obey open the menu by themselves on a left click; the others call Activate.
  if (name == "ItemIsMenu"sv) return [](BusWriter& value) { value.boolean(true); };
  if (name == "Menu"sv) return [](BusWriter& value) { value.objectPath(DbusMenu::kPath); };
  if (name == "XAyatanaLabel"sv) return writesText(label_.c_str());
  if (name == "XAyatanaLabelGuide"sv) return writesText("");
  if (name == "ToolTip"sv && toolTip_)
    return [this](BusWriter& value) {
      value.structure("sa(iiay)ss", [&] {
        value.text("");
        writePixmaps(value, {});
        // One host shows nothing but the title, so it has the whole message.
        value.text(*toolTip_);
        value.text("");
      });
    };
  return nullptr;
}

void StatusNotifierItem::emit(const char* signal, const BusWrite& write) const {
  if (object_ && !isQuiet_) object_->emit(signal, write);
}

}  // namespace kelvane
