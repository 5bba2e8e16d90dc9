// Numbers, dates, bytes, addresses, errors.
#pragma once

#import <Foundation/NSCollections.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSValue : NSObject <NSCopying, NSSecureCoding>
@property(readonly) const char* objCType NS_RETURNS_INNER_POINTER;
@end

@interface NSNumber : NSValue
@property(readonly) BOOL boolValue;
@property(readonly) int intValue;
@property(readonly) double doubleValue;
@property(readonly) long long longLongValue;
@property(readonly) NSInteger integerValue;
@property(readonly) NSUInteger unsignedIntegerValue;
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithLongLong:(long long)value;
+ (NSNumber*)numberWithDouble:(double)value;
+ (NSNumber*)numberWithInteger:(NSInteger)value;
+ (NSNumber*)numberWithUnsignedInteger:(NSUInteger)value;
@end

@interface NSDate : NSObject <NSCopying, NSSecureCoding>
@property(readonly) NSTimeInterval timeIntervalSince1970;
+ (instancetype)date;
+ (instancetype)dateWithTimeIntervalSinceNow:(NSTimeInterval)seconds;
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)seconds;
@end

@interface NSData : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes NS_RETURNS_INNER_POINTER;
+ (instancetype)dataWithBytes:(nullable const void*)bytes length:(NSUInteger)length;
@end

@interface NSURL : NSObject <NSCopying, NSSecureCoding>
@property(nullable, readonly, copy) NSString* absoluteString;
@property(nullable, readonly, copy) NSString* path;
@property(nullable, readonly, copy) NSURL* URLByDeletingLastPathComponent;
+ (nullable instancetype)URLWithString:(NSString*)string;
+ (NSURL*)fileURLWithPath:(NSString*)path;
@end

@interface NSError : NSObject <NSCopying, NSSecureCoding>
@property(readonly) NSInteger code;
@property(readonly, copy) NSString* domain;
@property(readonly, copy) NSString* localizedDescription;
@end

@interface NSException : NSObject <NSCopying, NSSecureCoding>
@property(readonly, copy) NSString* name;
@property(nullable, readonly, copy) NSString* reason;
@end

NS_ASSUME_NONNULL_END
