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
+ (::Class)class {
  return self;
}
- (instancetype)init {
  return self;
}
- (void)dealloc {
  disposeInstance(self);
}
- (::Class)class {
  return isa;
}
- (id)copy {
  return static_cast<id>(copyOf(self));
}
- (BOOL)isEqual:(id)object {
  return self == object;
}
- (BOOL)isKindOfClass:(::Class)aClass {
  return isSubclass(classOf(self), inner(aClass));
}
- (BOOL)respondsToSelector:(SEL)selector {
  return find(classOf(self), reinterpret_cast<Selector>(selector)) != nullptr;
}
@end
