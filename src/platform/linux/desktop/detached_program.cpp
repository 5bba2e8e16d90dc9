#include "platform/linux/desktop/detached_program.h"

#include <cstdio>

#include <unistd.h>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {

void startDetached(const std::vector<std::string>& command) {
  std::vector<char*> words;
  words.reserve(command.size() + 1);
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  GError* rawError = nullptr;
  // Not to be reaped by us, so GLib puts a child in between, which ends at once.
  g_spawn_async(
      nullptr, words.data(), nullptr, G_SPAWN_SEARCH_PATH, [](gpointer) { setsid(); }, nullptr,
      nullptr, &rawError);
  const GErrorPtr error(rawError);
  if (error)
    std::fprintf(stderr, "kelvane: can't start %s: %s\n", command.front().c_str(), error->message);
}

}  // namespace kelvane
