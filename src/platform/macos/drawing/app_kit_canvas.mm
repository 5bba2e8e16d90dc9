#include "platform/macos/drawing/app_kit_canvas.h"

#include <cmath>

#include "platform/macos/drawing/attributed_string.h"
#include "platform/macos/drawing/ns_image.h"
#include "platform/macos/foundation/strings.h"

namespace kelvane {

double AppKitCanvas::scale() const {
  CGContextRef context = NSGraphicsContext.currentContext.CGContext;
  if (!context) return 1;
  // A context that is turned upside down has a negative height.
  const double scale = std::abs(CGContextConvertSizeToDeviceSpace(context, {1, 1}).height);
  return scale > 0 ? scale : 1;
}

void AppKitCanvas::setImageInterpolation(ImageInterpolation interpolation) {
  NSGraphicsContext.currentContext.imageInterpolation = interpolation == ImageInterpolation::high
                                                            ? NSImageInterpolationHigh
                                                            : NSImageInterpolationDefault;
}

void AppKitCanvas::drawPicture(const Picture& picture, const Rect& rect, double opacity) {
  // As one image, so that overlapping layers fade together. Of its whole, which is what an empty
  // source rectangle means.
  [nsImage(picture) drawInRect:nsRect(rect)
                      fromRect:NSMakeRect(0, 0, 0, 0)
                     operation:NSCompositingOperationSourceOver
                      fraction:opacity];
}

void AppKitCanvas::drawText(std::string_view text, const Rect& rect, const TextStyle& style) {
  // AppKit takes neither for what it is: its own size, and room without a limit.
  if (!(style.size > 0) || !(rect.width > 0)) return;
  NSMutableParagraphStyle* paragraph = [[NSMutableParagraphStyle alloc] init];
  paragraph.alignment = NSTextAlignmentCenter;
  paragraph.lineBreakMode = NSLineBreakByClipping;
  NSMutableDictionary<NSAttributedStringKey, id>* attributes = textAttributes(style);
  attributes[NSParagraphStyleAttributeName] = paragraph;
  // Without the line fragment's origin the rectangle's is the start of the baseline.
  [nsString(text) drawWithRect:nsRect(rect)
                       options:NSStringDrawingUsesFontLeading
                    attributes:attributes
                       context:nil];
}

void AppKitCanvas::fill(const Rect& rect, const Color& color, CompositeOperation operation) {
  [nsColor(color) set];
  NSRectFillUsingOperation(nsRect(rect), operation == CompositeOperation::sourceAtop
                                             ? NSCompositingOperationSourceAtop
                                             : NSCompositingOperationSourceOver);
}

}  // namespace kelvane
