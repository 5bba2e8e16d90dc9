// The application's main menu. It is in no bar, as the application has no place in the Dock, but
// its keys work in our windows. Main thread.
#pragma once

#import <AppKit/AppKit.h>

namespace kelvane {

NSMenu* makeMainMenu();

}  // namespace kelvane
