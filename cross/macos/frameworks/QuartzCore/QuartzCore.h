// Layers and the animation that moves one along given offsets.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class CAMediaTimingFunction;
typedef NSString* CAMediaTimingFunctionName;
CF_EXPORT CAMediaTimingFunctionName const kCAMediaTimingFunctionLinear;
CF_EXPORT CAMediaTimingFunctionName const kCAMediaTimingFunctionEaseInEaseOut;

@interface CAMediaTimingFunction : NSObject
+ (instancetype)functionWithName:(CAMediaTimingFunctionName)name;
@end

@protocol CAMediaTiming
@property CFTimeInterval duration;
@end

@interface CAAnimation : NSObject <NSSecureCoding, NSCopying, CAMediaTiming>
@property(nullable, strong) CAMediaTimingFunction* timingFunction;
@end

@interface CAPropertyAnimation : CAAnimation
+ (instancetype)animationWithKeyPath:(nullable NSString*)path;
@property(getter=isAdditive) BOOL additive;
@end

@interface CAKeyframeAnimation : CAPropertyAnimation
@property(nullable, copy) NSArray* values;
@property(nullable, copy) NSArray<NSNumber*>* keyTimes;
@end

@interface CALayer : NSObject <NSSecureCoding, CAMediaTiming>
@property float opacity;
@property CGFloat cornerRadius;
@property CGRect bounds;
- (void)addAnimation:(CAAnimation*)animation forKey:(nullable NSString*)key;
- (void)removeAnimationForKey:(NSString*)key;
@end

NS_ASSUME_NONNULL_END
