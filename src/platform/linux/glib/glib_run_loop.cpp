#include "platform/linux/glib/glib_run_loop.h"

#include <chrono>
#include <cmath>

namespace kelvane {
namespace {

struct LoopSource {
  GSource source;
  GlibRunLoop* loop;
};

gboolean dispatchLoop(GSource* source, GSourceFunc, gpointer) {
  reinterpret_cast<LoopSource*>(source)->loop->runTurn();
  return G_SOURCE_CONTINUE;
}

GSourceFuncs loopFunctions = {nullptr, nullptr, dispatchLoop, nullptr, nullptr, nullptr};

}  // namespace

GlibRunLoop::GlibRunLoop()
    : source_(g_source_new(&loopFunctions, sizeof(LoopSource))),
      mainLoop_(g_main_loop_new(nullptr, FALSE)) {
  reinterpret_cast<LoopSource*>(source_)->loop = this;
  g_source_set_static_name(source_, "kelvane run loop");
  g_source_attach(source_, nullptr);
}

GlibRunLoop::~GlibRunLoop() {
  g_source_destroy(source_);
  g_source_unref(source_);
  g_main_loop_unref(mainLoop_);
}

int GlibRunLoop::run() {
  exitCode_ = 0;
  g_main_loop_run(mainLoop_);
  return exitCode_;
}

void GlibRunLoop::terminate(int exitCode) {
  exitCode_ = exitCode;
  g_main_loop_quit(mainLoop_);
}

Date GlibRunLoop::now() const {
  return std::chrono::time_point_cast<std::chrono::microseconds>(std::chrono::system_clock::now());
}

double GlibRunLoop::monotonicNow() const {
  return static_cast<double>(g_get_monotonic_time()) / G_USEC_PER_SEC;
}

void GlibRunLoop::deadlineChanged() {
  const auto deadline = nextDeadline();
  // Rounded up, so that what woke us is due.
  g_source_set_ready_time(
      source_, deadline ? static_cast<gint64>(std::ceil(*deadline * G_USEC_PER_SEC)) : -1);
  if (hasForeignJobs()) wakeUp();
}

// Safe on any thread, see g_source_set_ready_time().
void GlibRunLoop::wakeUp() { g_source_set_ready_time(source_, 0); }

}  // namespace kelvane
