// Tells of what happens to the item's button: another appearance, another screen. Main thread.
#pragma once

#include <functional>

#import <AppKit/AppKit.h>

@interface KelvaneButtonWatch : NSObject

// Watches until `stop`, which has to be called. `appearanceChanged` follows the button's effective
// appearance; `placeChanged` is called when its screen, its scale or the bar may be another.
- (instancetype)initWithButton:(NSStatusBarButton*)button
             appearanceChanged:(std::function<void()>)appearanceChanged
                  placeChanged:(std::function<void()>)placeChanged NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

- (void)stop;

@end
