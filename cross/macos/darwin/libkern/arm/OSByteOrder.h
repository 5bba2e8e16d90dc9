// Byte swaps for arm64. Without stdint.h, which reads this header in its turn.
#ifndef KELVANE_DARWIN_LIBKERN_ARM_OSBYTEORDER_H
#define KELVANE_DARWIN_LIBKERN_ARM_OSBYTEORDER_H

#include <sys/_types.h>

static inline __uint16_t _OSSwapInt16(__uint16_t value) { return __builtin_bswap16(value); }
static inline __uint32_t _OSSwapInt32(__uint32_t value) { return __builtin_bswap32(value); }
static inline __uint64_t _OSSwapInt64(__uint64_t value) { return __builtin_bswap64(value); }

#endif
