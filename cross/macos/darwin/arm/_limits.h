// Clock ticks in a second, the same on every Mac.
#ifndef KELVANE_DARWIN_ARM__LIMITS_H
#define KELVANE_DARWIN_ARM__LIMITS_H

#define __DARWIN_CLK_TCK 100

#endif
