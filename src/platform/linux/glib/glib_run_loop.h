// The run loop on GLib's default main context. Main thread.
//
// One event source of ours sleeps until the next deadline, so an idle program is never woken up. A
// turn follows what the sources attached to it have heard, before the next sleep.
#pragma once

#include <glib.h>

#include "platform/portable/run_loop_queue.h"

namespace kelvane {

class GlibRunLoop : public RunLoopQueue {
 public:
  GlibRunLoop();
  ~GlibRunLoop() override;

  // Runs until `terminate`, and answers what it was given.
  int run();
  void terminate(int exitCode) override;

  Date now() const override;

  // Attaches a source to the default context, where it works from now on; to the loop of the
  // process, where there is one, so that what the source has queued is done within the same waking.
  static void attach(GSource* source);

 protected:
  double monotonicNow() const override;
  void deadlineChanged() override;
  void wakeUp() override;

 private:
  GSource* source_;
  GMainLoop* mainLoop_;
  int exitCode_ = 0;
};

}  // namespace kelvane
