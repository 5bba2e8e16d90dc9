// What the other doubles ask of the run loop.
#pragma once

#include "doubles.h"

// Stands for a source of Core Foundation whose messages the system queues.
@interface KelvaneLoopSource : NSObject {
 @public
  bool isValid_;
  int messages_;
  void (*callback_)(void*);
  void* context_;
}
@end

namespace kelvane::doubles {

// Ends the process when the loop would sleep for ever.
void runLoopUntil(NSString* mode, const std::function<bool()>& isDone);
// Whether an event was handled since it was last asked: only then an application looks up.
bool takeEventHandled();

}  // namespace kelvane::doubles
