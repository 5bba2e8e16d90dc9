// Windows on Linux: shown by a program of their own, that runs while there are any; said by notices
// where that can't be. Main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/geometry.h"
#include "platform/linux/notifications/notice_board.h"
#include "platform/linux/notifications/notice_windows.h"
#include "platform/linux/windows/open_menu.h"
#include "platform/linux/windows/window_program.h"
#include "platform/menu.h"
#include "platform/portable/run_loop_queue.h"
#include "platform/windows.h"

namespace kelvane {

// What is asked for each time; an empty function is one that does not know.
struct WindowOptions {
  // Where the window program may be, the best place first.
  std::vector<std::string> programs;
  std::function<bool()> isMotionReduced;
  // Whether the status item is on a screen; not known: it is.
  std::function<bool()> isItemShown;
  // Where the user last clicked it, as in `toggleMenu`.
  std::function<std::optional<Point>()> itemPlace;
};

class LinuxWindows : public Windows {
 public:
  // The loop and the board outlive this, and this outlives its handles.
  LinuxWindows(RunLoopQueue& loop, NoticeBoard& board, WindowOptions options);
  ~LinuxWindows() override;

  // The desktop wants its windows dark, or does not say.
  void setDark(std::optional<bool> isDark);
  // Lets the window that is shown or brought to the front next take the focus; used once.
  void setActivationToken(std::string token) { token_ = std::move(token); }

  void activate() override;
  // When the window program can't start, or is gone while the alert is open, the alert goes on as a
  // notice, which holds nothing up.
  [[nodiscard]] std::unique_ptr<AlertHandle> alert(const Alert& alert,
                                                   std::function<void(int)> done) override;
  [[nodiscard]] std::unique_ptr<ViewWindow> openWindow(const std::string& title,
                                                       const ViewNode& tree,
                                                       ViewWindowEvents events) override;
  void showAboutPanel(const ApplicationInformation& information) override;
  // Null only when the item is on no screen. Where the popover can't be placed it is a notice for
  // five seconds.
  [[nodiscard]] std::unique_ptr<PopoverHandle> showPopover(const PopoverContent& content,
                                                           std::function<void()> closed) override;

  // The user clicked the item: opens its menu near `anchor`, which is in pixels of the root window
  // or in the host's own, y downwards, or closes it when it is open, or was until this click.
  // Behind a modal alert it stays closed, and the alert comes to the front. Where no window can be
  // shown nothing happens, which is said once on standard error. What is chosen runs on the main
  // queue, after the menu has closed.
  void toggleMenu(Menu& menu, std::optional<Point> anchor);
  // Nothing when it is not open.
  void closeMenu();

 private:
  class AlertByNumber;
  class WindowByNumber;
  class PopoverByNumber;

  struct OpenAlert {
    Alert content;
    std::function<void(int)> done;
    std::unique_ptr<RunLoopQueue::ModeScope> hold;  // while the window program shows it
    std::unique_ptr<AlertHandle> notice;            // while that does
    bool isEnding = false;                          // `done` is on the main queue
  };
  struct Popover {
    std::string text;
    std::function<void()> closed;
    bool isNotice = false;
    std::unique_ptr<Timer> patience;  // of the notice
  };

  bool ensureProgram();
  void handOverToken();
  void received(const WindowEvent& event);
  void programGone();
  void endProgramLater();
  bool needsProgram() const;

  void abortAlert(std::uint32_t number);
  void endAlert(std::uint32_t number, int button);
  void goOnAsNotice(std::uint32_t number);
  void closeWindow(std::uint32_t number);
  void windowClosed(std::uint32_t number);
  void showAsNotice(std::uint32_t number);
  void closePopover(std::uint32_t number);
  void endPopover(std::uint32_t number);
  void menuChosen(const MenuChosen& chosen);
  void menuClosed(const MenuClosed& closed);
  std::optional<Point> itemPlace() const;
  void endMenu(const std::function<void()>& action);

  RunLoopQueue& loop_;
  NoticeBoard& board_;
  const WindowOptions options_;
  NoticeWindows notices_;
  std::optional<bool> isDark_;
  std::string token_;
  std::optional<ItemClicked> click_;  // the latest in the host's own pixels

  std::uint32_t last_ = 0;  // number given to an alert, a window, a popover or a menu
  std::map<std::uint32_t, OpenAlert> alerts_;
  std::map<std::uint32_t, ViewWindowEvents> windows_;
  std::map<std::uint32_t, Popover> popovers_;
  std::optional<ApplicationInformation> about_;  // in the open panel
  std::unique_ptr<OpenMenu> menu_;
  std::unique_ptr<Timer> menuJustClosed_;  // as it lost the focus
  bool hasSaidNoMenu_ = false;

  std::unique_ptr<WindowProgram> program_;
  // Jobs on the main queue find out that this is gone.
  std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace kelvane
