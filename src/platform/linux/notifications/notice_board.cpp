#include "platform/linux/notifications/notice_board.h"

#include <chrono>
#include <limits>
#include <utility>
#include <vector>

namespace kelvane {
namespace {

constexpr const char* kName = "org.freedesktop.Notifications";
constexpr const char* kPath = "/org/freedesktop/Notifications";
constexpr const char* kApplication = "Kelvane";
constexpr const char* kDesktopEntry = "org.kelvane.Kelvane";
constexpr auto kLoginTakes = std::chrono::seconds(60);
// A late answer still tells the id, and the bus answers for a server that ends.
constexpr int kNoTimeout = std::numeric_limits<int>::max();

// Every server in use takes the body for markup.
std::string escaped(const std::string& text) {
  std::string result;
  for (const char each : text) {
    if (each == '&')
      result += "&amp;";
    else if (each == '<')
      result += "&lt;";
    else if (each == '>')
      result += "&gt;";
    else
      result += each;
  }
  return result;
}

GVariant* notifyArguments(const Notice& notice, std::uint32_t replaced) {
  GVariantBuilder actions;
  g_variant_builder_init(&actions, G_VARIANT_TYPE_STRING_ARRAY);
  GVariantBuilder hints;
  g_variant_builder_init(&hints, G_VARIANT_TYPE_VARDICT);
  g_variant_builder_add(&hints, "{sv}", "urgency", g_variant_new_byte(notice.isCritical ? 2 : 1));
  g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string(kDesktopEntry));
  // -1: as long as the server thinks right; 0: until it is closed.
  return g_variant_new("(susssasa{sv}i)", kApplication, replaced, notice.icon.c_str(),
                       notice.summary.c_str(), escaped(notice.body).c_str(), &actions, &hints,
                       notice.isCritical ? 0 : -1);
}

}  // namespace

NoticeBoard::NoticeBoard(BusConnection* sessionBus, const RunLoop& runLoop)
    : bus_(shareBus(sessionBus)),
      runLoop_(runLoop),
      calls_(std::make_unique<BusCalls>()),
      watch_(sessionBus, kName, [this](const std::string& owner) { ownerChanged(owner); }) {}

void NoticeBoard::post(const std::string& identifier, Notice notice, Listener listener) {
  forgetOutdated();
  Entry& entry = entries_[identifier];
  entry.wanted = std::move(notice);
  entry.listener = std::move(listener);
  entry.posted = runLoop_.now();
  entry.isSent = false;
  carryOut(identifier);
}

void NoticeBoard::close(const std::string& identifier) {
  const auto found = entries_.find(identifier);
  if (found == entries_.end()) return;
  found->second.wanted.reset();
  found->second.listener = nullptr;
  found->second.isSent = false;
  carryOut(identifier);
}

void NoticeBoard::carryOut(const std::string& identifier) {
  Entry& entry = entries_.at(identifier);
  if (entry.isAsked || entry.isSent) return;
  if (!entry.wanted) {
    if (entry.id) closeOnServer(entry.id);
    entries_.erase(identifier);
  } else if (owner_) {
    send(identifier, entry);
  }
  followClosing();
}

void NoticeBoard::send(const std::string& identifier, Entry& entry) {
  entry.isSent = true;
  entry.isAsked = true;
  calls_->call(
      bus_.get(), server(), "Notify", notifyArguments(*entry.wanted, entry.id), "(u)",
      [this, identifier](const BusReply& reply) { answered(identifier, reply); }, owner_->empty(),
      kNoTimeout);
}

// The owner itself, so that the answer can't be another one's. With none, the name is called, and
// the bus starts a server for it if it can.
BusCalls::Target NoticeBoard::server() const {
  return {owner_->empty() ? kName : *owner_, kPath, kName};
}

void NoticeBoard::answered(const std::string& identifier, const BusReply& reply) {
  Entry& entry = entries_.at(identifier);
  entry.isAsked = false;
  if (reply) {
    guint32 id = 0;
    g_variant_get(reply.value.get(), "(u)", &id);
    // A server that can't replace: only the new one is wanted.
    if (entry.id && entry.id != id) closeOnServer(entry.id);
    entry.id = id;
  }
  if (!entry.isSent) return carryOut(identifier);

  const bool canBeFollowed = reply && entry.id;
  const Listener listener = canBeFollowed ? entry.listener : std::exchange(entry.listener, nullptr);
  // What was refused waits for another server; what has no id is out of our hands.
  if (!reply)
    entry.isSent = false;
  else if (!entry.id)
    entries_.erase(identifier);
  followClosing();
  if (listener) listener(canBeFollowed ? NoticeEvent::shown : NoticeEvent::ended);
}

void NoticeBoard::closeOnServer(std::uint32_t id) {
  calls_->call(bus_.get(), server(), "CloseNotification", g_variant_new("(u)", id), "()",
               [](const BusReply&) {});
}

void NoticeBoard::closedByServer(std::uint32_t id) {
  std::vector<Listener> listeners;
  for (auto next = entries_.begin(); next != entries_.end();) {
    const auto each = next++;
    Entry& entry = each->second;
    if (entry.id != id) continue;
    entry.id = 0;
    // Closed was the one before; the latest is on its way, or waits.
    if (entry.isAsked || !entry.isSent) continue;
    if (entry.listener) listeners.push_back(std::move(entry.listener));
    entries_.erase(each);
  }
  followClosing();
  for (const Listener& listener : listeners) listener(NoticeEvent::ended);
}

void NoticeBoard::ownerChanged(const std::string& owner) {
  const bool isFirst = !owner_;
  const bool isSuccessor = !isFirst && !owner_->empty();
  owner_ = owner;
  closing_.reset();
  // What was asked of nobody in particular, the first owner to come answers.
  const std::vector<Listener> listeners = isSuccessor ? forgetServer() : std::vector<Listener>();
  forgetOutdated();
  if (isFirst || !owner.empty())
    for (auto& [identifier, entry] : entries_)
      if (!entry.isAsked && !entry.isSent) send(identifier, entry);
  followClosing();
  for (const Listener& listener : listeners) listener(NoticeEvent::ended);
}

std::vector<NoticeBoard::Listener> NoticeBoard::forgetServer() {
  calls_ = std::make_unique<BusCalls>();
  std::vector<Listener> listeners;
  for (auto next = entries_.begin(); next != entries_.end();) {
    const auto each = next++;
    Entry& entry = each->second;
    if (entry.listener) listeners.push_back(std::exchange(entry.listener, nullptr));
    const bool wasShown = entry.isSent && !entry.isAsked;
    if (!entry.wanted || wasShown) {
      entries_.erase(each);
    } else {
      entry.isSent = entry.isAsked = false;
      entry.id = 0;
    }
  }
  return listeners;
}

void NoticeBoard::forgetOutdated() {
  std::erase_if(entries_, [now = runLoop_.now()](const auto& each) {
    const Entry& entry = each.second;
    return !entry.isSent && !entry.isAsked && !entry.id && now - entry.posted > kLoginTakes;
  });
}

void NoticeBoard::followClosing() {
  if (entries_.empty() || !owner_ || owner_->empty()) {
    closing_.reset();
  } else if (!closing_) {
    closing_ = std::make_unique<SignalSubscription>(
        bus_.get(), SignalSubscription::Match{*owner_, kName, "NotificationClosed", kPath, ""},
        [this](const char*, const char*, GVariant* parameters) {
          if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(uu)"))) return;
          guint32 id = 0;
          g_variant_get(parameters, "(uu)", &id, nullptr);
          closedByServer(id);
        });
  }
}

}  // namespace kelvane
