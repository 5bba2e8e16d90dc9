// What the compiler writes for classes and strings (the non-fragile Objective-C interface of a Mac,
// here in ELF), and what the parts of our runtime know of each other.
//
// It is as large as our adaptors and their tests need: no forwarding, no +load and +initialize, no
// @synchronized. What is misused ends the process with a line on standard error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>

struct objc_class;
struct objc_selector;

namespace kelvane::objc {

using Object = void*;
using Selector = const char*;  // one address for each name
using Implementation = void (*)();

struct Method {
  const char* name;
  const char* types;
  Implementation implementation;
};
struct MethodList {
  std::uint32_t entrySize;
  std::uint32_t count;
  Method first[1];
};
struct Ivar {
  long* offset;  // where the code reads it
  const char* name;
  const char* type;
  std::uint32_t alignment;
  std::uint32_t size;
};
struct IvarList {
  std::uint32_t entrySize;
  std::uint32_t count;
  Ivar first[1];
};
struct Property {
  const char* name;
  const char* attributes;
};
struct PropertyList {
  std::uint32_t entrySize;
  std::uint32_t count;
  Property first[1];
};
struct ClassData {
  std::uint32_t flags;
  std::uint32_t instanceStart;
  std::uint32_t instanceSize;
  const void* strongLayout;
  const char* name;
  MethodList* methods;
  const void* protocols;
  IvarList* ivars;
  const void* weakLayout;
  PropertyList* properties;
};
struct Class {
  Class* isa;
  Class* superclass;
  void* cache;
  void* table;
  ClassData* data;
};
struct Category {
  const char* name;
  Class* extended;
  MethodList* instanceMethods;
  MethodList* classMethods;
};
struct ConstantString {
  Class* isa;
  std::uintptr_t flags;
  const void* bytes;  // text, or 16-bit units where the flags say so
  std::size_t length;
};
inline constexpr std::uintptr_t kWideFlag = 0x10;
inline constexpr std::uint32_t kMetaFlag = 1;

[[noreturn]] void fail(const std::string& what);

// classes.cpp
Selector selectorOf(const char* name);
// Null when neither the class nor one above has it.
Implementation find(Class* from, Selector selector);
// The class's own only.
Implementation findOwn(Class* in, Selector selector);
bool isSubclass(Class* each, const Class* of);
// A method that a class makes up for the selector, or null; for dynamic properties.
extern Implementation (*resolveMissing)(Class*, Selector);

// memory.cpp
Object makeInstance(Class* of);
// Runs what the classes do at the end, from the most derived on, and frees.
void disposeInstance(Object object);
bool isBlock(Object object);
// A reference to it or, of a block on the stack, to its copy.
Object copyOf(Object object);
// How many objects live, by class.
std::map<std::string, int> livingObjects();

template <typename Result, typename... Arguments>
Result send(Object receiver, const char* name, Arguments... arguments) {
  const Selector selector = selectorOf(name);
  const Implementation method = find(*static_cast<Class**>(receiver), selector);
  if (!method) fail(std::string("nobody implements ") + name);
  return reinterpret_cast<Result (*)(Object, Selector, Arguments...)>(method)(receiver, selector,
                                                                              arguments...);
}

}  // namespace kelvane::objc

extern "C" {
void* objc_retain(void* object);
void objc_release(void* object);
void* objc_autorelease(void* object);
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* pool);
// Of the blocks runtime, where blocks are told by.
extern void* _NSConcreteStackBlock[32];
extern void* _NSConcreteMallocBlock[32];
extern void* _NSConcreteGlobalBlock[32];
void* _Block_copy(const void* block);
void _Block_release(const void* block);
}
