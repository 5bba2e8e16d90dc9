// The body of a message, written part by part: for what is sent often, or is nested deeply. Main
// thread; a writer lives no longer than its message.
//
// Types are written as in D-Bus's signatures. Texts from outside may be cut in the middle of a
// character, and the bus takes UTF-8 only, so what is none is replaced. A part that can't be
// written spoils the message, which is then not sent.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include <glib.h>

struct sd_bus_message;

namespace kelvane {

class BusWriter {
 public:
  explicit BusWriter(sd_bus_message* message) : message_(message) {}
  BusWriter(const BusWriter&) = delete;
  BusWriter& operator=(const BusWriter&) = delete;

  bool isGood() const { return isGood_; }

  void text(const char* text);  // s
  void text(const std::string& text);
  void objectPath(const char* path);                // o
  void boolean(bool value);                         // b
  void int32(std::int32_t value);                   // i
  void uint32(std::uint32_t value);                 // u
  void int32s(const std::vector<int>& values);      // ai
  void bytes(std::span<const std::uint8_t> bytes);  // ay
  // The parts of a tuple; null has none.
  void parts(GVariant* tuple);

  // Containers, which `write` fills: an array by the type of its elements, a structure by those of
  // its fields, a variant by that of its value.
  template <typename Write>
  void array(const char* element, const Write& write) {
    container('a', element, write);
  }
  template <typename Write>
  void structure(const char* fields, const Write& write) {
    container('r', fields, write);
  }
  template <typename Write>
  void variant(const char* type, const Write& write) {
    container('v', type, write);
  }
  // One of an a{sv}.
  template <typename Write>
  void property(const char* name, const char* type, const Write& write) {
    container('e', "sv", [&] {
      text(name);
      variant(type, write);
    });
  }

 private:
  template <typename Write>
  void container(char kind, const char* contents, const Write& write) {
    open(kind, contents);
    if (isGood_) write();
    if (isGood_) close();
  }
  void open(char kind, const char* contents);
  void close();
  void valid(const char* text, std::ptrdiff_t bytes);
  void basic(char type, const void* value);
  void array(char element, const void* values, std::size_t bytes);

  sd_bus_message* message_;
  bool isGood_ = true;
};

using BusWrite = std::function<void(BusWriter&)>;

}  // namespace kelvane
