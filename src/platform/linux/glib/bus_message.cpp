#include "platform/linux/glib/bus_message.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include <systemd/sd-bus.h>

namespace kelvane {
namespace {

// Numbers that both sides lay out alike, so that an array of them is one block.
constexpr const char* kPlainNumbers = "ynqiuxtd";

bool isPlainArray(const char* contents) {
  return contents[0] != '\0' && contents[1] == '\0' && std::strchr(kPlainNumbers, contents[0]);
}

std::size_t sizeOf(char type) {
  switch (type) {
    case 'y':
      return 1;
    case 'n':
    case 'q':
      return 2;
    case 'i':
    case 'u':
      return 4;
    default:
      return 8;
  }
}

GVariant* readValue(sd_bus_message* message);

template <typename T, typename Make>
GVariant* readNumber(sd_bus_message* message, char type, Make make) {
  T value{};
  return sd_bus_message_read_basic(message, type, &value) < 0 ? nullptr : make(value);
}

GVariant* readBasic(sd_bus_message* message, char type) {
  switch (type) {
    case 'y':
      return readNumber<std::uint8_t>(message, type, g_variant_new_byte);
    case 'b':
      return readNumber<int>(message, type, g_variant_new_boolean);
    case 'n':
      return readNumber<std::int16_t>(message, type, g_variant_new_int16);
    case 'q':
      return readNumber<std::uint16_t>(message, type, g_variant_new_uint16);
    case 'i':
      return readNumber<std::int32_t>(message, type, g_variant_new_int32);
    case 'u':
      return readNumber<std::uint32_t>(message, type, g_variant_new_uint32);
    case 'x':
      return readNumber<std::int64_t>(message, type, g_variant_new_int64);
    case 't':
      return readNumber<std::uint64_t>(message, type, g_variant_new_uint64);
    case 'd':
      return readNumber<double>(message, type, g_variant_new_double);
    case 's':
      return readNumber<const char*>(message, type, g_variant_new_string);
    case 'o':
      return readNumber<const char*>(message, type, g_variant_new_object_path);
    case 'g':
      return readNumber<const char*>(message, type, g_variant_new_signature);
    default:
      return nullptr;
  }
}

// Adds what is left of the container that was entered.
bool readParts(sd_bus_message* message, GVariantBuilder& parts) {
  while (sd_bus_message_at_end(message, 0) == 0) {
    GVariant* part = readValue(message);
    if (!part) return false;
    g_variant_builder_add_value(&parts, part);
  }
  return true;
}

GVariant* readContainer(sd_bus_message* message, char type, const std::string& contents) {
  const std::string whole = type == 'a'   ? "a" + contents
                            : type == 'v' ? "v"
                            : type == 'e' ? "{" + contents + "}"
                                          : "(" + contents + ")";
  if (sd_bus_message_enter_container(message, type, contents.c_str()) < 0) return nullptr;
  GVariantBuilder parts;
  g_variant_builder_init(&parts, G_VARIANT_TYPE(whole.c_str()));
  if (readParts(message, parts) && sd_bus_message_exit_container(message) >= 0)
    return g_variant_builder_end(&parts);
  g_variant_builder_clear(&parts);
  return nullptr;
}

// Floating; null when it can't be read.
GVariant* readValue(sd_bus_message* message) {
  char type = 0;
  const char* contents = nullptr;
  if (sd_bus_message_peek_type(message, &type, &contents) <= 0) return nullptr;
  if (type == 'a' && isPlainArray(contents)) {
    const std::string element = contents;
    const void* block = nullptr;
    std::size_t bytes = 0;
    if (sd_bus_message_read_array(message, element[0], &block, &bytes) < 0) return nullptr;
    const std::size_t size = sizeOf(element[0]);
    return g_variant_new_fixed_array(G_VARIANT_TYPE(element.c_str()), block, bytes / size, size);
  }
  if (!std::strchr("avre", type)) return readBasic(message, type);
  return readContainer(message, type, contents);
}

bool appendParts(sd_bus_message* message, GVariant* container) {
  const gsize count = g_variant_n_children(container);
  for (gsize i = 0; i < count; ++i) {
    const GVariantPtr part(g_variant_get_child_value(container, i));
    if (!appendValue(message, part.get())) return false;
  }
  return true;
}

bool appendContainer(sd_bus_message* message, GVariant* value, char type, const char* contents) {
  return sd_bus_message_open_container(message, type, contents) >= 0 &&
         appendParts(message, value) && sd_bus_message_close_container(message) >= 0;
}

}  // namespace

bool appendValue(sd_bus_message* message, GVariant* value) {
  const char* type = g_variant_get_type_string(value);
  const auto append = [&](const void* content) {
    return sd_bus_message_append_basic(message, type[0], content) >= 0;
  };
  switch (g_variant_classify(value)) {
    case G_VARIANT_CLASS_BOOLEAN: {
      const int flag = g_variant_get_boolean(value);
      return append(&flag);
    }
    case G_VARIANT_CLASS_STRING:
    case G_VARIANT_CLASS_OBJECT_PATH:
    case G_VARIANT_CLASS_SIGNATURE:
      return append(g_variant_get_string(value, nullptr));
    case G_VARIANT_CLASS_VARIANT: {
      const GVariantPtr inside(g_variant_get_variant(value));
      return appendContainer(message, value, 'v', g_variant_get_type_string(inside.get()));
    }
    case G_VARIANT_CLASS_ARRAY:
      if (isPlainArray(type + 1))
        return sd_bus_message_append_array(message, type[1], g_variant_get_data(value),
                                           g_variant_get_size(value)) >= 0;
      return appendContainer(message, value, 'a', type + 1);
    case G_VARIANT_CLASS_TUPLE:
    case G_VARIANT_CLASS_DICT_ENTRY: {
      const std::string contents(type + 1, std::strlen(type) - 2);
      return appendContainer(message, value, type[0] == '(' ? 'r' : 'e', contents.c_str());
    }
    case G_VARIANT_CLASS_BYTE:
    case G_VARIANT_CLASS_INT16:
    case G_VARIANT_CLASS_UINT16:
    case G_VARIANT_CLASS_INT32:
    case G_VARIANT_CLASS_UINT32:
    case G_VARIANT_CLASS_INT64:
    case G_VARIANT_CLASS_UINT64:
    case G_VARIANT_CLASS_DOUBLE:
      return append(g_variant_get_data(value));
    default:
      return false;
  }
}

void BusMessageDeleter::operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }

