// How the stack of arm64 is aligned.
#ifndef KELVANE_DARWIN_ARM__PARAM_H
#define KELVANE_DARWIN_ARM__PARAM_H

#include <arm/_types.h>

#define __DARWIN_ALIGNBYTES (sizeof(__darwin_size_t) - 1)
#define __DARWIN_ALIGN(value) \
  ((__darwin_size_t)((__darwin_size_t)(value) + __DARWIN_ALIGNBYTES) & ~__DARWIN_ALIGNBYTES)
#define __DARWIN_ALIGNBYTES32 (sizeof(__uint32_t) - 1)
#define __DARWIN_ALIGN32(value) \
  ((__darwin_size_t)((__darwin_size_t)(value) + __DARWIN_ALIGNBYTES32) & ~__DARWIN_ALIGNBYTES32)

#endif
