#include "platform/linux/glib/exported_object.h"

#include <algorithm>
#include <set>
#include <utility>

#include <systemd/sd-bus.h>

#include "platform/linux/glib/bus_message.h"

namespace kelvane {
namespace {

constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
constexpr const char* kUnknownMethod = "org.freedesktop.DBus.Error.UnknownMethod";

constexpr const char* kIntrospectable = "org.freedesktop.DBus.Introspectable";

constexpr const char* kDoctype =
    "<!DOCTYPE node PUBLIC \"-//freedesktop//DTD D-BUS Object Introspection 1.0//EN\"\n"
    "\"http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd\">\n<node>\n";
// What every object has.
constexpr const char* kCommonInterfaces = R"xml(<interface name="org.freedesktop.DBus.Properties">
  <method name="Get">
    <arg name="interface" type="s" direction="in"/><arg name="property" type="s" direction="in"/>
    <arg name="value" type="v" direction="out"/>
  </method>
  <method name="GetAll">
    <arg name="interface" type="s" direction="in"/>
    <arg name="properties" type="a{sv}" direction="out"/>
  </method>
</interface>
<interface name="org.freedesktop.DBus.Introspectable">
  <method name="Introspect"><arg name="description" type="s" direction="out"/></method>
</interface>
)xml";

}  // namespace

BusInvocation::BusInvocation(sd_bus_message* call)
    : call_(sd_bus_message_ref(call), BusMessageDeleter()) {}

void BusInvocation::answer(GVariant* value) const {
  const GVariantPtr owned(value ? g_variant_ref_sink(value) : nullptr);
  answer([&](BusWriter& body) { body.parts(owned.get()); });
}

void BusInvocation::answer(const BusWrite& write) const {
  sd_bus_message* raw = nullptr;
  if (sd_bus_message_new_method_return(call_.get(), &raw) < 0) return;
  const BusMessagePtr message(raw);
  BusWriter body(raw);
  write(body);
  if (!body.isGood()) return refuse(kFailed, "The answer can't be written");
  sd_bus_send(nullptr, raw, nullptr);
}

void BusInvocation::refuse(const char* errorName, const std::string& message) const {
  const sd_bus_error error{errorName, message.c_str(), 0};
  sd_bus_reply_method_error(call_.get(), &error);
}

ExportedObject::ExportedObject(BusConnection* connection, std::string path,
                               const BusInterface& interface, Handlers handlers)
    : connection_(shareBus(connection)),
      path_(std::move(path)),
      interface_(interface),
      handlers_(std::make_shared<Handlers>(std::move(handlers))) {
  connection_->objects_[path_].push_back(this);
}

ExportedObject::~ExportedObject() {
  auto& objects = connection_->objects_;
  const auto found = objects.find(path_);
  std::erase(found->second, this);
  if (found->second.empty()) objects.erase(found);
}

void ExportedObject::emit(const char* signal, GVariant* parameters) const {
  connection_->emit(path_.c_str(), interface_.name.c_str(), signal, parameters);
}

void ExportedObject::emit(const char* signal, const BusWrite& write) const {
  connection_->emit(path_.c_str(), interface_.name.c_str(), signal, write);
}

bool ExportedObject::receive(BusConnection& connection, sd_bus_message* message) {
  if (sd_bus_message_is_method_call(message, nullptr, nullptr) <= 0) return false;
  if (sd_bus_message_is_method_call(message, kIntrospectable, "Introspect") > 0)
    return describe(connection, message);
  const char* interface = sd_bus_message_get_interface(message);
  const auto found = connection.objects_.find(sd_bus_message_get_path(message));
  if (found == connection.objects_.end() || !interface) return false;
  if (std::string_view(interface) == kProperties) return readProperties(found->second, message);
  const ExportedObject* object = objectOf(found->second, interface);
  return object && object->receiveCall(message);
}

const ExportedObject* ExportedObject::objectOf(const std::vector<ExportedObject*>& objects,
                                               std::string_view interface) {
  for (const ExportedObject* each : objects)
    if (each->interface_.name == interface) return each;
  return nullptr;
}

