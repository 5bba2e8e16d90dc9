// What @available calls. On a Mac it comes with the compiler; Debian's clang has it for Linux only.
#include <stdint.h>
#include <stdlib.h>
#include <sys/sysctl.h>

// The numbers of "11.7.10", each 0 where it is missing; all 0 when the system does not say.
static void systemVersion(uint32_t numbers[3]) {
  char text[32] = {0};
  size_t size = sizeof(text) - 1;
  if (sysctlbyname("kern.osproductversion", text, &size, NULL, 0) != 0) return;
  char* rest = text;
  for (int i = 0; i < 3; ++i) {
    numbers[i] = (uint32_t)strtoul(rest, &rest, 10);
    if (*rest != '.') return;
    ++rest;
  }
}

int32_t __isPlatformVersionAtLeast(uint32_t platform, uint32_t major, uint32_t minor,
                                   uint32_t patch) {
  (void)platform;  // always macOS
  const uint32_t wanted[3] = {major, minor, patch};
  uint32_t found[3] = {0, 0, 0};
  systemVersion(found);
  for (int i = 0; i < 3; ++i) {
    if (found[i] != wanted[i]) return found[i] > wanted[i];
  }
  return 1;
}
