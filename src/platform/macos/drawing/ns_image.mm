#include "platform/macos/drawing/ns_image.h"

#include "platform/macos/drawing/app_kit_canvas.h"
#include "platform/macos/drawing/attributed_string.h"

namespace kelvane {
namespace {

NSPoint nsPoint(const Point& point) { return NSMakePoint(point.x, point.y); }

NSBezierPath* bezierPath(const std::vector<PathStep>& steps) {
  NSBezierPath* path = [NSBezierPath bezierPath];
  path.windingRule = NSWindingRuleEvenOdd;
  for (const PathStep& step : steps) {
    switch (step.kind) {
      case PathStep::Kind::move:
        [path moveToPoint:nsPoint(step.points[0])];
        break;
      case PathStep::Kind::line:
        [path lineToPoint:nsPoint(step.points[0])];
        break;
      case PathStep::Kind::curve:
        [path curveToPoint:nsPoint(step.points[2])
             controlPoint1:nsPoint(step.points[0])
             controlPoint2:nsPoint(step.points[1])];
        break;
      case PathStep::Kind::close:
        [path closePath];
        break;
    }
  }
  return path;
}

void drawLayers(const std::vector<PictureLayer>& layers) {
  for (const PictureLayer& layer : layers) {
    Color color = layer.color.value_or(Color{});
    color.alpha *= layer.opacity;
    [nsColor(color) set];
    [bezierPath(layer.path) fill];
  }
}

}  // namespace

NSImage* nsImage(const Image& image) {
  const auto draw = image.draw;
  NSImage* native = [NSImage imageWithSize:nsSize(image.size)
                                   flipped:NO
                            drawingHandler:^BOOL(NSRect rect) {
                              if (!draw) return YES;
                              // AppKit may have the handler draw right into the bar, so what it
                              // composes is kept apart from what is there.
                              CGContextRef context = NSGraphicsContext.currentContext.CGContext;
                              CGContextBeginTransparencyLayer(context, nullptr);
                              AppKitCanvas canvas;
                              draw(canvas, rectOf(rect));
                              CGContextEndTransparencyLayer(context);
                              return YES;
                            }];
  [native setTemplate:image.isTemplate];
  return native;
}

NSImage* nsImage(const Picture& picture) {
  const auto layers = picture.layers;
  NSImage* native = [NSImage imageWithSize:nsSize(picture.size)
                                   flipped:NO
                            drawingHandler:^BOOL(NSRect) {
                              drawLayers(layers);
                              return YES;
                            }];
  [native setTemplate:picture.isTemplate];
  return native;
}

}  // namespace kelvane
