// The user's preferences: the application's own domain over registered defaults.
#include "doubles.h"

const CFStringRef kCFPreferencesAnyHost = CFSTR("kCFPreferencesAnyHost");
const CFStringRef kCFPreferencesCurrentApplication = CFSTR("kCFPreferencesCurrentApplication");
const CFStringRef kCFPreferencesCurrentUser = CFSTR("kCFPreferencesCurrentUser");

namespace kelvane::doubles {
namespace {

struct Domains {
  NSMutableDictionary* stored = [NSMutableDictionary dictionaryWithCapacity:0];
  NSMutableDictionary* registered = [NSMutableDictionary dictionaryWithCapacity:0];
};
PerTest<Domains> domains;

id valueFor(NSString* key) {
  id stored = domains->stored[key];
  return stored ? stored : domains->registered[key];
}

// Observers are told what is read, which may be a default, and only when that changes.
void store(NSString* key, id value) {
  id before = valueFor(key);
  id after = value ? value : domains->registered[key];
  const auto change = [&] { domains->stored[key] = value; };
  if (before == after || [before isEqual:after]) return change();
  changeValue(NSUserDefaults.standardUserDefaults, key, before, after, change);
}

}  // namespace

void changePreferenceElsewhere(NSString* key, id value) { store(key, value); }
id storedPreference(NSString* key) { return domains->stored[key]; }

}  // namespace kelvane::doubles

using namespace kelvane::doubles;

@implementation NSUserDefaults
+ (NSUserDefaults*)standardUserDefaults {
  static PerTest<NSUserDefaults*> only;
  if (!*only) *only = [[NSUserDefaults alloc] init];
  return *only;
}
- (id)objectForKey:(NSString*)name {
  return valueFor(name);
}
- (void)setObject:(id)value forKey:(NSString*)name {
  store(name, value);
}
- (void)removeObjectForKey:(NSString*)name {
  store(name, nil);
}
- (void)registerDefaults:(NSDictionary<NSString*, id>*)defaults {
  for (NSString* key in defaults) domains->registered[key] = defaults[key];
}
- (BOOL)synchronize {
  return YES;
}
@end

extern "C" CFTypeRef CFPreferencesCopyValue(CFStringRef key, CFStringRef, CFStringRef,
                                            CFStringRef) {
  return (__bridge_retained CFTypeRef)storedPreference((__bridge NSString*)key);
}
