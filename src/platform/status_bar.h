// The system's status bar (menu bar, tray) and one item in it. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/color.h"
#include "platform/image.h"
#include "platform/menu.h"
#include "platform/text.h"

namespace kelvane {

// The place that the bar gives an item. `wide` slots keep a picture's own width; `square` ones
// squeeze it into height by height.
struct Slot {
  enum class Shape { wide, square };
  Shape shape = Shape::wide;
  double height = 22;            // points
  double scale = 1;              // pixels per point
  bool showsTextBeside = false;  // the host shows the item's title beside its image
  bool operator==(const Slot&) const = default;
};

// An item of this length is as wide as the bar is high.
inline constexpr double kSquareStatusItemLength = -2;

// What the item does when the user drags it out of the bar; a set of bits.
enum class StatusItemBehavior : unsigned {
  none = 0,
  removalAllowed = 1U << 1,
  terminationOnRemoval = 1U << 2,
};
constexpr StatusItemBehavior operator|(StatusItemBehavior a, StatusItemBehavior b) {
  return static_cast<StatusItemBehavior>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}

// A view laid over the item's button that shows a popover with one line of text, its arrow on the
// top edge, while the pointer rests on the button. Clicks go through it.
struct HoverView {
  // The pointer entered, or left or the popover closed; not called where a host keeps the pointer
  // to itself.
  std::function<void(bool)> setHovered;
  // The text to show, read each time it is shown or refreshed.
  std::function<std::string()> text;
  double horizontalPadding = 0;  // points around the text, where the platform draws it
  double verticalPadding = 0;
};

// Something observed on the item; destroying it ends the observation.
class StatusItemObservation {
 public:
  virtual ~StatusItemObservation() = default;
};

class StatusItem {
 public:
  virtual ~StatusItem() = default;

  // Whether the item is in the bar now. A platform may take an item away later than it was asked
  // to.
  virtual bool isVisible() const = 0;
  virtual void setVisible(bool visible) = 0;

  virtual void setBehavior(StatusItemBehavior behavior) = 0;
  // Points, or `kSquareStatusItemLength`.
  virtual void setLength(double length) = 0;

  // The title of the item's button. Plain and attributed replace each other.
  virtual void setTitle(const std::string& title) = 0;
  virtual void setAttributedTitle(const AttributedText& title) = 0;
  // The image of the item's button; absent removes it.
  virtual void setImage(std::optional<Image> image) = 0;

  // The menu that a click opens. Not owned: it outlives the item, or null is set first.
  virtual void setMenu(Menu* menu) = 0;

  // Adds a hover view that covers the whole button. There is no removal; a second one comes on top.
  virtual void addHoverView(HoverView view) = 0;

  // Moves what the button shows up and down for a moment: through these offsets (points, upwards),
  // the first at once, the last when `seconds` have passed. Another shake takes over.
  virtual void shake(const std::vector<double>& offsets, double seconds) = 0;

  // The user's clicks on the button, besides the menu that they open; where a host opens the menu
  // by itself, its opening is what is heard.
  [[nodiscard]] virtual std::unique_ptr<StatusItemObservation> observeClicks(
      std::function<void()> callback) = 0;

  // The user's own choice of the slot's shape and of the bar's appearance, in force at once; absent
  // leaves them to the platform. The slot keeps the bar's height, whether or not the bar then shows
  // the picture as it is.
  virtual void setShape(std::optional<Slot::Shape> shape) = 0;
  virtual void setAppearance(std::optional<Appearance> appearance) = 0;

  // The appearance of the bar under the button, and its changes; the callback is also called once
  // at registration.
  virtual Appearance effectiveAppearance() const = 0;
  [[nodiscard]] virtual std::unique_ptr<StatusItemObservation> observeEffectiveAppearance(
      std::function<void()> callback) = 0;

  // The slot of the item, and its changes (another bar, another scale, or another font, in which
  // texts measure differently); not called at registration.
  virtual Slot slot() const = 0;
  [[nodiscard]] virtual std::unique_ptr<StatusItemObservation> observeSlot(
      std::function<void()> callback) = 0;
};

class StatusBar {
 public:
  virtual ~StatusBar() = default;
  // A new item, owned by the caller and in the bar until it is destroyed.
  virtual std::unique_ptr<StatusItem> makeItem(double length) = 0;
};

}  // namespace kelvane
