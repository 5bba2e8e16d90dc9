// Numbers, dates, bytes, exceptions, and what Core Foundation says of them.
#include <cmath>
#include <string>

#import <Foundation/Foundation.h>

#include "runtime/abi.h"

@implementation NSValue
@end

@implementation NSNumber {
  enum { kTruth, kWhole, kReal } kind_;
  long long whole_;
  double real_;
}
+ (NSNumber*)numberWithBool:(BOOL)value {
  NSNumber* number = [NSNumber numberWithLongLong:value != 0];
  number->kind_ = kTruth;
  return number;
}
+ (NSNumber*)numberWithLongLong:(long long)value {
  NSNumber* number = [[NSNumber alloc] init];
  number->kind_ = kWhole;
  number->whole_ = value;
  number->real_ = static_cast<double>(value);
  return number;
}
+ (NSNumber*)numberWithInt:(int)value {
  return [NSNumber numberWithLongLong:value];
}
+ (NSNumber*)numberWithInteger:(NSInteger)value {
  return [NSNumber numberWithLongLong:value];
}
+ (NSNumber*)numberWithUnsignedInteger:(NSUInteger)value {
  return [NSNumber numberWithLongLong:static_cast<long long>(value)];
}
+ (NSNumber*)numberWithDouble:(double)value {
  NSNumber* number = [[NSNumber alloc] init];
  number->kind_ = kReal;
  number->real_ = value;
  number->whole_ = std::isfinite(value) ? static_cast<long long>(value) : 0;
  return number;
}
- (BOOL)boolValue {
  return real_ != 0;
}
- (int)intValue {
  return static_cast<int>(whole_);
}
- (NSInteger)integerValue {
  return whole_;
}
- (NSUInteger)unsignedIntegerValue {
  return static_cast<NSUInteger>(whole_);
}
- (long long)longLongValue {
  return whole_;
}
- (double)doubleValue {
  return real_;
}
- (BOOL)isEqual:(id)object {
  return [object isKindOfClass:NSNumber.class] && real_ == ((NSNumber*)object)->real_ &&
         whole_ == ((NSNumber*)object)->whole_;
}
- (id)copyWithZone:(NSZone*)zone {
  (void)zone;
  return self;
}
- (int)kelvaneKind {
  return kind_;
}
@end

@implementation NSDate {
  double seconds_;
}
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)seconds {
  NSDate* date = [[self alloc] init];
  date->seconds_ = seconds;
  return date;
}
- (NSTimeInterval)timeIntervalSince1970 {
  return seconds_;
}
@end

@implementation NSData {
  std::string bytes_;
}
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length {
  NSData* data = [[self alloc] init];
  data->bytes_.assign(static_cast<const char*>(bytes), length);
  return data;
}
- (NSUInteger)length {
  return bytes_.size();
}
- (const void*)bytes {
  return bytes_.empty() ? nullptr : bytes_.data();
}
@end

@interface NSException ()
@property(readwrite, copy) NSString* name;
@property(nullable, readwrite, copy) NSString* reason;
@end

@implementation NSException
@end

extern "C" {
const CFAllocatorRef kCFAllocatorDefault = nullptr;
CFTypeRef CFRetain(CFTypeRef object) { return objc_retain(const_cast<void*>(object)); }
void CFRelease(CFTypeRef object) { objc_release(const_cast<void*>(object)); }
CFTypeID CFBooleanGetTypeID() { return 21; }
CFTypeID CFGetTypeID(CFTypeRef object) {
  id number = (__bridge id)object;
  return [number isKindOfClass:NSNumber.class] && [number kelvaneKind] == 0 ? 21 : 1;
}
Boolean CFNumberIsFloatType(CFNumberRef number) { return [(__bridge id)number kelvaneKind] == 2; }
}
