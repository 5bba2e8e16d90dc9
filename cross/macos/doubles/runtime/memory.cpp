// Objects, their counts, weak references, autorelease pools and properties.
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <vector>

#include "abi.h"

extern "C" kelvane::objc::Class __CFConstantStringClassReference;

namespace kelvane::objc {
namespace {

struct Header {
  std::atomic<int> count{1};
  std::atomic<bool> isEnding{false};
};
constexpr std::size_t kHeader = 16;
static_assert(sizeof(Header) <= kHeader);

// Every object, and who refers to it weakly. Never destroyed.
struct World {
  std::mutex mutex;
  std::unordered_map<Object, std::vector<Object*>> living;
};
World& world() {
  static auto* const all = new World;
  return *all;
}

Header& headerOf(Object object) {
  return *reinterpret_cast<Header*>(static_cast<char*>(object) - kHeader);
}
Class* classOf(Object object) { return *static_cast<Class**>(object); }

// Lives in the program itself.
bool isConstant(Object object) { return classOf(object) == &__CFConstantStringClassReference; }
bool isClass(Object object) { return (classOf(object)->data->flags & kMetaFlag) != 0; }

void dropWeak(Object* location) {
  if (!*location) return;
  const auto found = world().living.find(*location);
  if (found != world().living.end()) std::erase(found->second, location);
  *location = nullptr;
}

void setWeak(Object* location, Object object) {
  if (object && isBlock(object)) fail("a weak reference to a block");
  if (object) {
    const auto found = world().living.find(object);
    if (found == world().living.end() || headerOf(object).isEnding) object = nullptr;
    if (object) found->second.push_back(location);
  }
  *location = object;
}

// A thread that ends lets go of the rest.
struct Pool : std::vector<Object> {
  ~Pool() { objc_autoreleasePoolPop(nullptr); }
};
thread_local Pool pool;

}  // namespace

bool isBlock(Object object) {
  const void* const isa = classOf(object);
  return isa == _NSConcreteStackBlock || isa == _NSConcreteMallocBlock ||
         isa == _NSConcreteGlobalBlock;
}

Object makeInstance(Class* of) {
  auto* memory = static_cast<char*>(std::calloc(1, kHeader + of->data->instanceSize));
  new (memory) Header;
  const Object object = memory + kHeader;
  *static_cast<Class**>(object) = of;
  std::vector<Class*> classes;
  for (Class* each = of; each; each = each->superclass) classes.insert(classes.begin(), each);
  static const Selector construct = selectorOf(".cxx_construct");
  for (Class* each : classes)
    if (const auto method = findOwn(each, construct))
      reinterpret_cast<Object (*)(Object, Selector)>(method)(object, construct);
  const std::lock_guard lock(world().mutex);
  world().living.emplace(object, std::vector<Object*>());
  return object;
}

void disposeInstance(Object object) {
  static const Selector destruct = selectorOf(".cxx_destruct");
  for (Class* each = classOf(object); each; each = each->superclass)
    if (const auto method = findOwn(each, destruct))
      reinterpret_cast<void (*)(Object, Selector)>(method)(object, destruct);
  {
    const std::lock_guard lock(world().mutex);
    world().living.erase(object);
  }
  std::free(&headerOf(object));
}

Object copyOf(Object object) {
  if (!object || isBlock(object)) return object ? _Block_copy(object) : nullptr;
  return send<Object, Object>(object, "copyWithZone:", nullptr);
}

std::map<std::string, int> livingObjects() {
  const std::lock_guard lock(world().mutex);
  std::map<std::string, int> counts;
  for (const auto& [object, weak] : world().living) ++counts[classOf(object)->data->name];
  return counts;
}

extern "C" {

Object objc_retain(Object object) {
  if (!object) return nullptr;
  if (isBlock(object)) return _Block_copy(object);
  if (!isConstant(object) && !isClass(object)) ++headerOf(object).count;
  return object;
}
Object objc_retainBlock(Object block) { return block ? _Block_copy(block) : nullptr; }
void objc_release(Object object) {
  if (!object) return;
  if (isBlock(object)) return _Block_release(object);
  // While it ends, it may still be passed around.
  if (isConstant(object) || isClass(object) || headerOf(object).isEnding) return;
  if (--headerOf(object).count > 0) return;
  {
    const std::lock_guard lock(world().mutex);
    headerOf(object).isEnding = true;
    for (Object* location : world().living[object]) *location = nullptr;
    world().living[object].clear();
  }
  send<void>(object, "dealloc");
}

Object objc_autorelease(Object object) {
  if (object) pool.push_back(object);
  return object;
}
Object objc_retainAutorelease(Object object) { return objc_autorelease(objc_retain(object)); }
Object objc_autoreleaseReturnValue(Object object) { return objc_autorelease(object); }
Object objc_retainAutoreleaseReturnValue(Object object) { return objc_retainAutorelease(object); }
Object objc_retainAutoreleasedReturnValue(Object object) { return objc_retain(object); }
Object objc_unsafeClaimAutoreleasedReturnValue(Object object) { return object; }
void* objc_autoreleasePoolPush() { return reinterpret_cast<void*>(pool.size()); }
void objc_autoreleasePoolPop(void* mark) {
  while (pool.size() > reinterpret_cast<std::size_t>(mark)) {
    const Object last = pool.back();
    pool.pop_back();
    objc_release(last);
  }
}

void objc_storeStrong(Object* location, Object object) {
  objc_retain(object);
  const Object old = *location;
  *location = object;
  objc_release(old);
}
Object objc_storeWeak(Object* location, Object object) {
  const std::lock_guard lock(world().mutex);
  dropWeak(location);
  setWeak(location, object);
  return *location;
}
Object objc_initWeak(Object* location, Object object) {
  *location = nullptr;
  return objc_storeWeak(location, object);
}
void objc_destroyWeak(Object* location) { objc_storeWeak(location, nullptr); }
Object objc_loadWeakRetained(Object* location) {
  const std::lock_guard lock(world().mutex);
  return objc_retain(*location);
}
void objc_copyWeak(Object* to, Object* from) {
  const Object object = objc_loadWeakRetained(from);
  objc_initWeak(to, object);
  objc_release(object);
}
void objc_moveWeak(Object* to, Object* from) {
  objc_copyWeak(to, from);
  objc_destroyWeak(from);
}

Object objc_alloc(Class* of) { return makeInstance(of); }
Object objc_alloc_init(Class* of) { return send<Object>(makeInstance(of), "init"); }

Object objc_getProperty(Object self, Selector, std::ptrdiff_t offset, bool) {
  return objc_retainAutorelease(*reinterpret_cast<Object*>(static_cast<char*>(self) + offset));
}
static void setProperty(Object self, Object value, std::ptrdiff_t offset, bool copies) {
  auto* location = reinterpret_cast<Object*>(static_cast<char*>(self) + offset);
  const Object old = *location;
  *location = copies ? copyOf(value) : objc_retain(value);
  objc_release(old);
}
void objc_setProperty_atomic(Object self, Selector, Object value, std::ptrdiff_t offset) {
  setProperty(self, value, offset, false);
}
void objc_setProperty_nonatomic(Object self, Selector, Object value, std::ptrdiff_t offset) {
  setProperty(self, value, offset, false);
}
void objc_setProperty_atomic_copy(Object self, Selector, Object value, std::ptrdiff_t offset) {
  setProperty(self, value, offset, true);
}
void objc_setProperty_nonatomic_copy(Object self, Selector, Object value, std::ptrdiff_t offset) {
  setProperty(self, value, offset, true);
}
void objc_copyStruct(void* to, const void* from, std::ptrdiff_t size, bool, bool) {
  std::memcpy(to, from, static_cast<std::size_t>(size));
}
void objc_enumerationMutation(Object) { fail("a collection changed while it was gone through"); }
}

}  // namespace kelvane::objc
