#include "programs/kelvane/missing_tray_notice.h"

#include <utility>

namespace kelvane {
namespace {

// Desktops bring their panel within this time from the login, slow disks included.
constexpr double kLoginTakes = 20.0;  // seconds
constexpr const char* kIdentifier = "tray/missing";

}  // namespace

MissingTrayNotice::MissingTrayNotice(RunLoop& loop, BusConnection* bus, NoticeBoard& board,
                                     Questions questions)
    : bus_(bus),
      board_(board),
      questions_(std::move(questions)),
      patience_(loop.startTimer(kLoginTakes, false, [this] { look(); })) {}

void MissingTrayNotice::look() {
  patience_.reset();
  if (!questions_.isItemWanted()) return;
  tray_ = std::make_unique<TrayWatch>(bus_, [this](bool isShown) { shownChanged(isShown); });
}

void MissingTrayNotice::shownChanged(bool isShown) {
  if (!isShown) return post();
  if (isPosted_) board_.close(kIdentifier);
  tray_.reset();
}

void MissingTrayNotice::post() {
  if (std::exchange(isPosted_, true)) return;
  Notice notice{"No tray for the battery",
                "Kelvane runs, but nothing on this desktop shows its item. " + questions_.remedy() +
                    " For more, run: kelvane doctor",
                "battery"};
  // One that nobody could show yet may still be shown, so only the end of a shown one is the end.
  board_.post(kIdentifier, std::move(notice), [this](NoticeEvent event) {
    if (event == NoticeEvent::shown)
      isShown_ = true;
    else if (isShown_)
      tray_.reset();
  });
}

}  // namespace kelvane
