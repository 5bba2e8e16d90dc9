// One modal alert over the whole application. Main thread.
#pragma once

#include <functional>
#include <memory>

#include "platform/windows.h"

namespace kelvane {

// Runs it as soon as the caller's turn is over and the loop is in its default mode, so alerts come
// one after the other. `done` is called when it has ended.
std::unique_ptr<AlertHandle> showModalAlert(const Alert& alert, std::function<void(int)> done);

}  // namespace kelvane
