// An interface as introspection data describes it. Pure; main thread.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

struct BusInterface {
  struct Property {
    std::string name;
    std::string type;
  };

  std::string name;
  std::map<std::string, std::string, std::less<>> methods;  // to the type of the arguments, "(is)"
  std::vector<Property> properties;                         // all of them are only read
  std::string description;                                  // the <interface> element
};

using BusInterfacePtr = std::unique_ptr<const BusInterface>;

// The interface in a <node> element. The text is ours: a fault in it aborts.
BusInterfacePtr parseInterface(std::string_view xml);

}  // namespace kelvane