BusMessagePtr newCall(const BusConnection& bus, const BusTarget& target, const char* method,
                      GVariant* arguments, bool mayStart) {
  const GVariantPtr owned(arguments ? g_variant_ref_sink(arguments) : nullptr);
  sd_bus_message* raw = nullptr;
  const char* destination = target.destination.empty() ? nullptr : target.destination.c_str();
  if (sd_bus_message_new_method_call(bus.handle(), &raw, destination, target.path.c_str(),
                                     target.interface.c_str(), method) < 0)
    return nullptr;
  BusMessagePtr message(raw);
  if (!mayStart) sd_bus_message_set_auto_start(raw, 0);
  return appendTuple(raw, owned.get()) ? std::move(message) : nullptr;
}

BusReply replyOf(sd_bus_message* answer, const char* replyType) {
  if (const sd_bus_error* error = sd_bus_message_get_error(answer))
    return {nullptr, error->message ? error->message : error->name, error->name};
  GVariantPtr body = bodyOf(answer);
  if (!body) return {nullptr, "the answer can't be read", ""};
  if (!g_variant_is_of_type(body.get(), G_VARIANT_TYPE(replyType)))
    return {nullptr,
            std::string("the answer is ") + g_variant_get_type_string(body.get()) + ", not " +
                replyType,
            ""};
  return {std::move(body), "", ""};
}

GVariantPtr bodyOf(sd_bus_message* message) {
  sd_bus_message_rewind(message, 1);
  GVariantBuilder parts;
  g_variant_builder_init(&parts, G_VARIANT_TYPE_TUPLE);
  if (readParts(message, parts)) return sinkVariant(g_variant_builder_end(&parts));
  g_variant_builder_clear(&parts);
  return nullptr;
}

bool appendTuple(sd_bus_message* message, GVariant* tuple) {
  return !tuple || appendParts(message, tuple);
}

}  // namespace kelvane
