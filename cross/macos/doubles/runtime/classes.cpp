// Classes are made usable before main: selectors become unique, instance variables move behind
// those of the superclass, methods are found by selector.
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <unordered_set>
#include <vector>

#include "abi.h"

extern "C" {
using namespace kelvane::objc;
// The linker's bounds of what the compiler collected; weak where a program has none.
extern Selector __start_objc_selrefs[] __attribute__((weak));
extern Selector __stop_objc_selrefs[] __attribute__((weak));
extern Class* __start_objc_classlist[] __attribute__((weak));
extern Class* __stop_objc_classlist[] __attribute__((weak));
extern Category* __start_objc_catlist[] __attribute__((weak));
extern Category* __stop_objc_catlist[] __attribute__((weak));
void* _objc_empty_cache;
void* _objc_empty_vtable;
}

namespace kelvane::objc {
namespace {

using Methods = std::unordered_map<Selector, Implementation>;

// Never destroyed: objects are released until the very end.
std::unordered_map<Class*, Methods>& known() {
  static auto* const all = new std::unordered_map<Class*, Methods>;
  return *all;
}

void addMethods(Methods& methods, const MethodList* list) {
  if (!list) return;
  for (std::uint32_t i = 0; i < list->count; ++i)
    methods[selectorOf(list->first[i].name)] = list->first[i].implementation;
}

void moveIvars(const Class* of) {
  ClassData& data = *of->data;
  if (!of->superclass || of->superclass->data->instanceSize <= data.instanceStart) return;
  const std::uint32_t missing = of->superclass->data->instanceSize - data.instanceStart;
  const std::uint32_t move = (missing + 15) & ~15U;  // keeps every alignment
  if (data.ivars)
    for (std::uint32_t i = 0; i < data.ivars->count; ++i)
      if (long* offset = data.ivars->first[i].offset) *offset += move;
  data.instanceStart += move;
  data.instanceSize += move;
}

void realise(Class* each) {
  if (!each || known().contains(each)) return;
  Methods& methods = known()[each];
  realise(each->superclass);
  addMethods(methods, each->data->methods);
  if (!(each->data->flags & kMetaFlag)) moveIvars(each);
  realise(each->isa);
}

__attribute__((constructor(200))) void load() {
  for (Selector* each = __start_objc_selrefs; each != __stop_objc_selrefs; ++each)
    *each = selectorOf(*each);
  for (Class** each = __start_objc_classlist; each != __stop_objc_classlist; ++each) realise(*each);
  for (Category** each = __start_objc_catlist; each != __stop_objc_catlist; ++each) {
    addMethods(known()[(*each)->extended], (*each)->instanceMethods);
    addMethods(known()[(*each)->extended->isa], (*each)->classMethods);
  }
}

}  // namespace

Implementation (*resolveMissing)(Class*, Selector) = nullptr;

void fail(const std::string& what) {
  std::fprintf(stderr, "Objective-C: %s\n", what.c_str());
  std::abort();
}

Selector selectorOf(const char* name) {
  static std::mutex mutex;
  static auto* const names = new std::unordered_set<std::string>;
  const std::lock_guard lock(mutex);
  return names->emplace(name).first->c_str();
}

Implementation findOwn(Class* in, Selector selector) {
  const auto methods = known().find(in);
  if (methods == known().end()) fail("a message to what is no object");
  const auto method = methods->second.find(selector);
  return method == methods->second.end() ? nullptr : method->second;
}

Implementation find(Class* from, Selector selector) {
  for (Class* each = from; each; each = each->superclass)
    if (const Implementation method = findOwn(each, selector)) return method;
  return resolveMissing ? resolveMissing(from, selector) : nullptr;
}

bool isSubclass(Class* each, const Class* of) {
  while (each && each != of) each = each->superclass;
  return each != nullptr;
}

}  // namespace kelvane::objc
