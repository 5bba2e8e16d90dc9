// Arrays and dictionaries, the latter in the order of insertion.
#include <algorithm>
#include <utility>
#include <vector>

#import <Foundation/Foundation.h>

namespace {

NSUInteger enumerate(const std::vector<id>& items, unsigned long* changes,
                     NSFastEnumerationState* state) {
  if (state->state++ != 0) return 0;
  state->itemsPtr = (__unsafe_unretained id*)(void*)items.data();
  state->mutationsPtr = changes;
  return items.size();
}

}  // namespace

@implementation NSArray {
 @protected
  std::vector<id> items_;
  unsigned long changes_;
}
+ (instancetype)array {
  return [[self alloc] init];
}
+ (instancetype)arrayWithObjects:(id const[])objects count:(NSUInteger)count {
  NSArray* array = [[self alloc] init];
  array->items_.assign(objects, objects + count);
  return array;
}
- (NSUInteger)count {
  return items_.size();
}
- (id)firstObject {
  return items_.empty() ? nil : items_.front();
}
- (id)lastObject {
  return items_.empty() ? nil : items_.back();
}
- (id)objectAtIndexedSubscript:(NSUInteger)index {
  return items_.at(index);
}
- (NSUInteger)indexOfObject:(id)object {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [&](id each) { return [each isEqual:object] != 0; });
  return found == items_.end() ? NSNotFound : static_cast<NSUInteger>(found - items_.begin());
}
- (BOOL)containsObject:(id)object {
  return [self indexOfObject:object] != NSNotFound;
}
- (BOOL)isEqual:(id)object {
  return
      [object isKindOfClass:NSArray.class] &&
      std::equal(items_.begin(), items_.end(), ((NSArray*)object)->items_.begin(),
                 ((NSArray*)object)->items_.end(), [](id a, id b) { return [a isEqual:b] != 0; });
}
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length {
  (void)buffer, (void)length;
  return enumerate(items_, &changes_, state);
}
- (id)copyWithZone:(NSZone*)zone {
  (void)zone;
  return [NSArray arrayWithObjects:items_.data() count:items_.size()];
}
@end

@implementation NSMutableArray
+ (instancetype)arrayWithCapacity:(NSUInteger)capacity {
  (void)capacity;
  return [[self alloc] init];
}
- (void)addObject:(id)object {
  [self insertObject:object atIndex:items_.size()];
}
- (void)insertObject:(id)object atIndex:(NSUInteger)index {
  ++changes_;
  items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(index), object);
}
- (void)removeObject:(id)object {
  ++changes_;
  std::erase_if(items_, [&](id each) { return [each isEqual:object] != 0; });
}
- (void)removeAllObjects {
  ++changes_;
  std::exchange(items_, {}).clear();
}
@end

@implementation NSDictionary {
 @protected
  std::vector<id> keys_;
  std::vector<id> values_;
  unsigned long changes_;
}
+ (instancetype)dictionary {
  return [[self alloc] init];
}
+ (instancetype)dictionaryWithObjects:(id const[])objects
                              forKeys:(id<NSCopying> const[])keys
                                count:(NSUInteger)count {
  NSDictionary* dictionary = [[self alloc] init];
  dictionary->values_.assign(objects, objects + count);
  dictionary->keys_.assign(keys, keys + count);
  return dictionary;
}
- (NSUInteger)count {
  return keys_.size();
}
- (NSArray*)allKeys {
  return [NSArray arrayWithObjects:keys_.data() count:keys_.size()];
}
- (std::size_t)kelvanePlaceOf:(id)key {
  return static_cast<std::size_t>(
      std::find_if(keys_.begin(), keys_.end(), [&](id each) { return [each isEqual:key] != 0; }) -
      keys_.begin());
}
- (id)objectForKey:(id)key {
  const std::size_t place = [self kelvanePlaceOf:key];
  return place < values_.size() ? values_[place] : nil;
}
- (id)objectForKeyedSubscript:(id)key {
  return [self objectForKey:key];
}
- (BOOL)isEqual:(id)object {
  if (![object isKindOfClass:NSDictionary.class] || [object count] != keys_.size()) return NO;
  for (std::size_t i = 0; i < keys_.size(); ++i)
    if (![values_[i] isEqual:object[keys_[i]]]) return NO;
  return YES;
}
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length {
  (void)buffer, (void)length;
  return enumerate(keys_, &changes_, state);
}
- (id)copyWithZone:(NSZone*)zone {
  (void)zone;
  return [NSDictionary dictionaryWithObjects:values_.data()
                                     forKeys:keys_.data()
                                       count:keys_.size()];
}
@end

@implementation NSMutableDictionary
+ (instancetype)dictionaryWithCapacity:(NSUInteger)capacity {
  (void)capacity;
  return [[self alloc] init];
}
- (void)setObject:(id)object forKey:(id<NSCopying>)key {
  const std::size_t place = [self kelvanePlaceOf:key];
  if (place < keys_.size()) {
    values_[place] = object;
    return;
  }
  ++changes_;
  keys_.push_back([(id)key copy]);
  values_.push_back(object);
}
- (void)setObject:(id)object forKeyedSubscript:(id<NSCopying>)key {
  object ? [self setObject:object forKey:key] : [self removeObjectForKey:key];
}
- (void)removeObjectForKey:(id)key {
  const std::size_t place = [self kelvanePlaceOf:key];
  if (place == keys_.size()) return;
  ++changes_;
  keys_.erase(keys_.begin() + static_cast<std::ptrdiff_t>(place));
  values_.erase(values_.begin() + static_cast<std::ptrdiff_t>(place));
}
@end
