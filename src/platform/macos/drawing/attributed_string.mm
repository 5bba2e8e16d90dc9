#include "platform/macos/drawing/attributed_string.h"

#include "platform/macos/foundation/strings.h"

namespace kelvane {

NSColor* nsColor(const Color& color) {
  return [NSColor colorWithSRGBRed:color.red green:color.green blue:color.blue alpha:color.alpha];
}

NSFont* systemFont(double size, FontWeight weight) {
  return [NSFont
      systemFontOfSize:size
                weight:weight == FontWeight::medium ? NSFontWeightMedium : NSFontWeightRegular];
}

NSMutableDictionary<NSAttributedStringKey, id>* textAttributes(const TextStyle& style) {
  NSMutableDictionary<NSAttributedStringKey, id>* attributes =
      [NSMutableDictionary dictionaryWithCapacity:4];
  attributes[NSFontAttributeName] = systemFont(style.size, style.weight);
  attributes[NSKernAttributeName] = @(style.kern);
  if (style.color) attributes[NSForegroundColorAttributeName] = nsColor(*style.color);
  return attributes;
}

NSAttributedString* nsAttributedString(const AttributedText& text) {
  NSMutableAttributedString* whole = [[NSMutableAttributedString alloc] initWithString:@""];
  for (const TextRun& run : text.runs) {
    NSMutableDictionary<NSAttributedStringKey, id>* attributes =
        [NSMutableDictionary dictionaryWithCapacity:2];
    if (run.fontSize) attributes[NSFontAttributeName] = systemFont(*run.fontSize, run.weight);
    if (run.color) attributes[NSForegroundColorAttributeName] = nsColor(*run.color);
    [whole appendAttributedString:[[NSAttributedString alloc] initWithString:nsString(run.text)
                                                                  attributes:attributes]];
  }
  return whole;
}

}  // namespace kelvane
