// Colours, fonts and texts with looks, as AppKit has them. Main thread.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/color.h"
#include "platform/geometry.h"
#include "platform/text.h"

namespace kelvane {

NSColor* nsColor(const Color& color);

inline NSRect nsRect(const Rect& rect) {
  return NSMakeRect(rect.x, rect.y, rect.width, rect.height);
}
inline NSSize nsSize(const Size& size) { return NSMakeSize(size.width, size.height); }
inline Rect rectOf(const NSRect& rect) {
  return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

// The system font; `size` above 0, for AppKit takes any other to mean its default.
NSFont* systemFont(double size, FontWeight weight);

// Font, kern and, where the style names one, colour.
NSMutableDictionary<NSAttributedStringKey, id>* textAttributes(const TextStyle& style);

// A run without a size has no font, and one without a colour has none: who shows it chooses.
NSAttributedString* nsAttributedString(const AttributedText& text);

}  // namespace kelvane
