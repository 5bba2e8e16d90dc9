#include "platform/linux/tray/watcher.h"

#include <utility>

namespace kelvane {

std::string nameOfProcess(std::uint32_t id) {
  char* contents = nullptr;
  const std::string path = "/proc/" + std::to_string(id) + "/comm";
  if (!g_file_get_contents(path.c_str(), &contents, nullptr, nullptr)) return "";
  const GCharPtr owned(contents);
  return g_strchomp(contents);
}

Watcher::Watcher(BusConnection* bus, Handler handler)
    : bus_(shareBus(bus)),
      handler_(std::move(handler)),
      watch_(bus, kName, [this](const std::string& owner) { ownerChanged(owner); }) {}

void Watcher::ownerChanged(const std::string& owner) {
  question_.reset();
  if (owner.empty()) return tell({});
  question_ = std::make_unique<BusCalls>();
  // The bus itself answers, so this takes no longer than the rest of the registration.
  question_->call(bus_.get(),
                  {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"},
                  "GetConnectionUnixProcessID", g_variant_new("(s)", owner.c_str()), "(u)",
                  [this, owner](const BusReply& reply) {
                    State state{owner, "", TrayHost::unknown};
                    if (reply) {
                      guint32 process = 0;
                      g_variant_get(reply.value.get(), "(u)", &process);
                      state.processName = nameOfProcess(process);
                      state.host = hostOfProcess(state.processName);
                    }
                    tell(std::move(state));
                  });
}

void Watcher::tell(State state) {
  if (state == state_) return;
  state_ = std::move(state);
  handler_(state_);
}

}  // namespace kelvane
