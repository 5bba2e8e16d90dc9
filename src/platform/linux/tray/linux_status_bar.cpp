#include "platform/linux/tray/linux_status_bar.h"

#include <utility>

#include "platform/linux/tray/desktop_settings.h"
#include "platform/linux/tray/linux_status_item.h"
#include "platform/linux/tray/watcher.h"

namespace kelvane {
namespace {

// How long a new host waits for the desktop's settings: they answer within a few milliseconds, and
// what comes later redraws the item.
constexpr double kLongestWait = 0.015;

}  // namespace

class LinuxStatusBar::Impl {
 public:
  Impl(RunLoopQueue& loop, FontFaces& fonts, TrayOptions options)
      : loop_(loop), fonts_(fonts), options_(std::move(options)) {
    surroundings_.slot = profileOf(TrayHost::unknown).slot;
    surroundings_.slot.scale = kScaleWhenUnknown;
    if (!options_.sessionBus) return;
    if (options_.busAddress.empty()) options_.busAddress = busAddress(BusKind::session);
    settings_ =
        std::make_unique<DesktopSettings>(options_.sessionBus, [this] { settingsChanged(); });
    watcher_ = std::make_unique<Watcher>(
        options_.sessionBus, [this](const Watcher::State& state) { watcherChanged(state); });
  }

  std::unique_ptr<StatusItem> makeItem(double length) {
    auto item =
        std::make_unique<LinuxStatusItem>(loop_, fonts_, options_, options_.busAddress,
                                          surroundings_, length, [this] { item_ = nullptr; });
    item_ = item.get();
    return item;
  }

  void menuChanged() {
    if (item_) item_->menuChanged();
  }

  std::string hostName() const {
    if (!watcher_ || watcher_->state().owner.empty()) return "";
    const Watcher::State& state = watcher_->state();
    return state.processName.empty() ? state.owner : state.processName;
  }

  bool prefersReducedMotion() const { return settings_ && settings_->prefersReducedMotion(); }

  bool isRegistered() const { return item_ && item_->isRegistered(); }

  bool isItemWanted() const { return item_ && item_->isVisible(); }

 private:
  void watcherChanged(const Watcher::State& state) {
    waiting_.reset();
    surroundings_.hasHost = false;
    if (state.owner.empty()) {
      if (item_) item_->hostChanged(surroundings_);
      return;
    }
    surroundings_.profile = profileOf(state.host);
    waiting_ = loop_.startTimer(kLongestWait, false, [this] { hostIsReady(); });
    settings_->follow(state.host);
    if (settings_->isComplete()) hostIsReady();
  }

  void settingsChanged() {
    const auto isDark = settings_->prefersDarkWindows();
    if (std::exchange(areWindowsDark_, isDark) != isDark && options_.windowAppearance)
      options_.windowAppearance(isDark);
    if (waiting_) return hostIsReady();
    if (!surroundings_.hasHost) return;
    apply();
    if (item_) item_->surroundingsChanged(surroundings_);
  }

  void hostIsReady() {
    const auto done = std::move(waiting_);
    surroundings_.hasHost = true;
    apply();
    if (item_) item_->hostChanged(surroundings_);
  }

  void apply() {
    surroundings_.slot = surroundings_.profile.slot;
    const auto scale = settings_->scale();
    surroundings_.isScaleKnown = scale.has_value();
    surroundings_.slot.scale = scale.value_or(kScaleWhenUnknown);
    surroundings_.barAppearance = settings_->barAppearance();
    const std::string font = settings_->fontFamily();
    if (font.empty() || font == font_) return;
    font_ = font;
    fonts_.setFamily(font_);
    if (item_) item_->fontChanged();
  }

  RunLoopQueue& loop_;
  FontFaces& fonts_;
  TrayOptions options_;
  TraySurroundings surroundings_;
  std::string font_;
  std::optional<bool> areWindowsDark_;
  LinuxStatusItem* item_ = nullptr;
  std::unique_ptr<Timer> waiting_;  // for the settings of a new host
  std::unique_ptr<DesktopSettings> settings_;
  std::unique_ptr<Watcher> watcher_;
};

LinuxStatusBar::LinuxStatusBar(RunLoopQueue& loop, FontFaces& fonts, TrayOptions options)
    : impl_(std::make_unique<Impl>(loop, fonts, std::move(options))) {}

LinuxStatusBar::~LinuxStatusBar() = default;

std::unique_ptr<StatusItem> LinuxStatusBar::makeItem(double length) {
  return impl_->makeItem(length);
}

void LinuxStatusBar::menuChanged() { impl_->menuChanged(); }

std::string LinuxStatusBar::hostName() const { return impl_->hostName(); }

bool LinuxStatusBar::prefersReducedMotion() const { return impl_->prefersReducedMotion(); }

bool LinuxStatusBar::isRegistered() const { return impl_->isRegistered(); }

bool LinuxStatusBar::isItemWanted() const { return impl_->isItemWanted(); }

}  // namespace kelvane
