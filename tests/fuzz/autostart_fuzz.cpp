// An entry in the autostart folder, which other programs write, too.
#include <string>

#include <fuzzer/FuzzedDataProvider.h>
#include <glib.h>

#include "platform/linux/desktop/autostart_entry.h"
#include "tests/fuzz/fuzzing.h"

using namespace kelvane;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  const DesktopSession session{desktopNames(input.ConsumeRandomLengthString(16)),
                               [](const std::string& program) { return program.size() % 2 == 0; }};
  const std::string text = input.ConsumeRemainingBytesAsString();
  (void)isStartedAtLogin(text, session);

  // Any path is written so that it is understood, but for bytes that no such file may hold.
  const std::string path = "/" + text.substr(0, 64);
  if (path.find('\0') != std::string::npos || !g_utf8_validate(path.data(), -1, nullptr)) return 0;
  std::string asked;
  const auto isStarted =
      isStartedAtLogin(autostartEntry(path), {{"X"}, [&](const std::string& program) {
                                                asked = program;
                                                return true;
                                              }});
  require(isStarted == true && asked == path, "our own entry starts our program");
  return 0;
}
