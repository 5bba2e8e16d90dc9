// Strings, plain and attributed; archives.
#pragma once

#import <Foundation/NSBase.h>

NS_ASSUME_NONNULL_BEGIN

@class NSArray<__covariant ObjectType>, NSDictionary<__covariant KeyType, __covariant ObjectType>;

@interface NSCoder : NSObject
- (void)encodeObject:(nullable id)object forKey:(NSString*)key;
- (void)encodeInteger:(NSInteger)value forKey:(NSString*)key;
- (nullable id)decodeObjectOfClass:(Class)aClass forKey:(NSString*)key;
- (NSInteger)decodeIntegerForKey:(NSString*)key;
@end

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };

@interface NSString : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property(readonly) NSUInteger length;
@property(readonly, nullable) const char* UTF8String NS_RETURNS_INNER_POINTER;
+ (instancetype)string;
+ (nullable instancetype)stringWithUTF8String:(const char*)bytes;
+ (instancetype)stringWithFormat:(NSString*)format, ... __attribute__((format(__NSString__, 1, 2)));
- (nullable instancetype)initWithBytes:(const void*)bytes
                                length:(NSUInteger)length
                              encoding:(NSStringEncoding)encoding;
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding;
- (unichar)characterAtIndex:(NSUInteger)index;
- (BOOL)isEqualToString:(NSString*)string;
- (BOOL)hasPrefix:(NSString*)prefix;
- (BOOL)hasSuffix:(NSString*)suffix;
- (NSString*)stringByAppendingString:(NSString*)string;
- (NSString*)substringToIndex:(NSUInteger)index;
@end

@interface NSMutableString : NSString
- (void)appendString:(NSString*)string;
@end

typedef NSString* NSAttributedStringKey;

@interface NSAttributedString : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property(readonly, copy) NSString* string;
@property(readonly) NSUInteger length;
- (instancetype)initWithString:(NSString*)string;
- (instancetype)initWithString:(NSString*)string
                    attributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attributes;
@end

@interface NSMutableAttributedString : NSAttributedString
- (void)appendAttributedString:(NSAttributedString*)string;
- (void)addAttribute:(NSAttributedStringKey)name value:(id)value range:(NSRange)range;
@end

NS_ASSUME_NONNULL_END
