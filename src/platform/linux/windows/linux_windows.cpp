#include "platform/linux/windows/linux_windows.h"

#include <algorithm>
#include <initializer_list>
#include <ranges>
#include <tuple>
#include <utility>
#include <variant>

#include <glib.h>

#include "platform/portable/alert_run.h"
#include "platform/portable/item_popover.h"

namespace kelvane {
namespace {

constexpr double kPopoverNoticeLasts = 5;  // seconds

bool hasDisplay() {
  return std::ranges::any_of(std::initializer_list<const char*>{"WAYLAND_DISPLAY", "DISPLAY"},
                             [](const char* name) {
                               const char* value = g_getenv(name);
                               return value && *value;
                             });
}

bool isProgram(const std::string& path) {
  return g_file_test(path.c_str(), G_FILE_TEST_IS_EXECUTABLE) &&
         g_file_test(path.c_str(), G_FILE_TEST_IS_REGULAR);
}

std::string noticeOfPopover(std::uint32_t number) { return "popover/" + std::to_string(number); }

template <typename Map>
std::vector<std::uint32_t> numbersOf(const Map& map) {
  const auto keys = std::views::keys(map);
  return {keys.begin(), keys.end()};
}

template <typename... Functions>
struct Overloaded : Functions... {
  using Functions::operator()...;
};

}  // namespace

class LinuxWindows::AlertByNumber : public AlertHandle {
 public:
  AlertByNumber(LinuxWindows& windows, std::uint32_t number) : windows_(windows), number_(number) {}
  void abort() override { windows_.abortAlert(number_); }

 private:
  LinuxWindows& windows_;
  const std::uint32_t number_;
};

class LinuxWindows::WindowByNumber : public ViewWindow {
 public:
  WindowByNumber(LinuxWindows& windows, std::uint32_t number)
      : windows_(windows), number_(number) {}
  ~WindowByNumber() override { windows_.closeWindow(number_); }
  void apply(const std::vector<ViewStep>& steps) override {
    if (windows_.windows_.contains(number_) && windows_.program_ && !steps.empty())
      windows_.program_->send(ApplySteps{number_, steps});
  }
  void bringToFront() override {
    if (windows_.windows_.contains(number_) && windows_.program_)
      windows_.program_->send(FrontWindow{number_, std::exchange(windows_.token_, "")});
  }

 private:
  LinuxWindows& windows_;
  const std::uint32_t number_;
};

class LinuxWindows::PopoverByNumber : public PopoverHandle {
 public:
  PopoverByNumber(LinuxWindows& windows, std::uint32_t number)
      : windows_(windows), number_(number) {}
  void close() override { windows_.closePopover(number_); }

