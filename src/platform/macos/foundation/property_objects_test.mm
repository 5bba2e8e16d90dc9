#include "platform/macos/foundation/property_objects.h"

#include <chrono>
#include <cmath>

#include <doubles/doubles.h>
#include <gtest/gtest.h>

#include "platform/macos/foundation/strings.h"

namespace kelvane {
namespace {

TEST(PropertyObjects, EachKindSurvivesTheWayThereAndBack) {
  const PropertyValue values[] = {
      true,
      false,
      1,
      std::int64_t{-9'007'199'254'740'993},
      1.0,
      0.1,
      "",
      std::string("nul\0inside, 57\xEF\xB9\xAA", 17),
      Date(std::chrono::microseconds(1'700'000'000'123'456)),
      PropertyData{std::byte{0}, std::byte{255}},
      PropertyData(),
      PropertyArray{1, "two", PropertyDictionary{{"three", 3.0}}},
      PropertyDictionary{{"a", PropertyArray()}, {"b", false}},
  };
  for (const PropertyValue& value : values)
    EXPECT_EQ(propertyValueOf(objectOf(value)), value) << value.storage.index();
}

TEST(PropertyObjects, WhatAPropertyListDoesNotHoldIsAbsent) {
  id odd = [[NSObject alloc] init];
  EXPECT_EQ(propertyValueOf(nil), std::nullopt);
  EXPECT_EQ(propertyValueOf(odd), std::nullopt);
  EXPECT_EQ(propertyValueOf(@[ @1, odd ]), std::nullopt);
  EXPECT_EQ(propertyDictionaryOf(
                @{@"kept" : @1,
                  @"odd" : odd,
                  @2 : @3}),
            (PropertyDictionary{{"kept", 1}}));
  EXPECT_TRUE(propertyDictionaryOf(nil).empty());
  for (const double seconds : {std::nan(""), HUGE_VAL, 1e13, -1e13})
    EXPECT_EQ(propertyValueOf([NSDate dateWithTimeIntervalSince1970:seconds]), std::nullopt);
  NSArray* deep = @[ @1 ];
  for (int level = 2; level < 32; ++level) deep = @[ deep ];
  EXPECT_EQ(propertyValueOf(@[ deep ]), std::nullopt);
}

TEST(PropertyObjects, TextsThatAreNoUtf8HaveNoObject) {
  for (const char* text : {"\xff", "\xC0\x80", "\xE2\x82"}) {
    EXPECT_EQ(stringOf(text), nil);
    EXPECT_EQ(objectOf(PropertyArray{text}), nil);
    EXPECT_EQ(objectOf(PropertyDictionary{{text, 1}}), nil);
    EXPECT_EQ(objectOf(PropertyDictionary{{"key", text}}), nil);
  }
  EXPECT_EQ(textOf(nil), "");
}

}  // namespace
}  // namespace kelvane
