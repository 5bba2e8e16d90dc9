// Objective-C's exceptions by those of C++: thrown is a pointer to an object, caught by its class.
#include <typeinfo>

#include <cxxabi.h>
#include <unwind.h>

#include "abi.h"

namespace kelvane::objc {
namespace {

// What the compiler writes for a class that is thrown or caught; to the C++ runtime it is a
// std::type_info.
struct ThrownType {
  void* const* table;
  const char* name;
  Class* of;
};

bool answerNo(const ThrownType*) { return false; }

bool catches(const ThrownType* caught, const ThrownType* thrown, void** object, unsigned) {
  if (caught->table != thrown->table) return false;
  const Object given = *static_cast<Object*>(*object);
  if (caught->of && !isSubclass(*static_cast<Class**>(given), caught->of)) return false;
  *object = given;
  return true;
}

void releaseThrown(void* object) { objc_release(*static_cast<Object*>(object)); }

}  // namespace

extern "C" {

// Nobody destroys one, so the first two after the head are unused; then whether it is a pointer, or
// a function, whether it catches, and a conversion that classes don't have.
void* objc_ehtype_vtable[8] = {nullptr,
                               nullptr,
                               nullptr,
                               nullptr,
                               reinterpret_cast<void*>(answerNo),
                               reinterpret_cast<void*>(answerNo),
                               reinterpret_cast<void*>(catches),
                               reinterpret_cast<void*>(answerNo)};
ThrownType OBJC_EHTYPE_id = {objc_ehtype_vtable + 2, "id", nullptr};

[[noreturn]] void objc_exception_throw(Object object) {
  auto* thrown = static_cast<Object*>(abi::__cxa_allocate_exception(sizeof(Object)));
  *thrown = objc_retain(object);
  abi::__cxa_throw(thrown, reinterpret_cast<std::type_info*>(&OBJC_EHTYPE_id), releaseThrown);
}
void* objc_begin_catch(void* exception) { return abi::__cxa_begin_catch(exception); }
void objc_end_catch() { abi::__cxa_end_catch(); }
void objc_exception_rethrow() { abi::__cxa_rethrow(); }

_Unwind_Reason_Code __gxx_personality_v0(int, _Unwind_Action, _Unwind_Exception_Class,
                                         _Unwind_Exception*, _Unwind_Context*);
_Unwind_Reason_Code __objc_personality_v0(int version, _Unwind_Action actions,
                                          _Unwind_Exception_Class kind,
                                          _Unwind_Exception* exception, _Unwind_Context* context) {
  return __gxx_personality_v0(version, actions, kind, exception, context);
}
}

}  // namespace kelvane::objc
