// The basic types, which a Mac's C library declares.
#pragma once

typedef struct objc_class* Class;
typedef struct objc_object {
  Class isa;
} * id;
typedef struct objc_selector* SEL;
typedef signed char BOOL;  // as on Intel

#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
#define Nil nullptr

#define OBJC_EXPORT extern "C"
#define OBJC_ROOT_CLASS __attribute__((objc_root_class))
#define OBJC_ISA_AVAILABILITY
#if __has_feature(objc_arc)
#define OBJC_ARC_UNAVAILABLE __attribute__((unavailable("done by the compiler")))
#else
#define OBJC_ARC_UNAVAILABLE
#endif

typedef void (*IMP)(void);
#ifdef __OBJC__
@class Protocol;
#endif
