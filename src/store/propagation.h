// Changing settings without telling anybody. Any thread, and each thread by itself.
#pragma once

#include <functional>

namespace kelvane {

// While `block` runs, changes made on this thread reach no observer of the store; changes made on
// other threads still do.
void withoutPropagation(const std::function<void()>& block);

// True inside `withoutPropagation` on this thread.
bool isUpdatingValues();

}  // namespace kelvane
