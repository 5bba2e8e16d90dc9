#include "app/welcome.h"

#include <functional>
#include <utility>
#include <vector>

#include "platform/system_info.h"

namespace kelvane {
namespace {

constexpr const char* kMessage =
    "If you have any feedback, bug reports, or feature requests, use the feedback button in the "
    "app. I quickly respond to all submissions.\n\n"
    "Note: When you unplug the power adapter, the system needs some time to accurately calculate "
    "the time remaining estimate.\n\n"
    "Kelvane can unfortunately not show “apps using significant energy” like the system battery "
    "indicator does because of restrictions imposed on apps on the App Store. However, you could "
    "change the menu bar item type to text instead of icon and use this app in combination with "
    "the system battery indicator.";
constexpr double kAlertWidth = 370;  // points

constexpr double kPause = 0.1;          // seconds from the alert to the popover
constexpr double kShownFor = 5.0;       // seconds
constexpr double kTextWidth = 1000;     // points
constexpr double kInset = 15;           // points
constexpr double kShakeDuration = 0.3;  // seconds

}  // namespace

Welcome::Welcome(const Platform& platform, std::string applicationName, bool isFirstLaunch)
    : platform_(platform),
      applicationName_(std::move(applicationName)),
      isFirstLaunch_(isFirstLaunch) {}

Welcome::~Welcome() = default;

void Welcome::showWelcome(StatusItem& statusItem) {
  if (!isFirstLaunch_) return;
  platform_.windows.activate();
  const std::weak_ptr alive(isAlive_);
  alert_ = platform_.windows.alert(
      {.title = "Welcome to Kelvane!", .message = kMessage, .minimumWidth = kAlertWidth},
      [this, alive, &statusItem](int) {
        if (alive.expired()) return;
        alert_.reset();
        platform_.runLoop.asyncAfter(kPause, [this, alive, &statusItem] {
          if (!alive.expired()) showWelcomePopover(statusItem);
        });
      });
}

void Welcome::showWelcomePopover(StatusItem& statusItem) {
  const bool isCalm = platform_.systemInfo.prefersReducedMotion();
  tooltip_ = std::make_unique<Tooltip>("statusBarButtonWelcomePopover", false, false,
                                       platform_.windows, platform_.preferences);
  const std::weak_ptr alive(isAlive_);
  const auto closeLater = [this, alive] {
    if (!alive.expired()) closeWelcomePopover();
  };
  clicks_ = statusItem.observeClicks(closeLater);
  const bool isShown = tooltip_->show({.text = "Hello, I'm " + applicationName_,
                                       .maximumTextWidth = kTextWidth,
                                       .contentInset = kInset,
                                       .isAnimated = !isCalm},
                                      closeLater);
  if (!isCalm) statusItem.shake({-2, 2, -1, 1, 0}, kShakeDuration);
  if (!isShown) return closeWelcomePopover();
  closing_ = platform_.runLoop.startTimer(kShownFor, false, [this] { closeWelcomePopover(); });
}

void Welcome::closeWelcomePopover() {
  // Taken out first: closing tells us that it has closed.
  const auto tooltip = std::exchange(tooltip_, nullptr);
  if (!tooltip) return;
  clicks_.reset();
  closing_.reset();
  tooltip->close();
}

}  // namespace kelvane
