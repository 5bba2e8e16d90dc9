#include "platform/linux/glib/bus_writer.h"

#include <systemd/sd-bus.h>

#include "platform/linux/glib/bus_message.h"
#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {

void BusWriter::text(const char* text) { valid(text, -1); }

void BusWriter::text(const std::string& text) {
  valid(text.c_str(), static_cast<std::ptrdiff_t>(text.size()));
}

void BusWriter::objectPath(const char* path) { basic('o', path); }

void BusWriter::boolean(bool value) {
  const int flag = value ? 1 : 0;
  basic('b', &flag);
}

void BusWriter::int32(std::int32_t value) { basic('i', &value); }

void BusWriter::uint32(std::uint32_t value) { basic('u', &value); }

void BusWriter::int32s(const std::vector<int>& values) {
  array('i', values.data(), values.size() * sizeof(int));
}

void BusWriter::bytes(std::span<const std::uint8_t> bytes) {
  array('y', bytes.data(), bytes.size());
}

void BusWriter::parts(GVariant* tuple) {
  if (isGood_) isGood_ = appendTuple(message_, tuple);
}

// A text on the bus has no NUL in it; GLib's check counts one among the bytes as a fault.
void BusWriter::valid(const char* text, std::ptrdiff_t bytes) {
  if (g_utf8_validate(text, bytes, nullptr)) return basic('s', text);
  const GCharPtr replaced(g_utf8_make_valid(text, bytes));
  basic('s', replaced.get());
}

void BusWriter::open(char kind, const char* contents) {
  if (isGood_) isGood_ = sd_bus_message_open_container(message_, kind, contents) >= 0;
}

void BusWriter::close() { isGood_ = sd_bus_message_close_container(message_) >= 0; }

void BusWriter::basic(char type, const void* value) {
  if (isGood_) isGood_ = sd_bus_message_append_basic(message_, type, value) >= 0;
}

void BusWriter::array(char element, const void* values, std::size_t bytes) {
  if (isGood_) isGood_ = sd_bus_message_append_array(message_, element, values, bytes) >= 0;
}

}  // namespace kelvane
