// The limits of whichever processor is compiled for.
#ifndef KELVANE_DARWIN_MACHINE_LIMITS_H
#define KELVANE_DARWIN_MACHINE_LIMITS_H

#if defined(__x86_64__)
#include <i386/limits.h>
#elif defined(__arm64__)
#include <arm/limits.h>
#endif

#endif
