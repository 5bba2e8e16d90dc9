#include "platform/macos/status_bar/mac_status_item.h"

#include <memory>
#include <string>
#include <vector>

#include <doubles/doubles.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/status_bar/mac_status_bar.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MacStatusItemTest : public ::testing::Test {
 protected:
  void SetUp() override { (void)NSApplication.sharedApplication; }

  NSStatusItem* native() { return doubles::statusBar().items.at(0); }
  NSStatusBarButton* button() { return native().button; }
  void setAppearance(NSAppearanceName name) {
    doubles::changeValue(button(), @"effectiveAppearance", nil, nil,
                         [&] { button().appearance = [NSAppearance appearanceNamed:name]; });
  }

  MacStatusBar bar;
  std::unique_ptr<StatusItem> item = bar.makeItem(kSquareStatusItemLength);
};

TEST_F(MacStatusItemTest, GoesIntoTheBarAndOutOfItWithItsPlaceKept) {
  NSString* key = @"NSStatusItem Preferred Position Item-0";
  EXPECT_EQ(native().length, NSSquareStatusItemLength);
  EXPECT_EQ(bar.item(), item.get());
  [NSUserDefaults.standardUserDefaults setObject:@412.5 forKey:key];
  item.reset();
  EXPECT_THAT(doubles::statusBar().items, IsEmpty());
  EXPECT_EQ([doubles::storedPreference(key) doubleValue], 412.5);
  EXPECT_EQ(bar.item(), nullptr);
  item = bar.makeItem(30);
  EXPECT_EQ(native().length, 30);
  auto next = bar.makeItem(30);
  EXPECT_EQ(bar.item(), next.get());
  item.reset();
  EXPECT_EQ(bar.item(), next.get()) << "an older one leaves the latest alone";
}

TEST_F(MacStatusItemTest, PassesOnWhatTheItemShallBe) {
  item->setBehavior(StatusItemBehavior::removalAllowed | StatusItemBehavior::terminationOnRemoval);
  EXPECT_EQ(native().behavior, 6U);
  item->setLength(48);
  EXPECT_EQ(native().length, 48);
  EXPECT_TRUE(item->isVisible());
  item->setVisible(false);
  EXPECT_FALSE(native().visible);
  native().visible = YES;
  EXPECT_TRUE(item->isVisible()) << "the system's own doing";
  item->setTitle("57\xEF\xB9\xAA");
  EXPECT_STREQ(button().title.UTF8String, "57\xEF\xB9\xAA");
  item->setAttributedTitle({{{.text = "a", .fontSize = 11, .weight = FontWeight::medium},
                             {.text = "b", .color = Color{1, 0, 0, 1}}}});
  NSArray<NSDictionary*>* runs = button().attributedTitle.kelvaneRuns;
  EXPECT_STREQ(button().attributedTitle.string.UTF8String, "ab");
  EXPECT_EQ([runs[0][@"looks"][NSFontAttributeName] kelvaneSize], 11);
  EXPECT_EQ([runs[0][@"looks"] count], 1U);
  EXPECT_TRUE(([[runs[1][@"looks"][NSForegroundColorAttributeName] kelvaneParts]
      isEqual:@[ @1.0, @0.0, @0.0, @1.0 ]]));
  item->shake({0, 4, -4, 0}, 0.5);
  item->shake({}, 0.5);
  auto* shaking = (CAKeyframeAnimation*)button().layer.kelvaneAnimations[@"shake"];
  EXPECT_TRUE(([shaking.values isEqual:@[ @0, @4, @-4, @0 ]]));
  EXPECT_EQ(shaking.duration, 0.5);
}

