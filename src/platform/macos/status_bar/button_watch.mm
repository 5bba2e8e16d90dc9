#include "platform/macos/status_bar/button_watch.h"

#include <utility>

namespace {

NSString* const kEffectiveAppearance = @"effectiveAppearance";
// Tells our observation from one that a superclass may have.
char context;

}  // namespace

@implementation KelvaneButtonWatch {
  NSStatusBarButton* button_;
  std::function<void()> appearanceChanged_;
  std::function<void()> placeChanged_;
  NSMutableArray<id<NSObject>>* notices_;
}

- (instancetype)initWithButton:(NSStatusBarButton*)button
             appearanceChanged:(std::function<void()>)appearanceChanged
                  placeChanged:(std::function<void()>)placeChanged {
  if ((self = [super init])) {
    button_ = button;
    appearanceChanged_ = std::move(appearanceChanged);
    placeChanged_ = std::move(placeChanged);
    notices_ = [NSMutableArray arrayWithCapacity:2];
    [button_ addObserver:self
              forKeyPath:kEffectiveAppearance
                 options:NSKeyValueObservingOptionNew
                 context:&context];
    [self hear:NSApplicationDidChangeScreenParametersNotification];
    // Of any window, for the button changes its own with the screen.
    [self hear:NSWindowDidChangeBackingPropertiesNotification];
  }
  return self;
}

- (void)hear:(NSNotificationName)name {
  __weak KelvaneButtonWatch* weakSelf = self;
  [notices_ addObject:[NSNotificationCenter.defaultCenter addObserverForName:name
                                                                      object:nil
                                                                       queue:nil
                                                                  usingBlock:^(NSNotification*) {
                                                                    [weakSelf placeMayHaveChanged];
                                                                  }]];
}

- (void)stop {
  if (!button_) return;
  [button_ removeObserver:self forKeyPath:kEffectiveAppearance context:&context];
  for (id<NSObject> notice in notices_) [NSNotificationCenter.defaultCenter removeObserver:notice];
  button_ = nil;
  appearanceChanged_ = nullptr;
  placeChanged_ = nullptr;
}

- (void)placeMayHaveChanged {
  // The callback may stop the watch, and would be destroyed while it runs.
  const auto callback = placeChanged_;
  if (callback) callback();
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)whose {
  if (whose != &context) {
    [super observeValueForKeyPath:keyPath ofObject:object change:change context:whose];
    return;
  }
  const auto callback = appearanceChanged_;
  if (callback) callback();
}

@end
