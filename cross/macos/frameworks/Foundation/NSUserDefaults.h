// The preferences of the user.
#pragma once

#import <Foundation/NSValues.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (nullable id)objectForKey:(NSString*)name;
- (void)setObject:(nullable id)value forKey:(NSString*)name;
- (void)removeObjectForKey:(NSString*)name;
- (void)registerDefaults:(NSDictionary<NSString*, id>*)defaults;
- (BOOL)boolForKey:(NSString*)name;
- (BOOL)synchronize;
@end

NS_ASSUME_NONNULL_END
