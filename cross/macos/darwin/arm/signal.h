// The type that a signal handler may write.
#ifndef KELVANE_DARWIN_ARM_SIGNAL_H
#define KELVANE_DARWIN_ARM_SIGNAL_H

typedef int sig_atomic_t;

#endif
