#include "programs/kelvane-commands/settings_command.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <ostream>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "settings/migrations.h"
#include "settings/settings_keys.h"

namespace kelvane {
namespace {

using Json = nlohmann::json;

// A key without its C++ type.
struct Setting {
  std::string name;
  std::string type;
  std::string expected;  // the values it takes, in words
  std::function<Json()> get;
  std::function<bool(const Json&)> set;  // false, changing nothing: the value is not one of them
};

Setting settingOf(const SettingKey<bool>& key) {
  return {key.name(), "boolean", "true or false", [&key] { return key.get(); },
          [&key](const Json& value) {
            if (!value.is_boolean()) return false;
            key.set(value.get<bool>());
            return true;
          }};
}

bool isLevel(const Json& value) {
  if (!value.is_number()) return false;
  const double level = value.get<double>();
  return std::isfinite(level) && level >= 0 && level <= 1;
}

Setting settingOf(const SettingKey<Levels>& key) {
  return {key.name(), "levels", "an array of numbers from 0 to 1, like [0.1,0.2]",
          [&key] { return key.get(); },
          [&key](const Json& value) {
            if (!value.is_array() || !std::ranges::all_of(value, isLevel)) return false;
            key.set(value.get<Levels>());
            return true;
          }};
}

template <Choice E>
Setting settingOf(const SettingKey<E>& key) {
  std::string names;
  for (const std::string_view name : ChoiceNames<E>::values)
    names += (names.empty()                           ? ""
              : name == ChoiceNames<E>::values.back() ? " or "
                                                      : ", ") +
             std::string(name);
  return {key.name(), "choice", std::move(names),
          [&key] { return *Bridge<E>::serialize(key.get())->string(); },
          [&key](const Json& value) {
            if (!value.is_string()) return false;
            const auto choice = Bridge<E>::deserialize(value.get<std::string>());
            if (choice) key.set(*choice);
            return choice.has_value();
          }};
}

std::string padded(std::string text, std::size_t width) {
  text.resize(std::max(width, text.size()), ' ');
  return text;
}

// In quotes and on one line, whatever it holds.
std::string quoted(const std::string& text) {
  return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

void list(const std::vector<Setting>& settings, std::ostream& out) {
  std::size_t width = 0;
  for (const auto& setting : settings) width = std::max(width, setting.name.size());
  for (const auto& setting : settings)
    out << padded(setting.name, width) << "  " << padded(setting.type, 7) << "  "
        << setting.get().dump() << '\n';
}

}  // namespace

int runSettingsCommand(const std::vector<std::string>& arguments, Preferences& preferences,
                       std::ostream& out, std::ostream& errors) {
  const auto wrong = [&](const std::string& why) {
    errors << "kelvane: " << why << '\n';
    return 2;
  };
  const std::string command = arguments.empty() ? "" : arguments[0];
  const std::size_t wanted = command == "list"  ? 1
                             : command == "get" ? 2
                             : command == "set" ? 3
                                                : 0;
  if (wanted == 0 || arguments.size() != wanted)
    return wrong("use: kelvane settings list | get KEY | set KEY VALUE");

  const SettingsKeys keys(preferences);
  std::vector<Setting> settings;
  keys.forEach([&](const auto& key) { settings.push_back(settingOf(key)); });
  const auto setting = command == "list"
                           ? settings.end()
                           : std::ranges::find(settings, arguments[1], &Setting::name);
  if (command != "list" && setting == settings.end())
    return wrong("there is no setting " + quoted(arguments[1]) + "; see kelvane settings list");
  auto value = command == "set" ? Json::parse(arguments[2], nullptr, false) : Json();
  // A choice may be written without the quotes of JSON, which a shell takes away.
  if (value.is_discarded()) value = arguments[2];

  migrate(preferences, keys);
  if (command == "list") {
    list(settings, out);
    return 0;
  }
  if (command == "get") {
    out << setting->get().dump() << '\n';
    return 0;
  }
  if (!setting->set(value))
    return wrong(quoted(arguments[2]) + " is no value for " + setting->name + ", which takes " +
                 setting->expected);
  return preferences.synchronize() ? 0 : 1;
}

}  // namespace kelvane
