#include "platform/linux/glib/bus_interface.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include <glib.h>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {
namespace {

using Attributes = std::map<std::string_view, std::string_view>;

struct Reading {
  BusInterface interface;
  std::string method;  // the one whose arguments come
};

void begin(GMarkupParseContext*, const gchar* element, const gchar** names, const gchar** values,
           gpointer data, GError**) {
  auto& [interface, method] = *static_cast<Reading*>(data);
  Attributes attributes;
  for (; *names; ++names, ++values) attributes[*names] = *values;
  const std::string_view kind = element;
  if (kind == "interface") {
    interface.name = attributes["name"];
  } else if (kind == "method") {
    method = attributes["name"];
    interface.methods[method] = "(";
  } else if (kind == "arg" && !method.empty() && attributes["direction"] == "in") {
    interface.methods[method] += attributes["type"];
  } else if (kind == "property") {
    interface.properties.push_back(
        {std::string(attributes["name"]), std::string(attributes["type"])});
  }
}

void end(GMarkupParseContext*, const gchar* element, gpointer data, GError**) {
  auto& [interface, method] = *static_cast<Reading*>(data);
  if (std::string_view(element) != "method") return;
  interface.methods[method] += ")";
  method.clear();
}

constexpr GMarkupParser kParser = {begin, end, nullptr, nullptr, nullptr};

}  // namespace

BusInterfacePtr parseInterface(std::string_view xml) {
  Reading reading;
  GMarkupParseContext* context =
      g_markup_parse_context_new(&kParser, static_cast<GMarkupParseFlags>(0), &reading, nullptr);
  GError* rawError = nullptr;
  const bool isWhole = g_markup_parse_context_parse(context, xml.data(),
                                                    static_cast<gssize>(xml.size()), &rawError) &&
                       g_markup_parse_context_end_parse(context, &rawError);
  g_markup_parse_context_free(context);
  const GErrorPtr error(rawError);
  if (!isWhole || reading.interface.name.empty()) {
    std::fprintf(stderr, "kelvane: faulty interface description: %s\n",
                 error ? error->message : "no interface");
    std::abort();
  }
  constexpr std::string_view kEnd = "</interface>";
  const auto first = xml.find("<interface");
  reading.interface.description = xml.substr(first, xml.find(kEnd) + kEnd.size() - first);
  return std::make_unique<const BusInterface>(std::move(reading.interface));
}

}  // namespace kelvane
