// The root class. Built without automatic counting, which it is what stands behind.
#import <objc/NSObject.h>

#include "runtime/abi.h"

using namespace kelvane::objc;

namespace {

kelvane::objc::Class* inner(::Class of) { return reinterpret_cast<kelvane::objc::Class*>(of); }
kelvane::objc::Class* classOf(id object) { return inner(object->isa); }

}  // namespace

@implementation NSObject

+ (instancetype)alloc {
  return static_cast<id>(makeInstance(inner(self)));
}
+ (instancetype)new {
  return [[self alloc] init];
}
+ (::Class)class {
  return self;
}
+ (::Class)superclass {
  return reinterpret_cast<::Class>(inner(self)->superclass);
}
+ (BOOL)instancesRespondToSelector:(SEL)selector {
  return find(inner(self), reinterpret_cast<Selector>(selector)) != nullptr;
}
- (instancetype)init {
  return self;
}
- (instancetype)self {
  return self;
}
- (void)dealloc {
  disposeInstance(self);
}
- (instancetype)retain {
  return static_cast<id>(objc_retain(self));
}
- (oneway void)release {
  objc_release(self);
}
- (instancetype)autorelease {
  return static_cast<id>(objc_autorelease(self));
}
- (::Class)class {
  return isa;
}
- (::Class)superclass {
  return reinterpret_cast<::Class>(classOf(self)->superclass);
}
- (id)copy {
  return static_cast<id>(copyOf(self));
}
- (BOOL)isEqual:(id)object {
  return self == object;
}
- (NSUInteger)hash {
  return reinterpret_cast<NSUInteger>(self);
}
- (BOOL)isKindOfClass:(::Class)aClass {
  return isSubclass(classOf(self), inner(aClass));
}
- (BOOL)isMemberOfClass:(::Class)aClass {
  return isa == aClass;
}
- (BOOL)respondsToSelector:(SEL)selector {
  return find(classOf(self), reinterpret_cast<Selector>(selector)) != nullptr;
}
- (id)performSelector:(SEL)selector {
  return send<id>(self, reinterpret_cast<Selector>(selector));
}
@end
