// Keeping preferences in a file that other processes read and write too.
#include "platform/linux/preferences/plist_preferences.h"

#include "platform/linux/preferences/preferences_folder_test.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

using PlistPreferencesTest = PreferencesFolderTest;

TEST_F(PlistPreferencesTest, NothingIsMadeBeforeTheFirstValue) {
  follow();
  open()->registerDefaults({{"key", "default"}});
  EXPECT_FALSE(fs::exists(folder));
  open()->setObject("key", "value");
  EXPECT_EQ(onDisk(), (PropertyDictionary{{"key", "value"}}));
  EXPECT_EQ(fs::status(path).permissions(), fs::perms(0600));
  EXPECT_THAT(bytesOf(path), ::testing::StartsWith("<?xml"));
  EXPECT_EQ(open()->object("key"), PropertyValue("value"));
  EXPECT_THAT(names(), ElementsAre(path.filename(), path.filename().string() + ".lock"));
}

TEST_F(PlistPreferencesTest, TheSetsOfOneTurnAreOneWrite) {
  put(PropertyDictionary{{"b", 1}});
  const auto preferences = open();
  const auto before = bytesOf(path);
  int calls = 0;
  std::ignore = preferences->addObserver("a", {}, [&](const auto&) {
    ++calls;
    preferences->setObject("c", 3);
  });
  preferences->setObject("a", 1);
  preferences->removeObject("b");
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(bytesOf(path), before);
  EXPECT_TRUE(until([&] { return bytesOf(path) != before; }));
  EXPECT_EQ(onDisk(), (PropertyDictionary{{"a", 1}, {"c", 3}}));
}

TEST_F(PlistPreferencesTest, HeldWritesWaitForFollowingAndForNothingElse) {
  auto preferences = open();
  const auto setAndWait = [&](int value) {
    preferences->setObject("key", value);
    while (g_main_context_iteration(nullptr, FALSE)) continue;
    return onDisk();
  };
  preferences->holdWrites();
  EXPECT_THAT(setAndWait(1), IsEmpty());
  EXPECT_TRUE(preferences->synchronize());
  EXPECT_EQ(setAndWait(2), (PropertyDictionary{{"key", 1}}));
  preferences->followOtherProcesses();
  EXPECT_TRUE(until([&] { return onDisk() == PropertyDictionary{{"key", 2}}; }));
  EXPECT_EQ(setAndWait(3), (PropertyDictionary{{"key", 3}}));
  preferences->holdWrites();
  setAndWait(4);
  preferences.reset();
  EXPECT_EQ(onDisk(), (PropertyDictionary{{"key", 4}}));
}

TEST_F(PlistPreferencesTest, OtherKeysKeepWhatOthersStored) {
  const PlistNode theirs = toPlist(PropertyDictionary{{"theirs", 1}, {"ours", "old"}});
  plist_dict_set_item(theirs.get(), "uid", plist_new_uid(7));  // no value of ours can hold it
  char* binary = nullptr;
  std::uint32_t size = 0;
  plist_to_bin(theirs.get(), &binary, &size);
  put(std::string(binary, size));
  plist_to_bin_free(binary);

  const auto preferences = open();
  EXPECT_EQ(preferences->object("ours"), PropertyValue("old"));
  open()->setObject("theirs", 2);
  preferences->setObject("ours", "new");
  EXPECT_TRUE(preferences->synchronize());
  EXPECT_EQ(onDisk().at("theirs"), PropertyValue(2));
  EXPECT_EQ(onDisk().at("ours"), PropertyValue("new"));
  EXPECT_THAT(bytesOf(path), HasSubstr("<key>uid</key>"));
}

