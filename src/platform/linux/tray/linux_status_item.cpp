#include "platform/linux/tray/linux_status_item.h"

#include <cmath>
#include <utility>

#include "platform/linux/tray/item_picture.h"
#include "platform/linux/tray/linux_status_bar.h"
#include "platform/portable/shake_times.h"

namespace kelvane {
namespace {

std::string withoutMarkup(const std::string& text) {
  const GCharPtr escaped(g_markup_escape_text(text.data(), static_cast<gssize>(text.size())));
  return escaped.get();
}

std::string validUtf8(const std::string& text) {
  const GCharPtr valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
  return valid.get();
}

}  // namespace

LinuxStatusItem::LinuxStatusItem(RunLoopQueue& loop, FontFaces& fonts, const TrayOptions& options,
                                 const std::string& busAddress,
                                 const TraySurroundings& surroundings, double length,
                                 std::function<void()> destroyed)
    : loop_(loop),
      fonts_(fonts),
      options_(options),
      surroundings_(surroundings),
      destroyed_(std::move(destroyed)),
      menu_(loop, options.replaceUncoveredCharacters),
      item_(loop, busAddress, menu_,
            {[this](Point where) { activate(where); },
             [this](const std::string& token) {
               if (options_.activationToken) options_.activationToken(token);
             },
             [this] {
               mustRegister_ = true;
               flushLater();
             }}) {
  content_.length = length;
  menu_.setShownObserver([this] { clickObservers_.notify(); });
  // The bus takes the handshake up while the application starts up.
  item_.connect();
  mustRegister_ = surroundings_.hasHost;
  flushLater();
}

LinuxStatusItem::~LinuxStatusItem() {
  removeMenu();
  destroyed_();
}

void LinuxStatusItem::hostChanged(const TraySurroundings& surroundings) {
  mustRegister_ = surroundings.hasHost;
  surroundingsChanged(surroundings);
  flushLater();
}

void LinuxStatusItem::surroundingsChanged(const TraySurroundings& surroundings) {
  changePlace([&] { surroundings_ = surroundings; });
}

void LinuxStatusItem::changePlace(const std::function<void()>& change) {
  const Slot slotBefore = slot();
  const auto barBefore = barAppearance();
  const Appearance appearanceBefore = effectiveAppearance();
  const bool wasScaleKnown = surroundings_.isScaleKnown;
  change();
  const bool isSlotNew = slot() != slotBefore;
  if (isSlotNew || barAppearance() != barBefore || surroundings_.isScaleKnown != wasScaleKnown)
    contentChanged();
  const std::weak_ptr alive(isAlive_);
  if (effectiveAppearance() != appearanceBefore) appearanceObservers_.notify();
  if (!alive.expired() && isSlotNew) slotObservers_.notify();
}

void LinuxStatusItem::fontChanged() {
  contentChanged();
  // The application measured its texts with the font before.
  slotObservers_.notify();
}

void LinuxStatusItem::menuChanged() {
  isMenuStale_ = true;
  flushLater();
}

void LinuxStatusItem::setVisible(bool visible) {
  if (visible == isVisible_) return;
  isVisible_ = visible;
  flushLater();
}

void LinuxStatusItem::setLength(double length) {
  content_.length = length;
  contentChanged();
}

void LinuxStatusItem::setTitle(const std::string& title) {
  AttributedText plain;
  if (!title.empty()) plain.runs.push_back({title, {}, {}, {}});
  setAttributedTitle(plain);
}

void LinuxStatusItem::setAttributedTitle(const AttributedText& title) {
  content_.title = title;
  contentChanged();
}

void LinuxStatusItem::setImage(std::optional<Image> image) {
  content_.image = std::move(image);
  contentChanged();
}

void LinuxStatusItem::setMenu(Menu* menu) {
  if (menu != attachedMenu_) removeMenu();
  attachedMenu_ = menu;
  menu_.setMenu(menu);
}

void LinuxStatusItem::removeMenu() {
  if (std::exchange(attachedMenu_, nullptr) && options_.menuRemoved) options_.menuRemoved();
}

void LinuxStatusItem::addHoverView(HoverView view) {
  hoverViews_.push_back(std::move(view));
  contentChanged();
}

void LinuxStatusItem::shake(const std::vector<double>& offsets, double seconds) {
  shakeOffsets_ = offsets;
  shaking_.reset();
  contentChanged();
  const auto times = shakeTimes(offsets.size());
  if (times.empty()) return shakeOffsets_.clear();
  shaking_ = loop_.startTimer(seconds * times[1], true, [this] {
    shakeOffsets_.erase(shakeOffsets_.begin());
    contentChanged();
    if (shakeOffsets_.size() > 1) return;
    // At rest where the last offset leaves it.
    shaking_.reset();
  });
}

std::unique_ptr<StatusItemObservation> LinuxStatusItem::observeClicks(
    std::function<void()> callback) {
  return clickObservers_.add(std::move(callback));
}

void LinuxStatusItem::setShape(std::optional<Slot::Shape> shape) {
  changePlace([&] { wantedShape_ = shape; });
}

void LinuxStatusItem::setAppearance(std::optional<Appearance> appearance) {
  changePlace([&] { wantedAppearance_ = appearance; });
}

Slot LinuxStatusItem::slot() const { return roomFor(wholeSlot(), !barAppearance()); }

Slot LinuxStatusItem::wholeSlot() const {
  Slot slot = surroundings_.slot;
  slot.shape = wantedShape_.value_or(slot.shape);
  return slot;
}

std::optional<Appearance> LinuxStatusItem::barAppearance() const {
  return wantedAppearance_ ? wantedAppearance_ : surroundings_.barAppearance;
}

Appearance LinuxStatusItem::effectiveAppearance() const {
  // What is not known is drawn light on a dark backing, which reads on both.
  return barAppearance().value_or(Appearance::dark);
}

std::unique_ptr<StatusItemObservation> LinuxStatusItem::observeEffectiveAppearance(
    std::function<void()> callback) {
  auto observation = appearanceObservers_.add(callback);
  callback();
  return observation;
}

std::unique_ptr<StatusItemObservation> LinuxStatusItem::observeSlot(
    std::function<void()> callback) {
  return slotObservers_.add(std::move(callback));
}

void LinuxStatusItem::contentChanged() {
  isContentStale_ = true;
  flushLater();
}

void LinuxStatusItem::flushLater() {
  if (std::exchange(isFlushWaiting_, true)) return;
  loop_.async([this, alive = std::weak_ptr(isAlive_)] {
    if (!alive.expired()) flush();
  });
}

void LinuxStatusItem::flush() {
  isFlushWaiting_ = false;
  if (!isVisible_) return item_.disconnect();
  item_.connect();
  if (!surroundings_.hasHost) return;
  // The first picture and the first menu each have one.
  const FontFaces::Questions together(fonts_);
  const bool mustRegister = item_.isConnected() && std::exchange(mustRegister_, false);
  const auto render = [this] {
    if (std::exchange(isContentStale_, false)) renderContent();
  };
  if (mustRegister) return item_.registerFor(surroundings_.profile, render);
  if (!isContentStale_ && !isMenuStale_) return;
  render();
  // Two hosts show the menu as they know it, so it is right before they are asked for it.
  isMenuStale_ = false;
  menu_.update();
}

void LinuxStatusItem::renderContent() {
  const Slot slot = wholeSlot();
  StatusNotifierItem::Content content;
  content.icon.push_back(rendered(slot));
  if (!surroundings_.isScaleKnown && surroundings_.profile.picksBestSize) {
    Slot small = slot;
    small.scale = 1;
    content.icon.insert(content.icon.begin(), rendered(small));
  }
  if (slot.showsTextBeside) content.label = forOthers(content_.title.plainText());
  if (!hoverViews_.empty()) {
    // The latest view covers the others.
    std::string text = forOthers(hoverViews_.back().text());
    content.toolTip = surroundings_.profile.readsMarkupInToolTip ? withoutMarkup(text) : text;
  }
  item_.setContent(content);
}

Bitmap LinuxStatusItem::rendered(const Slot& slot) const {
  Bitmap picture = renderItem(fonts_, slot, barAppearance(), content_);
  if (!shakeOffsets_.empty())
    moveUp(picture, static_cast<int>(std::lround(shakeOffsets_.front() * slot.scale)));
  return picture;
}

std::string LinuxStatusItem::forOthers(std::string text) const {
  if (options_.replaceUncoveredCharacters)
    text = options_.replaceUncoveredCharacters(std::move(text));
  return validUtf8(text);
}

void LinuxStatusItem::activate(Point where) {
  // Clicks of one turn are one click.
  if (std::exchange(isActivationWaiting_, true)) return;
  loop_.async([this, where, alive = std::weak_ptr(isAlive_)] {
    if (alive.expired()) return;
    isActivationWaiting_ = false;
    clickObservers_.notify();
    if (alive.expired() || !options_.activated) return;
    options_.activated(attachedMenu_, surroundings_.profile.givesRootCoordinates
                                          ? std::optional(where)
                                          : std::nullopt);
  });
}

}  // namespace kelvane
