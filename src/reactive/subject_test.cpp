#include "reactive/subject.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(CurrentValueSubject, GivesItsValueFirstUnlessDropped) {
  CurrentValueSubject<int> subject(1);
  std::vector<int> all, later;
  const auto a = subject.subscribe([&](int v) { all.push_back(v); });
  const auto b = subject.publisher().dropFirst().subscribe([&](int v) { later.push_back(v); });
  subject.send(2);
  EXPECT_THAT(all, ElementsAre(1, 2));
  EXPECT_THAT(later, ElementsAre(2));
}

TEST(PassthroughSubject, DroppingEndsDelivery) {
  PassthroughSubject<int> subject;
  std::vector<int> seen;
  auto subscription = subject.subscribe([&](int v) { seen.push_back(v); });
  subject.send(1);
  subscription.cancel();
  subject.send(2);
  EXPECT_THAT(seen, ElementsAre(1));
}

TEST(PassthroughSubject, SubscribersComeAndGoDuringASend) {
  PassthroughSubject<int> subject;
  std::vector<int> dropped, added;
  Subscription victim, late;
  bool hasAdded = false;
  const auto first = subject.subscribe([&](int) {
    victim.cancel();
    if (!hasAdded) late = subject.subscribe([&](int v) { added.push_back(v); });
    hasAdded = true;
  });
  victim = subject.subscribe([&](int v) { dropped.push_back(v); });
  subject.send(1);
  EXPECT_THAT(dropped, IsEmpty());
  EXPECT_THAT(added, IsEmpty());
  subject.send(2);
  EXPECT_THAT(added, ElementsAre(2));
}

TEST(PassthroughSubject, ASubscriberMayDropItself) {
  PassthroughSubject<int> subject;
  int calls = 0;
  Subscription self;
  self = subject.subscribe([&](int) {
    ++calls;
    self.cancel();
  });
  subject.send(1);
  subject.send(2);
  EXPECT_EQ(calls, 1);
}

TEST(Subscription, OutlivesItsSubject) {
  Subscription subscription;
  {
    PassthroughSubject<int> subject;
    subscription = subject.subscribe([](int) {});
  }
  EXPECT_NO_FATAL_FAILURE(subscription.cancel());
}

}  // namespace
}  // namespace kelvane
