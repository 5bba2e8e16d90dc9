#include "programs/mac/bundle_information.h"

#include <string>

#import <Foundation/Foundation.h>

#include "platform/macos/foundation/strings.h"

namespace kelvane {
namespace {

std::string bundleText(NSString* key) {
  const id value = [NSBundle.mainBundle objectForInfoDictionaryKey:key];
  return [value isKindOfClass:NSString.class] ? textOf(value) : std::string();
}

}  // namespace

ApplicationInformation bundleInformation() {
  return {.name = bundleText(@"CFBundleName"),
          .identifier = textOf(NSBundle.mainBundle.bundleIdentifier),
          .version = bundleText(@"CFBundleShortVersionString"),
          .build = bundleText(@"CFBundleVersion"),
          .copyright = bundleText(@"NSHumanReadableCopyright")};
}

}  // namespace kelvane
