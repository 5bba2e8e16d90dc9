#include "platform/linux/power/upower_mirror.h"

#include <utility>

#include "platform/linux/power/upower_properties.h"
#include "platform/linux/power/waking.h"

namespace kelvane {
namespace {

constexpr const char* kName = "org.freedesktop.UPower";
constexpr const char* kPath = "/org/freedesktop/UPower";
constexpr const char* kDisplayPath = "/org/freedesktop/UPower/devices/DisplayDevice";
constexpr const char* kDeviceInterface = "org.freedesktop.UPower.Device";
// More than any computer has; those beyond are not looked at.
constexpr std::size_t kMostDevices = 64;

// Whether all batteries are full, which only they themselves know, is no question below.
constexpr double kNearlyFull = 90;

// The answer is a long one for a change that comes at each percent.
bool areSuppliesConcerned(const UPowerDevice& before, const UPowerDevice& now) {
  const auto isNearlyFull = [](const UPowerDevice& device) {
    return device.percentage.value_or(100) >= kNearlyFull;
  };
  return now.type != UPowerType::battery || now.type != before.type || now.state != before.state ||
         now.warning != before.warning || now.isPresent != before.isPresent ||
         isNearlyFull(before) || isNearlyFull(now);
}

bool isKindThatFeeds(const UPowerDevice& device) {
  return (device.type == UPowerType::battery || device.type == UPowerType::ups) &&
         device.isPowerSupply.value_or(true);
}

}  // namespace

UPowerMirror::UPowerMirror(BusConnection* systemBus, std::function<void()> changed)
    : bus_(shareBus(systemBus)), changed_(std::move(changed)) {
  stateChanges_ = bus_->observe([this] {
    if (bus_->state() == BusConnection::State::closed) ownerChanged("");
  });
  waking_ = listenForWaking(bus_.get(), [this] { awoke(); });
  name_ = std::make_unique<NameWatch>(bus_.get(), kName,
                                      [this](const std::string& owner) { ownerChanged(owner); });
}

UPowerMirror::~UPowerMirror() = default;

void UPowerMirror::ownerChanged(const std::string& owner) {
  owner_ = owner;
  unanswered_ = 0;
  comingsAndGoings_.reset();
  devices_.clear();
  calls_ = std::make_unique<BusCalls>();
  const bool isFirst = std::exchange(mayStart_, false);
  if (owner_.empty()) {
    isFirst ? startOnce() : setAbsent();
    return;
  }
  status_ = Status::pending;
  comingsAndGoings_ = std::make_unique<SignalSubscription>(
      bus_.get(), SignalSubscription::Match{owner_, kName, "", kPath, ""},
      [this](const char*, const char* member, GVariant* parameters) {
        deviceCameOrWent(member, parameters);
      });
  readAll();
}

// Desktops rely on the bus to start UPower when somebody asks for it.
void UPowerMirror::startOnce() {
  const BusCalls::Target bus{"org.freedesktop.DBus", "/org/freedesktop/DBus",
                             "org.freedesktop.DBus"};
  // Once it has an owner this call is forgotten, so an answer means that it still has none.
  calls_->call(bus_.get(), bus, "StartServiceByName", g_variant_new("(su)", kName, 0u), "(u)",
               [this](const BusReply&) { setAbsent(); });
}

void UPowerMirror::readAll() {
  hasList_ = false;
  ask(kDisplayPath);
  ++unanswered_;
  calls_->call(bus_.get(), {owner_, kPath, kName}, "EnumerateDevices", nullptr, "(ao)",
               [this](const BusReply& reply) { enumerated(reply); });
}

void UPowerMirror::enumerated(const BusReply& reply) {
  --unanswered_;
  if (reply) {
    hasList_ = true;
    std::map<std::string, Device> listed;
    listed.insert(devices_.extract(kDisplayPath));
    GVariantIter* paths = nullptr;
    g_variant_get(reply.value.get(), "(ao)", &paths);
    const char* path = nullptr;
    while (listed.size() <= kMostDevices && g_variant_iter_loop(paths, "&o", &path)) {
      if (auto known = devices_.extract(path))
        listed.insert(std::move(known));
      else
        listed.try_emplace(path);
    }
    g_variant_iter_free(paths);
    devices_ = std::move(listed);
    for (const auto& [each, device] : devices_)
      if (each != kDisplayPath) ask(each);
  }
  finish();
}

void UPowerMirror::ask(const std::string& path) {
  Device& device = devices_[path];
  if (std::exchange(device.isAsked, true)) {
    device.askAgain = true;
    return;
  }
  // Listening comes first, so that no change is lost between the answer and the first signal.
  if (!device.changes && !device.now.type) listen(path, device);
  ++unanswered_;
  calls_->getAllProperties(bus_.get(), {owner_, path, kDeviceInterface},
                           [this, path](const BusReply& reply) { answered(path, reply); });
}

void UPowerMirror::answered(const std::string& path, const BusReply& reply) {
  --unanswered_;
  if (const auto found = devices_.find(path); found != devices_.end()) {
    Device& device = found->second;
    device.isAsked = false;
    if (reply) {
      device.now = {};
      applyProperties(device.now, scalarsOf(reply.value.get()));
    }
    if (std::exchange(device.askAgain, false)) ask(path);
  }
  finish();
}

void UPowerMirror::listen(const std::string& path, Device& device) {
  device.changes = std::make_unique<PropertyChanges>(
      bus_.get(), BusTarget{owner_, path, kDeviceInterface},
      [this, path](const ScalarProperties& changed, bool areOthersInvalid) {
        propertiesChanged(path, changed, areOthersInvalid);
      });
}

void UPowerMirror::propertiesChanged(const std::string& path, const ScalarProperties& changed,
                                     bool areOthersInvalid) {
  const auto found = devices_.find(path);
  if (found == devices_.end()) return;
  if (status_ == Status::absent && unanswered_ == 0) return readAll();  // it does answer, after all

  const UPowerDevice before = found->second.now;
  applyProperties(found->second.now, changed);
  if (areOthersInvalid)
    ask(path);
  else if (found->second.now == before)
    return;
  if (areSuppliesConcerned(before, found->second.now)) askSupplies();
  finish();
}

void UPowerMirror::deviceCameOrWent(const std::string& member, GVariant* parameters) {
  if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(o)"))) return;
  if (status_ == Status::absent && unanswered_ == 0) return readAll();
  const char* path = nullptr;
  g_variant_get(parameters, "(&o)", &path);
  if (std::string_view(path) == kDisplayPath) return;
  if (member == "DeviceAdded" && devices_.size() <= kMostDevices) ask(path);
  if (member == "DeviceRemoved") devices_.erase(path);
  finish();
}

void UPowerMirror::askSupplies() {
  for (const auto& [path, device] : devices_)
    if (path != kDisplayPath && isKindThatFeeds(device.now)) ask(path);
}

void UPowerMirror::listenWhereNeeded() {
  const auto spokenFor = devices_[kDisplayPath].now.type;
  for (auto& [path, device] : devices_) {
    const bool isNeeded = path == kDisplayPath || device.now.type == UPowerType::linePower ||
                          (isKindThatFeeds(device.now) && device.now.type != spokenFor);
    if (!isNeeded) {
      device.changes.reset();
    } else if (!device.changes) {
      listen(path, device);
      ask(path);
    }
  }
}

void UPowerMirror::finish() {
  if (unanswered_ > 0) return;
  if (!hasList_) return setAbsent();
  listenWhereNeeded();
  if (unanswered_ > 0) return;

  UPowerSnapshot snapshot;
  for (const auto& [path, device] : devices_) {
    if (path == kDisplayPath)
      snapshot.display = device.now;
    else if (device.now.type == UPowerType::linePower || isKindThatFeeds(device.now))
      snapshot.devices.push_back(device.now);
  }
  const bool isNew = status_ != Status::ready || snapshot != snapshot_;
  status_ = Status::ready;
  snapshot_ = std::move(snapshot);
  if (std::exchange(tellAnyway_, false) || isNew) changed_();
}

void UPowerMirror::setAbsent() {
  tellAnyway_ = false;
  status_ = Status::absent;
  changed_();
}

void UPowerMirror::awoke() {
  if (!owner_.empty()) {
    tellAnyway_ = true;
    readAll();
  } else if (status_ == Status::absent) {
    changed_();
  }
}

}  // namespace kelvane
