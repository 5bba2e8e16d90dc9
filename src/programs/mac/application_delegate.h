// Hands what the system asks of the application on to the portable delegate. Main thread.
#pragma once

#import <AppKit/AppKit.h>

#include "app/app_main.h"

@interface KelvaneApplicationDelegate : NSObject <NSApplicationDelegate>
// The application outlives this.
- (instancetype)initWithAppMain:(kelvane::AppMain*)appMain;
@end
