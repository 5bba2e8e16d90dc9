// Preferences by their exact place: application, user, host.
#pragma once

#include <CoreFoundation/CFBase.h>

CF_ASSUME_NONNULL_BEGIN

CF_EXPORT const CFStringRef kCFPreferencesAnyHost;
CF_EXPORT const CFStringRef kCFPreferencesCurrentApplication;
CF_EXPORT const CFStringRef kCFPreferencesCurrentUser;

CF_EXPORT CFTypeRef _Nullable CFPreferencesCopyValue(CFStringRef key, CFStringRef application,
                                                     CFStringRef user,
                                                     CFStringRef host) CF_RETURNS_RETAINED;

CF_ASSUME_NONNULL_END
