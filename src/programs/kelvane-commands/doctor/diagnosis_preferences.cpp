// The preferences file, and each value in it.

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

#include "kit/kit_keys.h"
#include "platform/memory/memory_preferences.h"
#include "programs/kelvane-commands/doctor/diagnosis.h"
#include "settings/migrations.h"
#include "settings/settings_keys.h"

namespace kelvane {
namespace {

using Verdict = Finding::Verdict;

constexpr unsigned kOfOthers = 077;
constexpr std::string_view kRunOnceMark = "Tq_App_runOnce__";
constexpr std::string_view kItemPosition = "NSStatusItem Preferred Position Item-0";

// What is wrong with a stored value; empty when nothing is.
std::string faultOf(const PropertyValue& value, const SettingKey<bool>&) {
  return Bridge<bool>::deserialize(value) ? "" : "is not true or false";
}
std::string faultOf(const PropertyValue& value, const SettingKey<Levels>&) {
  const auto levels = Bridge<Levels>::deserialize(value);
  if (!levels) return "is no list of numbers";
  const bool isInRange =
      std::ranges::all_of(*levels, [](double level) { return level >= 0 && level <= 1; });
  return isInRange ? "" : "has levels that are not from 0 to 1";
}
template <Choice E>
std::string faultOf(const PropertyValue& value, const SettingKey<E>&) {
  return Bridge<E>::deserialize(value) ? "" : "is none of its choices";
}
template <typename V>
std::string faultOf(const PropertyValue& value, const SettingKey<V>&) {
  return Bridge<V>::deserialize(value) ? "" : "is of another kind";
}

std::string exampleOf(const SettingKey<bool>& key) { return key.defaultValue() ? "true" : "false"; }
std::string exampleOf(const SettingKey<Levels>&) { return "[0.2,0.1]"; }
template <Choice E>
std::string exampleOf(const SettingKey<E>&) {
  return std::string(ChoiceNames<E>::values.front());
}

class ValueCheck {
 public:
  explicit ValueCheck(PropertyDictionary values)
      : preferences_(std::move(values)), keys_(preferences_), kitKeys_(preferences_) {
    // Values of older versions are read as Kelvane reads them.
    migrate(preferences_, keys_);
  }

  std::vector<Finding> findings(const PropertyDictionary& stored) {
    std::vector<Finding> findings;
    std::vector<std::string> known{std::string(kItemPosition)};
    keys_.forEach([&](const auto& key) {
      known.push_back(key.name());
      if (!stored.contains(key.name())) return;
      if (const std::string fault = faultOf(*preferences_.object(key.name()), key); !fault.empty())
        findings.push_back({Verdict::problem, "preferences", key.name() + " " + fault,
                            "Set it anew, for example: kelvane settings set " + key.name() + " " +
                                exampleOf(key)});
    });
    const auto checkOwn = [&](const auto& key) {
      known.push_back(key.name());
      if (!stored.contains(key.name())) return;
      if (const std::string fault = faultOf(*preferences_.object(key.name()), key); !fault.empty())
        findings.push_back(
            {Verdict::note, "preferences", key.name() + " " + fault + ", and counts as not there"});
    };
    checkOwn(kitKeys_.firstLaunchDate);
    checkOwn(kitKeys_.launchCount);
    checkOwn(kitKeys_.hasLaunched);
    checkOwn(kitKeys_.statusItemPreviousPosition);
    for (const auto& [name, value] : stored)
      if (!name.starts_with(kRunOnceMark) && std::ranges::count(known, name) == 0)
        findings.push_back(
            {Verdict::note, "preferences", name + " is no setting of Kelvane’s: it is left alone"});
    return findings;
  }

 private:
  MemoryPreferences preferences_;
  SettingsKeys keys_;
  KitKeys kitKeys_;
};

}  // namespace

void diagnosePreferences(const PreferencesFacts& facts, std::vector<Finding>& findings) {
  const auto add = [&](Verdict verdict, const std::string& text, const std::string& remedy = "") {
    findings.push_back({verdict, "preferences", text, remedy});
  };
  if (!facts.problem.empty())
    return add(Verdict::problem, facts.path + " can’t be read: " + facts.problem,
               "The default settings serve. Mend the file; otherwise the next change of a setting "
               "keeps it aside and begins a new one.");
  if (!facts.mode) return add(Verdict::ok, facts.path + " is not there yet: the defaults serve");
  char mode[8];
  std::snprintf(mode, sizeof mode, "%04o", *facts.mode & 07777U);
  if ((*facts.mode & kOfOthers) != 0)
    add(Verdict::note, facts.path + ", mode " + mode + ": others have access to it",
        "Keep it to yourself: chmod 600 " + facts.path);
  else
    add(Verdict::ok, facts.path + ", mode " + mode);
  for (Finding& finding : ValueCheck(facts.values).findings(facts.values))
    findings.push_back(std::move(finding));
}

}  // namespace kelvane