TEST_F(MacStatusItemTest, DrawsAnImageWhenItIsShownAndNoLongerThanItIsSet) {
  auto drawn = std::make_shared<std::vector<double>>();
  for (const bool isTemplate : {true, false}) {
    item->setImage(Image{
        .size = {30, 22}, .isTemplate = isTemplate, .draw = [drawn](Canvas&, const Rect& rect) {
          drawn->push_back(rect.width);
        }});
    EXPECT_EQ([button().image isTemplate], isTemplate);
  }
  EXPECT_EQ(button().image.size.width, 30);
  EXPECT_THAT(*drawn, IsEmpty());
  EXPECT_TRUE(button().image.kelvaneDrawing(NSMakeRect(0, 0, 60, 44)));
  EXPECT_THAT(*drawn, ElementsAre(60));
  item->setImage(std::nullopt);
  EXPECT_EQ(button().image, nil);
  item->setImage(Image{.size = {1, 1}});
  EXPECT_TRUE(button().image.kelvaneDrawing(NSMakeRect(0, 0, 1, 1))) << "without a drawing";
  NSStatusBarButton* kept = button();
  item.reset();
  EXPECT_EQ(kept.image, nil);
}

TEST_F(MacStatusItemTest, FollowsTheAppearanceOfTheButton) {
  int told = 0;
  auto observation = item->observeEffectiveAppearance([&] { ++told; });
  EXPECT_EQ(told, 1) << "at registration";
  const std::pair<NSAppearanceName, Appearance> names[] = {
      {NSAppearanceNameDarkAqua, Appearance::dark},
      {NSAppearanceNameAqua, Appearance::light},
      {NSAppearanceNameVibrantDark, Appearance::dark},
      {NSAppearanceNameVibrantLight, Appearance::light},
      {@"unheard of", Appearance::light}};
  for (const auto& [name, expected] : names) {
    setAppearance(name);
    EXPECT_EQ(item->effectiveAppearance(), expected) << name.UTF8String;
  }
  EXPECT_EQ(told, 6);
  item->setAppearance(Appearance::dark);
  EXPECT_STREQ(button().appearance.name.UTF8String, NSAppearanceNameDarkAqua.UTF8String);
  item->setAppearance(std::nullopt);
  EXPECT_EQ(button().appearance, nil);
  observation.reset();
  setAppearance(NSAppearanceNameAqua);
  EXPECT_EQ(told, 6);
}

TEST_F(MacStatusItemTest, AnObserverMayTakeTheItemAway) {
  int told = 0;
  auto observation = item->observeEffectiveAppearance([&] {
    if (++told == 2) item.reset();
  });
  setAppearance(NSAppearanceNameAqua);
  EXPECT_EQ(item, nullptr);
  EXPECT_EQ(doubles::observations(), 0);
}

TEST_F(MacStatusItemTest, TellsOfAnotherSlotOnlyWhenItIsAnother) {
  int told = 0;
  const auto observation = item->observeSlot([&] { ++told; });
  EXPECT_EQ(item->slot(), (Slot{.shape = Slot::Shape::wide, .height = 22, .scale = 1}));
  doubles::post(NSApplicationDidChangeScreenParametersNotification);
  EXPECT_EQ(told, 0);
  doubles::statusBar().thickness = 24;
  doubles::post(NSApplicationDidChangeScreenParametersNotification);
  EXPECT_EQ(told, 1);
  NSWindow* window = [[NSWindow alloc] init];
  window.backingScaleFactor = 2;
  [button() kelvanePutIntoWindow:window];
  doubles::post(NSWindowDidChangeBackingPropertiesNotification);
  EXPECT_EQ(told, 2);
  item->setShape(Slot::Shape::square);
  item->setShape(Slot::Shape::square);
  EXPECT_EQ(told, 3);
  EXPECT_EQ(item->slot(), (Slot{.shape = Slot::Shape::square, .height = 24, .scale = 2}));
  item->setShape(std::nullopt);
  EXPECT_EQ(item->slot().shape, Slot::Shape::wide);
}

TEST_F(MacStatusItemTest, TellsOfClicksUntilTheObservationEnds) {
  int clicks = 0;
  std::unique_ptr<StatusItemObservation> once;
  const auto always = item->observeClicks([&] { ++clicks; });
  once = item->observeClicks([&, own = std::make_shared<int>(1)] {
    once.reset();
    clicks += *own;
  });
  doubles::click(button());
  doubles::click(button());
  EXPECT_EQ(clicks, 3);
  EXPECT_EQ(button().kelvaneRecognizers.count, 1U);
}

}  // namespace
}  // namespace kelvane
