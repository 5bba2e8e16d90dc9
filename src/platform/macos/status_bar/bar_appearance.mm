#include "platform/macos/status_bar/bar_appearance.h"

namespace kelvane {

NSAppearance* nsAppearance(Appearance appearance) {
  return [NSAppearance appearanceNamed:appearance == Appearance::dark ? NSAppearanceNameDarkAqua
                                                                      : NSAppearanceNameAqua];
}

Appearance appearanceOf(NSAppearance* appearance) {
  NSAppearanceName name = [appearance bestMatchFromAppearancesWithNames:@[
    NSAppearanceNameAqua, NSAppearanceNameDarkAqua, NSAppearanceNameVibrantLight,
    NSAppearanceNameVibrantDark
  ]];
  const bool isDark = [name isEqualToString:NSAppearanceNameDarkAqua] ||
                      [name isEqualToString:NSAppearanceNameVibrantDark];
  return isDark ? Appearance::dark : Appearance::light;
}

}  // namespace kelvane
