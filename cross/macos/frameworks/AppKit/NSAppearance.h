// Light and dark, and who has which.
#pragma once

#import <AppKit/NSResponder.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSAppearanceName;
FOUNDATION_EXPORT NSAppearanceName const NSAppearanceNameAqua;
FOUNDATION_EXPORT NSAppearanceName const NSAppearanceNameDarkAqua;
FOUNDATION_EXPORT NSAppearanceName const NSAppearanceNameVibrantLight;
FOUNDATION_EXPORT NSAppearanceName const NSAppearanceNameVibrantDark;

@interface NSAppearance : NSObject <NSSecureCoding>
@property(readonly, copy) NSAppearanceName name;
@property(class, strong, nullable) NSAppearance* currentAppearance;
+ (nullable NSAppearance*)appearanceNamed:(NSAppearanceName)name;
- (nullable NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)names;
- (void)performAsCurrentDrawingAppearance:(void(NS_NOESCAPE ^)(void))block
    API_AVAILABLE(macos(11.0));
@end

@protocol NSAppearanceCustomization <NSObject>
@property(nullable, strong) NSAppearance* appearance;
@property(readonly, strong) NSAppearance* effectiveAppearance;
@end

NS_ASSUME_NONNULL_END
