// Texts of numbers, durations and times in the user's language.
#pragma once

#import <Foundation/NSValues.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSLocaleKey;

@interface NSLocale : NSObject <NSCopying, NSSecureCoding>
@property(class, readonly, copy) NSLocale* currentLocale;
@property(class, readonly, copy) NSArray<NSString*>* preferredLanguages;
@property(readonly, copy) NSString* localeIdentifier;
@property(readonly, copy) NSString* languageCode;
- (instancetype)initWithLocaleIdentifier:(NSString*)identifier;
- (nullable NSString*)localizedStringForLanguageCode:(NSString*)code;
@end

typedef NS_OPTIONS(NSUInteger, NSCalendarUnit) {
  NSCalendarUnitHour = 1UL << 5,
  NSCalendarUnitMinute = 1UL << 6,
};

typedef NS_ENUM(NSInteger, NSFormattingContext) {
  NSFormattingContextUnknown = 0,
  NSFormattingContextBeginningOfSentence = 4,
};

@interface NSFormatter : NSObject <NSCopying, NSCoding>
@end

typedef NS_ENUM(NSInteger, NSDateComponentsFormatterUnitsStyle) {
  NSDateComponentsFormatterUnitsStylePositional = 0,
  NSDateComponentsFormatterUnitsStyleAbbreviated,
  NSDateComponentsFormatterUnitsStyleShort,
  NSDateComponentsFormatterUnitsStyleFull,
};

@interface NSDateComponentsFormatter : NSFormatter
@property NSCalendarUnit allowedUnits;
@property NSDateComponentsFormatterUnitsStyle unitsStyle;
@property NSFormattingContext formattingContext;
- (nullable NSString*)stringFromTimeInterval:(NSTimeInterval)interval;
@end

typedef NS_ENUM(NSUInteger, NSDateFormatterStyle) {
  NSDateFormatterNoStyle = 0,
  NSDateFormatterShortStyle = 1,
};

@interface NSDateFormatter : NSFormatter
@property NSDateFormatterStyle dateStyle;
@property NSDateFormatterStyle timeStyle;
- (NSString*)stringFromDate:(NSDate*)date;
@end

typedef NS_ENUM(NSUInteger, NSNumberFormatterStyle) {
  NSNumberFormatterNoStyle = 0,
  NSNumberFormatterPercentStyle = 3,
};

@interface NSNumberFormatter : NSFormatter
@property NSNumberFormatterStyle numberStyle;
- (nullable NSString*)stringFromNumber:(NSNumber*)number;
@end

typedef NS_ENUM(NSInteger, NSByteCountFormatterCountStyle) {
  NSByteCountFormatterCountStyleFile = 0,
  NSByteCountFormatterCountStyleMemory = 1,
  NSByteCountFormatterCountStyleDecimal = 2,
};

@interface NSUnit : NSObject <NSCopying, NSSecureCoding>
@end

@interface NSDimension : NSUnit
@end

API_AVAILABLE(macos(10.15))
@interface NSUnitInformationStorage : NSDimension
@property(class, readonly, copy) NSUnitInformationStorage* bytes;
@end

@interface NSMeasurement<UnitType> : NSObject <NSCopying, NSSecureCoding>
- (instancetype)initWithDoubleValue:(double)value unit:(UnitType)unit NS_DESIGNATED_INITIALIZER;
@end

@interface NSByteCountFormatter : NSFormatter
+ (NSString*)stringFromMeasurement:(NSMeasurement<NSUnitInformationStorage*>*)measurement
                        countStyle:(NSByteCountFormatterCountStyle)style
    API_AVAILABLE(macos(10.15));
@end

NS_ASSUME_NONNULL_END
