#include "platform/macos/preferences/mac_preferences.h"

#include <functional>
#include <mutex>
#include <set>
#include <utility>

#import <Foundation/Foundation.h>

#include "platform/macos/foundation/property_objects.h"
#include "platform/macos/foundation/strings.h"
#include "platform/macos/preferences/preference_change.h"
#include "platform/portable/preference_observers.h"

using KeyChanged = std::function<void(NSString*, NSDictionary<NSKeyValueChangeKey, id>*)>;

@interface KelvanePreferencesObserver : NSObject
- (instancetype)initWithCallback:(KeyChanged)callback;
@end

@implementation KelvanePreferencesObserver {
  KeyChanged callback_;
}

- (instancetype)initWithCallback:(KeyChanged)callback {
  if ((self = [super init])) callback_ = std::move(callback);
  return self;
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
  (void)object;
  (void)context;
  callback_(keyPath, change);
}

@end

namespace kelvane {
namespace {

// How many changes of our own this thread is in the middle of.
thread_local int ownChanges = 0;

class OwnChange {
 public:
  OwnChange() { ++ownChanges; }
  ~OwnChange() { --ownChanges; }
  OwnChange(const OwnChange&) = delete;
  OwnChange& operator=(const OwnChange&) = delete;
};

NSUserDefaults* defaults() { return NSUserDefaults.standardUserDefaults; }

// What the application's own domain holds, without defaults and other domains.
id storedObject(NSString* key) {
  return (__bridge_transfer id)CFPreferencesCopyValue(
      (__bridge CFStringRef)key, kCFPreferencesCurrentApplication, kCFPreferencesCurrentUser,
      kCFPreferencesAnyHost);
}

}  // namespace

class MacPreferences::Impl {
 public:
  Impl() {
    const std::weak_ptr<PreferenceObservers> weakObservers = observers_;
    observer_ = [[KelvanePreferencesObserver alloc]
        initWithCallback:[weakObservers](NSString* key,
                                         NSDictionary<NSKeyValueChangeKey, id>* change) {
          tell(weakObservers, textOf(key), preferenceChangeOf(change));
        }];
  }
  ~Impl() {
    for (const std::string& key : observedKeys_)
      [defaults() removeObserver:observer_ forKeyPath:stringOf(key) context:nullptr];
  }

  PreferenceObservers& observers() { return *observers_; }

  // Once for each key, for as long as the preferences live: the order of several observers of one
  // key is ours then.
  void observe(const std::string& key) {
    {
      const std::lock_guard lock(mutex_);
      if (!stringOf(key) || !observedKeys_.insert(key).second) return;
    }
    [defaults() addObserver:observer_
                 forKeyPath:stringOf(key)
                    options:NSKeyValueObservingOptionNew | NSKeyValueObservingOptionOld |
                            NSKeyValueObservingOptionPrior
                    context:nullptr];
  }

 private:
  // By value: a block that outlives the call would keep references.
  static void tell(std::weak_ptr<PreferenceObservers> weakObservers, std::string key,
                   PreferenceChange change) {
    if (ownChanges > 0 || NSThread.isMainThread) {
      if (const auto observers = weakObservers.lock()) observers->notify(key, change);
      return;
    }
    // Another process's change, on whatever thread the system heard of it.
    dispatch_async(dispatch_get_main_queue(), ^{
      if (const auto observers = weakObservers.lock()) observers->notify(key, change);
    });
  }

  const std::shared_ptr<PreferenceObservers> observers_ = std::make_shared<PreferenceObservers>();
  KelvanePreferencesObserver* observer_;
  std::mutex mutex_;
  std::set<std::string> observedKeys_;
};

MacPreferences::MacPreferences() : impl_(std::make_unique<Impl>()) {}

MacPreferences::~MacPreferences() = default;

std::optional<PropertyValue> MacPreferences::object(const std::string& key) const {
  @autoreleasepool {
    NSString* name = stringOf(key);
    return name ? propertyValueOf([defaults() objectForKey:name]) : std::nullopt;
  }
}

void MacPreferences::setObject(const std::string& key, PropertyValue value) {
  @autoreleasepool {
    NSString* name = stringOf(key);
    id object = objectOf(value);
    if (!name || !object || propertyValueOf(storedObject(name)) == value) return;
    const OwnChange change;
    [defaults() setObject:object forKey:name];
  }
}

void MacPreferences::removeObject(const std::string& key) {
  @autoreleasepool {
    NSString* name = stringOf(key);
    if (!name || !storedObject(name)) return;
    const OwnChange change;
    [defaults() removeObjectForKey:name];
  }
}

void MacPreferences::registerDefaults(const PropertyDictionary& values) {
  @autoreleasepool {
    NSDictionary* dictionary = objectOf(values);
    if (dictionary) [defaults() registerDefaults:dictionary];
  }
}

PreferenceObserverId MacPreferences::addObserver(const std::string& key,
                                                 PreferenceObserverOptions options,
                                                 Observer observer) {
  impl_->observe(key);
  const PreferenceObserverId id = impl_->observers().add(key, options.prior, observer);
  if (options.initial) observer({.newValue = object(key)});
  return id;
}

void MacPreferences::removeObserver(PreferenceObserverId id) { impl_->observers().remove(id); }

bool MacPreferences::synchronize() { return [defaults() synchronize] != 0; }

}  // namespace kelvane
