// The types below all others, for arm64: each the same as on x86_64.
#ifndef KELVANE_DARWIN_ARM__TYPES_H
#define KELVANE_DARWIN_ARM__TYPES_H

typedef __INT8_TYPE__ __int8_t;
typedef __UINT8_TYPE__ __uint8_t;
typedef __INT16_TYPE__ __int16_t;
typedef __UINT16_TYPE__ __uint16_t;
typedef __INT32_TYPE__ __int32_t;
typedef __UINT32_TYPE__ __uint32_t;
typedef __INT64_TYPE__ __int64_t;
typedef __UINT64_TYPE__ __uint64_t;

typedef __INTPTR_TYPE__ __darwin_intptr_t;
typedef __PTRDIFF_TYPE__ __darwin_ptrdiff_t;
typedef __SIZE_TYPE__ __darwin_size_t;
typedef __WCHAR_TYPE__ __darwin_wchar_t;
typedef __WINT_TYPE__ __darwin_wint_t;
typedef __builtin_va_list __darwin_va_list;

typedef unsigned int __darwin_natural_t;
typedef int __darwin_ct_rune_t;
typedef __darwin_wchar_t __darwin_rune_t;
typedef unsigned long __darwin_clock_t;
typedef __uint32_t __darwin_socklen_t;
typedef long __darwin_ssize_t;
typedef long __darwin_time_t;

// Opaque; 128 bytes on the boundary of a long long.
typedef union {
  char __mbstate8[128];
  long long _mbstateL;
} __mbstate_t;
typedef __mbstate_t __darwin_mbstate_t;

#endif
