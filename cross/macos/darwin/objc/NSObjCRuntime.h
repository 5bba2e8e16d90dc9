// Words that every Objective-C declaration uses.
#pragma once

#include <TargetConditionals.h>
#include <objc/objc.h>
#include <os/availability.h>

typedef long NSInteger;
typedef unsigned long NSUInteger;

#define NSIntegerMax __LONG_MAX__
#define NSUIntegerMax (__LONG_MAX__ * 2UL + 1)

#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_ENUM(type, name) \
  enum name : type name;    \
  enum name : type
// In C++ a plain integer, or else its flags could not be or-ed.
#if defined(__cplusplus)
#define NS_OPTIONS(type, name) \
  type name;                   \
  enum : type
#else
#define NS_OPTIONS(type, name) NS_ENUM(type, name)
#endif
#define NS_REQUIRES_SUPER __attribute__((objc_requires_super))
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_UNAVAILABLE __attribute__((unavailable))
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define NS_NOESCAPE __attribute__((noescape))
