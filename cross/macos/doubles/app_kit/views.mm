// Views, windows and controls: what they are told, they keep.
#include "doubles.h"

@interface NSView () {
  NSMutableArray<NSView*>* kept_;
  __unsafe_unretained NSView* superview_;
  __unsafe_unretained NSWindow* window_;
}
@end

@implementation NSView
@dynamic subviews;
@synthesize appearance = appearance_;

- (instancetype)init {
  return [self initWithFrame:NSMakeRect(0, 0, 0, 0)];
}
- (instancetype)initWithFrame:(NSRect)frame {
  if ((self = [super init])) {
    self.frame = self.bounds = frame;
    self.translatesAutoresizingMaskIntoConstraints = YES;
    self.layer = [[CALayer alloc] init];
    kept_ = [NSMutableArray arrayWithCapacity:0];
    self.kelvaneTrackingAreas = [NSMutableArray arrayWithCapacity:0];
    self.kelvaneRecognizers = [NSMutableArray arrayWithCapacity:0];
  }
  return self;
}
- (void)dealloc {
  for (NSView* each in kept_) each->superview_ = nil;
}
- (NSArray*)subviews {
  return [kept_ copy];
}
- (NSView*)superview {
  return superview_;
}
- (NSWindow*)window {
  return window_ ? window_ : superview_.window;
}
- (void)kelvanePutIntoWindow:(NSWindow*)window {
  window_ = window;
}
- (NSAppearance*)effectiveAppearance {
  if (appearance_) return appearance_;
  return superview_ ? superview_.effectiveAppearance : NSApp.effectiveAppearance;
}
- (void)addSubview:(NSView*)view {
  [view removeFromSuperview];
  [kept_ addObject:view];
  view->superview_ = self;
  [view viewDidMoveToSuperview];
}
- (void)removeFromSuperview {
  NSView* superview = superview_;
  superview_ = nil;
  if (superview) [superview->kept_ removeObject:self];
}
- (void)viewDidMoveToSuperview {
}
- (NSRect)convertRect:(NSRect)rect toView:(NSView*)view {
  (void)view;
  return rect;
}
- (void)updateTrackingAreas {
}
- (void)addTrackingArea:(NSTrackingArea*)area {
  [self.kelvaneTrackingAreas addObject:area];
}
- (void)removeTrackingArea:(NSTrackingArea*)area {
  if (![self.kelvaneTrackingAreas containsObject:area]) @throw [[NSException alloc] init];
  [self.kelvaneTrackingAreas removeObject:area];
}
- (void)addGestureRecognizer:(NSGestureRecognizer*)recognizer {
  [self.kelvaneRecognizers addObject:recognizer];
}
- (void)removeGestureRecognizer:(NSGestureRecognizer*)recognizer {
  [self.kelvaneRecognizers removeObject:recognizer];
}
// The edges and sizes are all one anchor here: what is pinned to what is nothing that we can prove.
- (id)kelvaneAnchor {
  return [[NSLayoutDimension alloc] init];
}
- (NSLayoutXAxisAnchor*)leadingAnchor {
  return [self kelvaneAnchor];
}
- (NSLayoutXAxisAnchor*)trailingAnchor {
  return [self kelvaneAnchor];
}
- (NSLayoutYAxisAnchor*)topAnchor {
  return [self kelvaneAnchor];
}
- (NSLayoutYAxisAnchor*)bottomAnchor {
  return [self kelvaneAnchor];
}
- (NSLayoutDimension*)widthAnchor {
  return [self kelvaneAnchor];
}
@end

@implementation NSLayoutConstraint
+ (void)activateConstraints:(NSArray<NSLayoutConstraint*>*)constraints {
  for (NSLayoutConstraint* each in constraints) each.active = YES;
}
@end

@implementation NSLayoutAnchor
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor*)anchor {
  return [self constraintEqualToAnchor:anchor constant:0];
}
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor*)anchor constant:(CGFloat)constant {
  (void)anchor;
  NSLayoutConstraint* constraint = [[NSLayoutConstraint alloc] init];
  constraint.constant = constant;
  return constraint;
}
@end

@implementation NSLayoutXAxisAnchor
@end

@implementation NSLayoutYAxisAnchor
@end

@implementation NSLayoutDimension
- (NSLayoutConstraint*)constraintEqualToConstant:(CGFloat)constant {
  return [self constraintEqualToAnchor:self constant:constant];
}
- (NSLayoutConstraint*)constraintLessThanOrEqualToConstant:(CGFloat)constant {
  return [self constraintEqualToAnchor:self constant:constant];
}
@end

@implementation NSTrackingArea
- (instancetype)initWithRect:(NSRect)rect
                     options:(NSTrackingAreaOptions)options
                       owner:(id)owner
                    userInfo:(NSDictionary<id, id>*)userInfo {
  (void)userInfo;
  if ((self = [super init])) {
    self.kelvaneRect = rect;
    self.kelvaneOptions = options;
    self.kelvaneOwner = owner;
  }
  return self;
}
@end

@implementation NSGestureRecognizer
- (instancetype)initWithTarget:(id)target action:(SEL)action {
  if ((self = [super init])) {
    self.kelvaneTarget = target;
    self.kelvaneAction = action;
  }
  return self;
}
@end

@implementation NSClickGestureRecognizer
@end

@implementation NSControl
@end

@implementation NSButton
+ (instancetype)checkboxWithTitle:(NSString*)title target:(id)target action:(SEL)action {
  return [self buttonWithTitle:title target:target action:action];
}
+ (instancetype)radioButtonWithTitle:(NSString*)title target:(id)target action:(SEL)action {
  return [self buttonWithTitle:title target:target action:action];
}
+ (instancetype)buttonWithTitle:(NSString*)title target:(id)target action:(SEL)action {
  NSButton* button = [[self alloc] init];
  button.title = title;
  button.target = target;
  button.action = action;
  return button;
}
@end

@implementation NSTextField
+ (instancetype)labelWithString:(NSString*)text {
  NSTextField* label = [[self alloc] init];
  label.stringValue = text;
  return label;
}
+ (instancetype)wrappingLabelWithString:(NSString*)text {
  return [self labelWithString:text];
}
@end

@implementation NSViewController
@end

@implementation NSScreen
+ (NSScreen*)mainScreen {
  return nil;
}
@end

@implementation NSPopover
- (instancetype)init {
  if ((self = [super init])) self.animates = YES;
  return self;
}
- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)edge {
  (void)rect;
  self.kelvaneView = view;
  self.shown = YES;
  self.kelvaneEdge = edge;
  kelvane::doubles::application().popover = self;
}
// Its delegate hears of it when it has faded, or else at once.
- (void)close {
  if (!self.shown) return;
  self.shown = NO;
  NSPopover* closed = self;
  const auto gone = [closed] {
    NSNotification* notification = [[NSNotification alloc] init];
    notification.object = closed;
    if ([closed.delegate respondsToSelector:@selector(popoverDidClose:)])
      [closed.delegate popoverDidClose:notification];
    if (kelvane::doubles::application().popover == closed)
      kelvane::doubles::application().popover = nil;
  };
  self.animates ? kelvane::doubles::afterwards(0.1, gone) : gone();
}
@end
