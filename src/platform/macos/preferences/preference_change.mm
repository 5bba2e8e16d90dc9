#include "platform/macos/preferences/preference_change.h"

#include "platform/macos/foundation/property_objects.h"

namespace kelvane {
namespace {

PreferenceChangeKind kindOf(NSNumber* kind) {
  switch (kind.unsignedIntegerValue) {
    case NSKeyValueChangeInsertion:
      return PreferenceChangeKind::insertion;
    case NSKeyValueChangeRemoval:
      return PreferenceChangeKind::removal;
    case NSKeyValueChangeReplacement:
      return PreferenceChangeKind::replacement;
    default:
      return PreferenceChangeKind::setting;
  }
}

}  // namespace

PreferenceChange preferenceChangeOf(NSDictionary<NSKeyValueChangeKey, id>* change) {
  return {
      .kind = kindOf(change[NSKeyValueChangeKindKey]),
      .isPrior = [change[NSKeyValueChangeNotificationIsPriorKey] boolValue] != 0,
      .newValue = propertyValueOf(change[NSKeyValueChangeNewKey]),
      .oldValue = propertyValueOf(change[NSKeyValueChangeOldKey]),
  };
}

}  // namespace kelvane