TEST_F(PlistPreferencesTest, AnotherProcessIsHeardOncePerKeyAndOurselvesNeverTwice) {
  put(PropertyDictionary{{"changed", "old"}, {"removed", "old"}, {"same", "old"}});
  const auto preferences = follow();
  for (const char* key : {"changed", "removed", "added", "same", "ours", "date", "mark"})
    observe(*preferences, key);
  {
    const auto other = open();
    other->setObject("changed", "new");
    other->removeObject("removed");
    other->setObject("added", "new");
  }
  EXPECT_TRUE(until([&] { return told.size() >= 6; }));
  settle();
  EXPECT_THAT(told, ElementsAre("added: before ->-", "added: ->new", "changed: before old>-",
                                "changed: old>new", "removed: before old>-", "removed: old>-"));
  told.clear();
  preferences->setObject("ours", "new");
  preferences->setObject("date", Date(std::chrono::microseconds(1'000'001)));
  EXPECT_TRUE(until([&] { return onDisk().contains("ours"); }));
  settle();
  EXPECT_THAT(told,
              ElementsAre("ours: before ->-", "ours: ->new", "date: before ->-", "date: ->?"));
}

TEST_F(PlistPreferencesTest, OursComesAfterTheirsWhenItIsNotWrittenYet) {
  const auto preferences = follow();
  preferences->setObject("first", "x");
  EXPECT_TRUE(until([&] { return fs::exists(path); }));
  for (const char* key : {"key", "answer", "mark"}) observe(*preferences, key);
  // Answers one of two foreign changes by setting the other key.
  std::ignore = preferences->addObserver("answer", {}, [&](const PreferenceChange& change) {
    if (change.newValue == PropertyValue("theirs")) preferences->setObject("key", "ours");
  });
  {
    const auto other = open();
    other->setObject("key", "theirs");
    other->setObject("answer", "theirs");
  }
  EXPECT_TRUE(until(
      [&] { return onDisk().contains("answer") && onDisk().at("key") == PropertyValue("ours"); }));
  settle();
  EXPECT_THAT(told, ElementsAre("answer: before ->-", "answer: ->theirs", "key: before ->-",
                                "key: ->ours"));
}

TEST_F(PlistPreferencesTest, AFileOrFolderThatGoesAwayTakesItsValuesWithIt) {
  put(PropertyDictionary{{"key", "old"}});
  const auto preferences = follow();
  for (const char* key : {"key", "mark"}) observe(*preferences, key);
  fs::remove(path);
  EXPECT_TRUE(until([&] { return !preferences->object("key"); }));
  preferences->setObject("key", "new");
  EXPECT_TRUE(until([&] { return onDisk().contains("key"); }));
  fs::remove_all(folder);
  EXPECT_TRUE(until([&] { return !preferences->object("key"); }));
  told.clear();
  preferences->setObject("key", "again");
  EXPECT_TRUE(until([&] { return onDisk().contains("key"); }));
  settle();  // others are heard again
  EXPECT_THAT(told, ElementsAre("key: before ->-", "key: ->again"));
}

TEST_F(PlistPreferencesTest, ASymbolicLinkStaysOneAndItsTargetIsFollowed) {
  const auto dotfiles = root / "dotfiles";
  const auto target = dotfiles / "kelvane.plist";
  fs::create_directories(dotfiles);
  fs::create_directories(folder);
  fs::create_symlink("../../dotfiles/link.plist", path);
  fs::create_symlink(target, dotfiles / "link.plist");

  const auto preferences = follow();
  EXPECT_THAT(reports, IsEmpty()) << "a link to nothing is no file yet";
  preferences->setObject("key", "ours");
  EXPECT_TRUE(preferences->synchronize());
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(target)));
  EXPECT_EQ(onDisk(), (PropertyDictionary{{"key", "ours"}}));
  observe(*preferences, "mark");
  settle();
  fs::remove(path);
  EXPECT_TRUE(until([&] { return !preferences->object("key"); }));
  fs::create_symlink(target, path);
  EXPECT_TRUE(until([&] { return preferences->object("key") == PropertyValue("ours"); }));
}

}  // namespace
}  // namespace kelvane
