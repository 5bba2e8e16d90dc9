// Key-value observing and the notification centre. Neither keeps whom it tells, as on a Mac.
#include <algorithm>

#include "doubles.h"

NSKeyValueChangeKey const NSKeyValueChangeKindKey = @"kind";
NSKeyValueChangeKey const NSKeyValueChangeNewKey = @"new";
NSKeyValueChangeKey const NSKeyValueChangeOldKey = @"old";
NSKeyValueChangeKey const NSKeyValueChangeNotificationIsPriorKey = @"notificationIsPrior";

namespace kelvane::doubles {
namespace {

struct Registration {
  __unsafe_unretained id object;
  __unsafe_unretained NSObject* observer;
  NSString* key;
  NSKeyValueObservingOptions options;
  void* context;
};
PerTest<std::vector<Registration>> registrations;

struct Block {
  id token;
  NSString* name;
  void (^block)(NSNotification*);
};
PerTest<std::vector<Block>> blocks;

id orNull(id value) { return value ? value : [NSNull null]; }

void tell(const Registration& each, bool isPrior, id before, id after) {
  NSMutableDictionary* change = [NSMutableDictionary dictionaryWithCapacity:4];
  change[NSKeyValueChangeKindKey] = @(NSUInteger{NSKeyValueChangeSetting});
  if (isPrior) change[NSKeyValueChangeNotificationIsPriorKey] = @YES;
  if (each.options & NSKeyValueObservingOptionOld) change[NSKeyValueChangeOldKey] = orNull(before);
  if (!isPrior && (each.options & NSKeyValueObservingOptionNew))
    change[NSKeyValueChangeNewKey] = orNull(after);
  [each.observer observeValueForKeyPath:each.key
                               ofObject:each.object
                                 change:change
                                context:each.context];
}

}  // namespace

void changeValue(id object, NSString* key, id before, id after,
                 const std::function<void()>& change) {
  const auto concerned = [&](const Registration& each) {
    return each.object == object && [each.key isEqualToString:key];
  };
  for (const auto all = *registrations; const Registration& each : all)
    if (concerned(each) && (each.options & NSKeyValueObservingOptionPrior))
      tell(each, true, before, after);
  change();
  for (const auto all = *registrations; const Registration& each : all)
    if (concerned(each)) tell(each, false, before, after);
}

int observations() { return static_cast<int>(registrations->size() + blocks->size()); }

}  // namespace kelvane::doubles

using namespace kelvane::doubles;

@implementation NSNull
+ (NSNull*)null {
  static PerTest<NSNull*> only;
  if (!*only) *only = [[NSNull alloc] init];
  return *only;
}
@end

@implementation NSObject (NSKeyValueObserverRegistration)
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void*)context {
  registrations->push_back({self, observer, keyPath, options, context});
  if (options & NSKeyValueObservingOptionInitial) tell(registrations->back(), false, nil, nil);
}
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(void*)context {
  const auto found = std::find_if(registrations->begin(), registrations->end(), [&](auto& each) {
    return each.object == self && each.observer == observer && each.context == context &&
           [each.key isEqualToString:keyPath];
  });
  if (found == registrations->end()) @throw [[NSException alloc] init];
  registrations->erase(found);
}
@end

@implementation NSObject (NSKeyValueObserving)
- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
  (void)keyPath, (void)object, (void)change, (void)context;
  @throw [[NSException alloc] init];  // nobody asked for it
}
@end

@implementation NSNotification
@end

@implementation NSNotificationCenter
+ (NSNotificationCenter*)defaultCenter {
  static PerTest<NSNotificationCenter*> only;
  if (!*only) *only = [[NSNotificationCenter alloc] init];
  return *only;
}
- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)object
                             queue:(NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification*))block {
  (void)object, (void)queue;
  id token = [[NSObject alloc] init];
  blocks->push_back({token, name, block});
  return token;
}
- (void)removeObserver:(id)observer {
  std::erase_if(*blocks, [&](const Block& each) { return each.token == observer; });
}
@end

void kelvane::doubles::post(NSNotificationName name) {
  NSNotification* notification = [[NSNotification alloc] init];
  notification.name = name;
  for (const auto all = *blocks; const Block& each : all)
    if ([each.name isEqualToString:name]) each.block(notification);
}