 private:
  LinuxWindows& windows_;
  const std::uint32_t number_;
};

LinuxWindows::LinuxWindows(RunLoopQueue& loop, NoticeBoard& board, WindowOptions options)
    : loop_(loop), board_(board), options_(std::move(options)), notices_(loop, board) {}

LinuxWindows::~LinuxWindows() = default;

// --- The program.

bool LinuxWindows::ensureProgram() {
  if (program_) return true;
  const auto path = std::ranges::find_if(options_.programs, isProgram);
  if (path == options_.programs.end() || !hasDisplay()) return false;
  const Greeting greeting{
      .isDark = isDark_, .isMotionReduced = options_.isMotionReduced && options_.isMotionReduced()};
  program_ = WindowProgram::start(
      loop_, *path, greeting,
      {[this](const WindowEvent& event) { received(event); }, [this] { programGone(); }});
  return program_ != nullptr;
}

void LinuxWindows::handOverToken() {
  if (!token_.empty()) program_->send(ActivateWindows{std::exchange(token_, "")});
}

void LinuxWindows::setDark(std::optional<bool> isDark) {
  if (std::exchange(isDark_, isDark) != isDark && program_) program_->send(DarkChanged{isDark});
}

void LinuxWindows::activate() {
  if (program_) program_->send(ActivateWindows{std::exchange(token_, "")});
}

void LinuxWindows::received(const WindowEvent& event) {
  std::visit(Overloaded{[this](const NodeActed& acted) {
                          const auto found = windows_.find(acted.window);
                          if (found == windows_.end()) return;
                          const auto call = found->second.acted;  // which may close the window
                          if (call) call(acted.action, acted.id, acted.value);
                        },
                        [this](const WindowClosed& closed) { windowClosed(closed.window); },
                        [this](const AlertAnswered& answered) {
                          endAlert(answered.alert, answered.button);
                        },
                        [this](const AboutClosed&) { about_.reset(); },
                        [this](const PopoverClosed& closed) { endPopover(closed.popover); },
                        [this](const PopoverRefused& refused) { showAsNotice(refused.popover); },
                        [this](const MenuChosen& chosen) { menuChosen(chosen); },
                        [this](const MenuClosed& closed) { menuClosed(closed); },
                        [this](const ItemClicked& click) { click_ = click; }},
             event);
  endProgramLater();
}

bool LinuxWindows::needsProgram() const {
  return !windows_.empty() || about_ || menu_ || std::ranges::any_of(alerts_, [](const auto& each) {
    return each.second.hold != nullptr;
  }) || std::ranges::any_of(popovers_, [](const auto& each) { return !each.second.isNotice; });
}

// Not in the next turn, because what was closed may make room for another one: a menu's command has
// its window opened a turn after its own.
void LinuxWindows::endProgramLater() {
  if (!program_ || needsProgram()) return;
  loop_.async([this, alive = std::weak_ptr(isAlive_)] {
    if (alive.expired()) return;
    loop_.async([this, alive] {
      if (!alive.expired() && !needsProgram()) program_.reset();
    });
  });
}

void LinuxWindows::programGone() {
  const bool wasThere = program_->hasGreeted();
  program_.reset();
  // What is called below may show something new, in another program.
  const auto windows = numbersOf(windows_);
  const auto popovers = numbersOf(popovers_);
  const auto about = std::exchange(about_, std::nullopt);
  endMenu(nullptr);
  for (const std::uint32_t number : numbersOf(alerts_)) goOnAsNotice(number);
  if (about && !wasThere) notices_.showAboutPanel(*about);
  if (!windows.empty() && !wasThere) std::ignore = notices_.openWindow("", {}, {});
  for (const std::uint32_t number : popovers) {
    const auto found = popovers_.find(number);
    if (found == popovers_.end() || found->second.isNotice) continue;
    if (wasThere)
      endPopover(number);
    else
      showAsNotice(number);
  }
  for (const std::uint32_t number : windows) windowClosed(number);
}

// --- Alerts.

std::unique_ptr<AlertHandle> LinuxWindows::alert(const Alert& alert,
                                                 std::function<void(int)> done) {
  if (!ensureProgram()) return notices_.alert(alert, std::move(done));
  const std::uint32_t number = ++last_;
  OpenAlert& open = alerts_[number];
  open.content = alert;
  open.done = std::move(done);
  open.hold = std::make_unique<RunLoopQueue::ModeScope>(loop_, RunLoopMode::modal);
  handOverToken();
  program_->send(ShowAlert{number, alert});
  return std::make_unique<AlertByNumber>(*this, number);
}

void LinuxWindows::abortAlert(std::uint32_t number) {
  const auto found = alerts_.find(number);
  if (found == alerts_.end() || found->second.isEnding) return;
  if (found->second.notice) return found->second.notice->abort();
  if (program_) program_->send(AbortAlert{number});
  endAlert(number, 0);
}

void LinuxWindows::endAlert(std::uint32_t number, int button) {
  const auto found = alerts_.find(number);
  if (found == alerts_.end() || std::exchange(found->second.isEnding, true)) return;
  const auto pressed = pressedButton(found->second.content.buttons.size(), button);
  loop_.async([this, alive = std::weak_ptr(isAlive_), number, pressed] {
    if (alive.expired()) return;
    const auto ended = alerts_.extract(number);
    ended.mapped().hold.reset();
    ended.mapped().done(static_cast<int>(pressed.value_or(0)));
    endProgramLater();
  });
}

void LinuxWindows::goOnAsNotice(std::uint32_t number) {
  OpenAlert& open = alerts_.at(number);
  if (open.isEnding || open.notice) return;
  open.hold.reset();
  open.notice =
      notices_.alert(open.content, [this, alive = std::weak_ptr(isAlive_), number](int button) {
        if (alive.expired()) return;
        if (const auto ended = alerts_.extract(number)) ended.mapped().done(button);
      });
}

// --- Windows and the about panel.

std::unique_ptr<ViewWindow> LinuxWindows::openWindow(const std::string& title, const ViewNode& tree,
                                                     ViewWindowEvents events) {
  if (!ensureProgram()) return notices_.openWindow(title, tree, std::move(events));
  const std::uint32_t number = ++last_;
  windows_[number] = std::move(events);
  handOverToken();
  program_->send(OpenWindow{number, title, tree});
  return std::make_unique<WindowByNumber>(*this, number);
}

void LinuxWindows::closeWindow(std::uint32_t number) {
  if (!windows_.erase(number)) return;
  if (program_) program_->send(CloseWindow{number});
  endProgramLater();
}

void LinuxWindows::windowClosed(std::uint32_t number) {
  const auto closed = windows_.extract(number);
  if (closed && closed.mapped().closed) closed.mapped().closed();
}

void LinuxWindows::showAboutPanel(const ApplicationInformation& information) {
  if (!ensureProgram()) return notices_.showAboutPanel(information);
  about_ = information;
  handOverToken();
  program_->send(ShowAbout{information});
}

// --- Popovers.

std::unique_ptr<PopoverHandle> LinuxWindows::showPopover(const PopoverContent& content,
                                                         std::function<void()> closed) {
  if (!isPopoverShown(content, !options_.isItemShown || options_.isItemShown())) return nullptr;
  const std::uint32_t number = ++last_;
  popovers_[number] = {content.text, std::move(closed)};
  if (ensureProgram())
    program_->send(ShowPopover{number, content.text, content.maximumTextWidth, content.inset,
                               content.isAnimated, itemPlace()});
  else
    showAsNotice(number);
  return std::make_unique<PopoverByNumber>(*this, number);
}

std::optional<Point> LinuxWindows::itemPlace() const {
  const auto told = options_.itemPlace ? options_.itemPlace() : std::nullopt;
  return told && click_ && click_->told == *told ? click_->place : told;
}

void LinuxWindows::showAsNotice(std::uint32_t number) {
  const auto found = popovers_.find(number);
  if (found == popovers_.end() || std::exchange(found->second.isNotice, true)) return;
  found->second.patience =
      loop_.startTimer(kPopoverNoticeLasts, false, [this, number] { endPopover(number); });
  board_.post(noticeOfPopover(number), {found->second.text, "", "battery"},
              [this, alive = std::weak_ptr(isAlive_), number](NoticeEvent event) {
                if (!alive.expired() && event == NoticeEvent::ended) endPopover(number);
              });
}

void LinuxWindows::closePopover(std::uint32_t number) {
  const auto found = popovers_.find(number);
  if (found == popovers_.end()) return;
  if (!found->second.isNotice && program_) program_->send(ClosePopover{number});
  endPopover(number);
}

// By whoever comes first.
void LinuxWindows::endPopover(std::uint32_t number) {
  const auto ended = popovers_.extract(number);
  if (!ended) return;
  if (ended.mapped().isNotice) board_.close(noticeOfPopover(number));
  endProgramLater();
  if (ended.mapped().closed) ended.mapped().closed();
}

}  // namespace kelvane