bool ExportedObject::describe(const BusConnection& connection, sd_bus_message* message) {
  std::string path = sd_bus_message_get_path(message);
  std::string text = kDoctype;
  bool isKnown = false;
  if (const auto found = connection.objects_.find(path); found != connection.objects_.end()) {
    isKnown = true;
    text += kCommonInterfaces;
    for (const ExportedObject* each : found->second) text += each->interface_.description + "\n";
  }
  // The steps from here to what is exported below.
  if (!path.ends_with('/')) path += '/';
  std::set<std::string> steps;
  for (const auto& [each, objects] : connection.objects_)
    if (each.starts_with(path))
      steps.insert(each.substr(path.size(), each.find('/', path.size()) - path.size()));
  for (const std::string& step : steps) text += "<node name=\"" + step + "\"/>\n";
  if (!isKnown && steps.empty()) return false;
  BusInvocation(message).answer(g_variant_new("(s)", (text + "</node>\n").c_str()));
  return true;
}

bool ExportedObject::readProperties(const std::vector<ExportedObject*>& objects,
                                    sd_bus_message* message) {
  const BusInvocation invocation(message);
  const bool isAll = sd_bus_message_is_method_call(message, nullptr, "GetAll") > 0;
  const bool isOne = sd_bus_message_is_method_call(message, nullptr, "Get") > 0;
  const char* interface = nullptr;
  const char* property = nullptr;
  const bool isRead = (isAll && sd_bus_message_has_signature(message, "s") > 0 &&
                       sd_bus_message_read(message, "s", &interface) > 0) ||
                      (isOne && sd_bus_message_has_signature(message, "ss") > 0 &&
                       sd_bus_message_read(message, "ss", &interface, &property) > 0);
  const ExportedObject* object = isRead ? objectOf(objects, interface) : nullptr;
  if (!object)
    invocation.refuse(kInvalidArguments, "No such interface or property to read");
  else if (isAll)
    object->getAllProperties(invocation);
  else
    object->getProperty(invocation, property);
  return true;
}

bool ExportedObject::receiveCall(sd_bus_message* message) const {
  const BusInvocation invocation(message);
  const char* method = sd_bus_message_get_member(message);
  const auto known = interface_.methods.find(method);
  if (known == interface_.methods.end()) {
    invocation.refuse(kUnknownMethod, std::string("No method ") + method);
    return true;
  }
  const GVariantPtr arguments = bodyOf(message);
  if (!arguments || !g_variant_is_of_type(arguments.get(), G_VARIANT_TYPE(known->second.c_str()))) {
    invocation.refuse(kInvalidArguments, known->first + " takes " + known->second);
    return true;
  }
  const char* sender = sd_bus_message_get_sender(message);
  const auto handlers = handlers_;  // what is called may withdraw the object
  handlers->call({known->first, sender ? sender : "", arguments.get(), invocation});
  return true;
}

BusWrite ExportedObject::valueOf(const BusInterface::Property& property) const {
  return handlers_->property ? handlers_->property(property.name) : nullptr;
}

void ExportedObject::getProperty(const BusInvocation& invocation, std::string_view name) const {
  const auto known = std::ranges::find(interface_.properties, name, &BusInterface::Property::name);
  const BusWrite write = known == interface_.properties.end() ? nullptr : valueOf(*known);
  if (!write) return invocation.refuse(kInvalidArguments, "No property " + std::string(name));
  invocation.answer(
      [&](BusWriter& body) { body.variant(known->type.c_str(), [&] { write(body); }); });
}

void ExportedObject::getAllProperties(const BusInvocation& invocation) const {
  invocation.answer([&](BusWriter& body) {
    body.array("{sv}", [&] {
      for (const BusInterface::Property& each : interface_.properties)
        if (const BusWrite write = valueOf(each))
          body.property(each.name.c_str(), each.type.c_str(), [&] { write(body); });
    });
  });
}

}  // namespace kelvane
