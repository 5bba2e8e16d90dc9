#include "platform/linux/glib/glib_run_loop.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace kelvane {
namespace {

constexpr double kLongestSleep = 1e9;  // milliseconds, which an int holds

GSource* processLoop = nullptr;

struct LoopSource {
  GSource source;
  GlibRunLoop* loop;
};

double monotonicSeconds() { return static_cast<double>(g_get_monotonic_time()) / G_USEC_PER_SEC; }

// What is due is asked for whenever GLib is about to sleep: setting a time on the source instead
// would wake GLib up each time, only to sleep again.
gboolean prepareLoop(GSource* source, gint* milliseconds) {
  *milliseconds = -1;
  if (g_main_current_source() == source) return FALSE;  // in a loop inside of a turn
  const auto deadline = reinterpret_cast<LoopSource*>(source)->loop->nextDeadline();
  if (!deadline) return FALSE;
  // Rounded up, so that what woke us is due.
  const double left = std::ceil((*deadline - monotonicSeconds()) * 1000);
  *milliseconds = static_cast<gint>(std::clamp(left, 0.0, kLongestSleep));
  return left <= 0;
}

gboolean checkLoop(GSource* source) {
  if (g_main_current_source() == source) return FALSE;
  const auto deadline = reinterpret_cast<LoopSource*>(source)->loop->nextDeadline();
  return deadline && *deadline <= monotonicSeconds();
}

gboolean dispatchLoop(GSource* source, GSourceFunc, gpointer) {
  reinterpret_cast<LoopSource*>(source)->loop->runTurn();
  return G_SOURCE_CONTINUE;
}

GSourceFuncs loopFunctions = {prepareLoop, checkLoop, dispatchLoop, nullptr, nullptr, nullptr};

}  // namespace

GlibRunLoop::GlibRunLoop()
    : source_(g_source_new(&loopFunctions, sizeof(LoopSource))),
      mainLoop_(g_main_loop_new(nullptr, FALSE)) {
  reinterpret_cast<LoopSource*>(source_)->loop = this;
  g_source_set_static_name(source_, "kelvane run loop");
  // Else GLib takes the descriptors of what is attached out during each turn, and wakes up for it.
  g_source_set_can_recurse(source_, TRUE);
  g_source_attach(source_, nullptr);
  if (!processLoop) processLoop = source_;
}

GlibRunLoop::~GlibRunLoop() {
  if (processLoop == source_) processLoop = nullptr;
  g_source_destroy(source_);
  g_source_unref(source_);
  g_main_loop_unref(mainLoop_);
}

// A parent is dispatched after the child that is ready (GLib's g_source_add_child_source).
void GlibRunLoop::attach(GSource* source) {
  if (processLoop)
    g_source_add_child_source(processLoop, source);
  else
    g_source_attach(source, nullptr);
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

double GlibRunLoop::monotonicNow() const { return monotonicSeconds(); }

// Called by what the main loop runs, which asks for the deadline before it sleeps.
void GlibRunLoop::deadlineChanged() {}

void GlibRunLoop::wakeUp() { g_main_context_wakeup(nullptr); }

}  // namespace kelvane
