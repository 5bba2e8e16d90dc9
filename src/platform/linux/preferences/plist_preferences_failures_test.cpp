// What happens to the values when the file can't be read or written.
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/files/safe_files.h"
#include "platform/linux/preferences/plist_limits.h"
#include "platform/linux/preferences/preferences_folder_test.h"

namespace kelvane {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;
namespace fs = std::filesystem;

using UnreadableFiles = PreferencesFolderTest;

TEST_F(UnreadableFiles, AnUnreadableFileIsKeptAsideAndSaidOnce) {
  std::string tooLarge = plistXml(toPlist(PropertyDictionary{{"key", "old"}}).get());
  tooLarge.resize(kMaximumPlistBytes + 1, ' ');
  const std::vector<std::string> unreadable = {"", "garbage",
                                               "<plist version='1.0'><dict><key>a</key>",
                                               "<plist><array/></plist>", tooLarge};
  for (const auto& bytes : unreadable) {
    fs::remove_all(folder);
    put(bytes);
    reports.clear();
    const auto preferences = open();
    preferences->registerDefaults({{"key", "default"}});
    EXPECT_EQ(preferences->object("key"), PropertyValue("default"));
    EXPECT_EQ(bytesOf(path), bytes) << "reading must not change anything";
    EXPECT_THAT(names(), SizeIs(1));
    for (const char* value : {"new", "newer"}) {
      preferences->setObject("key", value);
      EXPECT_TRUE(preferences->synchronize());
    }
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"key", "newer"}}));
    ASSERT_THAT(names(), SizeIs(3));
    EXPECT_THAT(names()[1], HasSubstr(".plist.corrupt-20"));
    EXPECT_EQ(bytesOf(folder / names()[1]), bytes);
    EXPECT_THAT(reports, ElementsAre(AllOf(HasSubstr(path.string()), HasSubstr(".corrupt-"))));
  }
}

TEST_F(UnreadableFiles, AFileThatGoesBadLaterIsReplacedByAllThatIsKnown) {
  const auto preferences = open();
  preferences->setObject("first", 1);
  EXPECT_TRUE(preferences->synchronize());
  for (int times = 1; times <= 2; ++times) {
    put("garbage " + std::to_string(times));
    preferences->setObject("second", times);
    EXPECT_TRUE(preferences->synchronize());
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"first", 1}, {"second", times}}));
  }
  EXPECT_THAT(names(), SizeIs(4)) << "both bad files are kept, under two names";
  EXPECT_THAT(reports, SizeIs(1));
}

TEST_F(UnreadableFiles, APipeInTheFilesPlaceIsUnreadableAndKeepsNobodyWaiting) {
  fs::create_directories(folder);
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  open()->setObject("key", "value");
  EXPECT_EQ(onDisk(), (PropertyDictionary{{"key", "value"}}));
  EXPECT_THAT(reports, SizeIs(1));
}

using FailingWrites = PreferencesFolderTest;

TEST_F(FailingWrites, ChangeNothingAndAreMadeUpFor) {
  put(PropertyDictionary{{"key", "old"}, {"theirs", 1}});
  const auto before = bytesOf(path);
  const auto preferences = open();
  const uid_t user = geteuid();
  constexpr uid_t kNobody = 65534;
  fs::permissions(folder, fs::perms(0555));
  // Root may write everywhere.
  ASSERT_TRUE(user != 0 || seteuid(kNobody) == 0);
  for (const char* value : {"lost", "new"}) {
    preferences->setObject("key", value);
    EXPECT_FALSE(preferences->synchronize());
  }
  ASSERT_TRUE(user != 0 || seteuid(user) == 0);
  fs::permissions(folder, fs::perms(0755));
  EXPECT_EQ(preferences->object("key"), PropertyValue("new"));
  EXPECT_EQ(bytesOf(path), before);
  for (const auto& name : names())
    EXPECT_THAT(name, ::testing::AnyOf(path.filename(), path.filename().string() + ".lock"));
  EXPECT_THAT(reports, ElementsAre(HasSubstr("can't write")));
  preferences->setObject("other", "x");
  EXPECT_TRUE(preferences->synchronize());
  EXPECT_EQ(onDisk(), (PropertyDictionary{{"key", "new"}, {"other", "x"}, {"theirs", 1}}));
}

TEST_F(FailingWrites, MoreThanMayBeReadAgain) {
  put(PropertyDictionary{{"key", "old"}});
  const auto preferences = open();
  preferences->setObject("large", std::string(300'000, 'x'));
  EXPECT_FALSE(preferences->synchronize());
  EXPECT_EQ(onDisk(), (PropertyDictionary{{"key", "old"}}));
  EXPECT_THAT(reports, ElementsAre(HasSubstr("256 KiB")));
  preferences->removeObject("large");
  EXPECT_TRUE(preferences->synchronize());
}

TEST_F(FailingWrites, AreTriedAgainWhenAnotherProcessCouldWrite) {
  put(PropertyDictionary{});
  const auto preferences = follow();
  const fs::path obstacle = path.string() + ".lock";
  fs::create_directory(obstacle);
  preferences->setObject("key", "new");
  while (g_main_context_iteration(nullptr, FALSE)) continue;
  EXPECT_THAT(reports, SizeIs(1));
  fs::remove(obstacle);
  const auto other = open();
  other->setObject("theirs", 1);
  EXPECT_TRUE(other->synchronize());
  EXPECT_TRUE(until([&] { return onDisk() == PropertyDictionary{{"key", "new"}, {"theirs", 1}}; }));
}

TEST_F(FailingWrites, AFileInTheFoldersPlace) {
  std::ofstream(root / "config") << "not a folder";
  const auto preferences = open();
  preferences->setObject("key", "value");
  EXPECT_FALSE(preferences->synchronize());
  fs::remove(root / "config");
  EXPECT_TRUE(preferences->synchronize());
  EXPECT_EQ(onDisk(), (PropertyDictionary{{"key", "value"}}));
  EXPECT_THAT(reports, ElementsAre(HasSubstr("can't write")));
}

TEST_F(FailingWrites, ALockHeldForEverIsAFailureNotAHang) {
  std::error_code error;
  auto held = FileLock::acquire(root / "lock", {}, error);
  ASSERT_TRUE(held);
  EXPECT_FALSE(FileLock::acquire(root / "lock", std::chrono::milliseconds(10), error));
  EXPECT_EQ(error, std::errc::device_or_resource_busy);
  held.reset();
  EXPECT_TRUE(FileLock::acquire(root / "lock", {}, error));
  EXPECT_FALSE(error);
}

}  // namespace
}  // namespace kelvane
