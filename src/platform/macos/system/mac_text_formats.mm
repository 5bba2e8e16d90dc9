#include "platform/macos/system/mac_text_formats.h"

#include <chrono>
#include <cmath>

#import <Foundation/Foundation.h>

#include "platform/macos/foundation/strings.h"

namespace kelvane {

// Made once, because it is costly; the others follow the user's settings by being made each time.
struct MacTextFormats::Formatters {
  NSDateComponentsFormatter* duration = [[NSDateComponentsFormatter alloc] init];
};

MacTextFormats::MacTextFormats() : formatters_(std::make_unique<Formatters>()) {
  NSDateComponentsFormatter* duration = formatters_->duration;
  duration.allowedUnits = NSCalendarUnitHour | NSCalendarUnitMinute;
  duration.unitsStyle = NSDateComponentsFormatterUnitsStyleAbbreviated;
  duration.formattingContext = NSFormattingContextBeginningOfSentence;
}

MacTextFormats::~MacTextFormats() = default;

std::optional<std::string> MacTextFormats::abbreviatedDuration(double seconds) {
  if (!std::isfinite(seconds) || seconds < 0) return std::nullopt;
  @autoreleasepool {
    NSString* text = [formatters_->duration stringFromTimeInterval:seconds];
    return text ? std::optional(textOf(text)) : std::nullopt;
  }
}

std::string MacTextFormats::shortTime(Date date) {
  @autoreleasepool {
    NSDateFormatter* formatter = [[NSDateFormatter alloc] init];
    formatter.dateStyle = NSDateFormatterNoStyle;
    formatter.timeStyle = NSDateFormatterShortStyle;
    const std::chrono::duration<double> seconds = date.time_since_epoch();
    return textOf(
        [formatter stringFromDate:[NSDate dateWithTimeIntervalSince1970:seconds.count()]]);
  }
}

std::optional<std::string> MacTextFormats::percent(double ratio) {
  if (!std::isfinite(ratio)) return std::nullopt;
  @autoreleasepool {
    NSNumberFormatter* formatter = [[NSNumberFormatter alloc] init];
    formatter.numberStyle = NSNumberFormatterPercentStyle;
    NSString* text = [formatter stringFromNumber:[NSNumber numberWithDouble:ratio]];
    return text ? std::optional(textOf(text)) : std::nullopt;
  }
}

std::string MacTextFormats::informationStorage(double bytes) {
  @autoreleasepool {
    NSMeasurement<NSUnitInformationStorage*>* amount =
        [[NSMeasurement alloc] initWithDoubleValue:bytes unit:NSUnitInformationStorage.bytes];
    return textOf([NSByteCountFormatter
        stringFromMeasurement:amount
                   countStyle:NSByteCountFormatterCountStyleDecimal]);
  }
}

}  // namespace kelvane
