#include "platform/linux/notifications/notice_windows.h"

#include <cstdio>
#include <utility>

namespace kelvane {
namespace {

constexpr const char* kName = "Kelvane";
constexpr double kNobodyAnswers = 1.0;  // seconds

// The first part of an identifier keeps them apart from the notifications'.
constexpr const char* kAlert = "alert/";
constexpr const char* kNoWindows = "windows/none";
constexpr const char* kAbout = "windows/about";

std::string onOneLine(std::string text) {
  for (char& each : text)
    if (each == '\n' || each == '\r') each = ' ';
  return text;
}

void print(const std::string& text) {
  std::fprintf(stderr, "kelvane: %s\n", onOneLine(text).c_str());
}

const char* iconOf(const Alert& alert) {
  if (alert.icon) return "battery-caution";
  return alert.style == AlertStyle::informational ? "dialog-information" : "dialog-warning";
}

// Several servers cut a long summary short, but none a body.
Notice noticeOf(const std::string& title, const std::string& message, const char* icon,
                bool isCritical = false) {
  if (message.empty()) return {kName, title, icon, isCritical};
  return {title, message, icon, isCritical};
}

struct OpenAlert {
  RunLoop& runLoop;
  std::function<void(int)> done;  // null once it has ended
  std::unique_ptr<Timer> patience;

  void end() {
    if (!done) return;
    runLoop.async([done = std::exchange(done, nullptr)] { done(0); });
    patience.reset();
  }
};

class NoticeAlertHandle : public AlertHandle {
 public:
  NoticeAlertHandle(NoticeBoard& board, std::string identifier, std::shared_ptr<OpenAlert> open)
      : board_(board), identifier_(std::move(identifier)), open_(std::move(open)) {}

  void abort() override {
    if (!open_->done) return;
    board_.close(identifier_);
    open_->end();
  }

 private:
  NoticeBoard& board_;
  std::string identifier_;
  std::shared_ptr<OpenAlert> open_;
};

}  // namespace

std::unique_ptr<AlertHandle> NoticeWindows::alert(const Alert& alert,
                                                  std::function<void(int)> done) {
  print(alert.message.empty() ? alert.title : alert.title + " " + alert.message);
  const auto open = std::make_shared<OpenAlert>(OpenAlert{runLoop_, std::move(done), nullptr});
  const bool endsWhenShown = !alert.buttons.empty();
  if (endsWhenShown)
    open->patience = runLoop_.startTimer(kNobodyAnswers, false, [weak = std::weak_ptr(open)] {
      if (const auto still = weak.lock()) still->end();
    });
  std::string identifier = kAlert + std::to_string(++alerts_);
  board_.post(identifier, noticeOf(alert.title, alert.message, iconOf(alert), true),
              [&board = board_, identifier, open, endsWhenShown](NoticeEvent event) {
                // An alert that has ended is not shown by a server that comes later.
                if (!endsWhenShown && event == NoticeEvent::ended) board.close(identifier);
                if (endsWhenShown || event == NoticeEvent::ended) open->end();
              });
  return std::make_unique<NoticeAlertHandle>(board_, std::move(identifier), open);
}

std::unique_ptr<ViewWindow> NoticeWindows::openWindow(const std::string&, const ViewNode&,
                                                      ViewWindowEvents) {
  const std::string text =
      "No window can be shown here; “kelvane settings list” shows every setting.";
  print(text);
  board_.post(kNoWindows, noticeOf(text, "", "dialog-information"));
  return nullptr;
}

void NoticeWindows::showAboutPanel(const ApplicationInformation& information) {
  board_.post(kAbout,
              {information.name + " " + information.version + " (" + information.build + ")",
               information.copyright, "battery"});
}

std::unique_ptr<PopoverHandle> NoticeWindows::showPopover(const PopoverContent&,
                                                          std::function<void()>) {
  return nullptr;
}

}  // namespace kelvane
