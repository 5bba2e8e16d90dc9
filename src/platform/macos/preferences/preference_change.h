// What key-value observing tells of a preference, as the platform's own change. Pure function.
//
// Objective-C++ only.
#pragma once

#import <Foundation/Foundation.h>

#include "platform/preferences.h"

namespace kelvane {

// NSNull, which stands for no value, and what no property list holds are absent.
PreferenceChange preferenceChangeOf(NSDictionary<NSKeyValueChangeKey, id>* _Nullable change);

}  // namespace kelvane
