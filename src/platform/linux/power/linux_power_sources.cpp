#include "platform/linux/power/linux_power_sources.h"

#include <utility>

#include "platform/linux/power/registry_rules.h"
#include "platform/linux/power/waking.h"

namespace kelvane {

LinuxPowerSources::LinuxPowerSources(RunLoopQueue& loop, PowerOptions options)
    : LinuxPowerSources(loop, options, std::make_shared<TurnSupplies>(options.directory)) {}

LinuxPowerSources::LinuxPowerSources(RunLoopQueue& loop, PowerOptions options,
                                     std::shared_ptr<TurnSupplies> supplies)
    : loop_(loop), options_(std::move(options)), supplies_(std::move(supplies)) {
  isSettled_ = !options_.useUPower;
  busRequest_.emplace([this](BusConnection* bus) { connected(bus); });
}

LinuxPowerSources::~LinuxPowerSources() = default;

void LinuxPowerSources::connected(BusConnection* bus) {
  if (!bus)
    settle();
  else if (options_.useUPower)
    mirror_ = std::make_unique<UPowerMirror>(bus, [this] { mirrorChanged(); });
  else
    waking_ = listenForWaking(bus, [this] { signalIfChanged(); });
}

void LinuxPowerSources::mirrorChanged() {
  supplies_->forget();
  isMirrorRead_ = false;
  const bool serves = upower() != nullptr;
  const bool served = std::exchange(servedByUPower_, serves);
  // What was read of UPower is not kept, so there is nothing to compare with.
  if (served)
    signal();
  else
    signalIfChanged();
  lastRead_ = serves ? std::nullopt : std::optional(read());
  settle();
}

void LinuxPowerSources::settle() {
  isSettled_ = true;
  updateWatch();
  for (auto& done : std::exchange(waiting_, {})) loop_.async(std::move(done));
}

void LinuxPowerSources::updateWatch() {
  if (!isSettled_) return;
  if (servedByUPower_ || !hasListeners())
    watch_.reset();
  else if (!watch_)
    watch_ =
        std::make_unique<SupplyWatch>(loop_, options_.directory, [this] { signalIfChanged(); });
}

const std::vector<PropertyDictionary>& LinuxPowerSources::descriptions() {
  return readings(SupplyFields::all).descriptions;
}

double LinuxPowerSources::timeRemainingEstimate() {
  return readings(SupplyFields::state).timeRemainingEstimate;
}

BatteryWarningLevel LinuxPowerSources::warningLevel() {
  return readings(SupplyFields::all).warningLevel;
}

std::shared_ptr<RunLoopSource> LinuxPowerSources::makeNotificationSource(
    std::function<void()> callback) {
  auto source = std::make_shared<QueueSource>(std::move(callback));
  listeners_.push_back(source);
  if (!servedByUPower_) lastRead_ = read();
  updateWatch();
  return source;
}

void LinuxPowerSources::whenSettled(std::function<void()> done) {
  if (isSettled_)
    loop_.async(std::move(done));
  else
    waiting_.push_back(std::move(done));
}

const UPowerSnapshot* LinuxPowerSources::upower() const {
  return mirror_ ? mirror_->snapshot() : nullptr;
}

bool LinuxPowerSources::hasListeners() {
  std::erase_if(listeners_, [](const auto& listener) { return listener.expired(); });
  return !listeners_.empty();
}

const PowerReadings& LinuxPowerSources::readings(SupplyFields fields) {
  const UPowerSnapshot* mirrored = upower();
  const auto& supplies = supplies_->read(mirrored ? SupplyFields::state : fields);
  if (!mirrored) return readings_ = powerReadings(supplies, nullptr);
  // One change is asked for many figures, and all the kernel has to say is about the adapter.
  const auto isConnected = externalConnected(supplies);
  if (std::exchange(isMirrorRead_, true) && isConnected == isConnectedRead_) return readings_;
  isConnectedRead_ = isConnected;
  return readings_ = powerReadings(supplies, mirrored);
}

LinuxPowerSources::Reading LinuxPowerSources::read() {
  const auto& supplies = supplies_->readAfresh();
  return {powerReadings(supplies, upower()), registryProperties(supplies)};
}

void LinuxPowerSources::signalIfChanged() {
  Reading now = read();
  if (lastRead_ == now) return;
  lastRead_ = std::move(now);
  signal();
}

void LinuxPowerSources::signal() {
  for (const auto& listener : listeners_)
    if (const auto source = listener.lock()) source->signal();
}

}  // namespace kelvane
