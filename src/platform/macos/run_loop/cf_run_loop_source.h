// An event source of Core Foundation that an adaptor made. Main thread.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include "platform/run_loop.h"

namespace kelvane {

class CfRunLoopSource : public RunLoopSource {
 public:
  // Takes over the caller's reference; null is a source that never tells anything.
  explicit CfRunLoopSource(CFRunLoopSourceRef _Nullable reference) : reference_(reference) {}
  // The system calls nobody from here on.
  ~CfRunLoopSource() override {
    if (!reference_) return;
    CFRunLoopSourceInvalidate(reference_);
    CFRelease(reference_);
  }
  CfRunLoopSource(const CfRunLoopSource&) = delete;
  CfRunLoopSource& operator=(const CfRunLoopSource&) = delete;

  CFRunLoopSourceRef _Nullable reference() const { return reference_; }

 private:
  CFRunLoopSourceRef _Nullable const reference_;
};

}  // namespace kelvane
