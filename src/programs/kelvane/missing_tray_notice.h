// Tells the user once that nobody shows the item: after a login, when the tray that Kelvane has
// waited for does not come. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <glib.h>

#include "platform/linux/notifications/notice_board.h"
#include "platform/linux/tray/tray_watch.h"
#include "platform/run_loop.h"

namespace kelvane {

class MissingTrayNotice {
 public:
  struct Questions {
    // Whether the application wants the item to be seen; nobody misses it otherwise.
    std::function<bool()> isItemWanted;
    // What the user can do, in whole sentences.
    std::function<std::string()> remedy;
  };

  // Looks for the tray once, 20 seconds from now; after that only a notice that is still there has
  // something listening for it. The loop, the bus and the board outlive this.
  MissingTrayNotice(RunLoop& loop, BusConnection* bus, NoticeBoard& board, Questions questions);
  MissingTrayNotice(const MissingTrayNotice&) = delete;
  MissingTrayNotice& operator=(const MissingTrayNotice&) = delete;

 private:
  void look();
  void shownChanged(bool isShown);
  void post();

  BusConnection* bus_;
  NoticeBoard& board_;
  Questions questions_;
  std::unique_ptr<Timer> patience_;
  std::unique_ptr<TrayWatch> tray_;  // from the look until there is nothing to take away any more
  bool isPosted_ = false;
  bool isShown_ = false;
};

}  // namespace kelvane
