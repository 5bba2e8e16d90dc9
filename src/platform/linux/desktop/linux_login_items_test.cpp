#include "platform/linux/desktop/linux_login_items.h"

#include <cstdlib>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/linux/desktop/autostart_entry.h"
#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

constexpr const char* kLabel = "org.kelvane.Kelvane-AutoStartHelper";

DesktopSession session() {
  return {{"ubuntu", "GNOME"}, [](const std::string& program) { return program != "/gone"; }};
}

TEST(AutostartEntry, IsStartedUnlessSomethingSwitchesItOff) {
  const std::string entry = "[Desktop Entry]\nType=Application\nName=x\nExec=x\n";
  const std::pair<std::string, std::optional<bool>> rows[] = {
      {entry, true},
      {"# a comment\n\n" + entry + "Hidden=false\nX-GNOME-Autostart-enabled=true\n", true},
      {"[Desktop Entry]\nHidden=true\n", false},
      {entry + "X-GNOME-Autostart-enabled=false\n", false},
      {entry + "X-systemd-skip=true\n", false},
      {entry + "X-GNOME-Autostart-enabled=maybe\n", true},
      {entry + "TryExec=/there\n", true},
      {entry + "OnlyShowIn=XFCE;GNOME;\n", true},
      {entry + "OnlyShowIn=XFCE;GNOMES;\n", false},
      {entry + "OnlyShowIn=\n", false},
      {entry + "NotShowIn=XFCE\n", true},
      {entry + "NotShowIn=XFCE;GNOME\n", false},
      {entry + "OnlyShowIn=ubuntu\nNotShowIn=GNOME\n", true},
      {entry + "NotShowIn=ubuntu\nOnlyShowIn=GNOME\n", false},
      {"[Desktop Entry]\nType=Link\nExec=x\n", std::nullopt},
      {"[Desktop Entry]\nType=Application\nExec=\n", std::nullopt},
      {"[Another]\nType=Application\nExec=x\n", std::nullopt},
      {"Exec=x\n", std::nullopt},
      {"[Desktop Entry\n", std::nullopt},
      {"", std::nullopt},
      {std::string("\0\xff", 2), std::nullopt},
  };
  for (const auto& [text, isStarted] : rows)
    EXPECT_EQ(isStartedAtLogin(text, session()), isStarted) << text;
  EXPECT_EQ(isStartedAtLogin(entry + "OnlyShowIn=GNOME\n", {{}, session().hasProgram}), false);
}

TEST(AutostartEntry, SaysWhatItStartsOrWhyItDoesNot) {
  const std::string entry = "[Desktop Entry]\nType=Application\nExec=\"/a b/x\" --y\n";
  const struct {
    std::string text, reason, program;
  } rows[] = {
      {entry, "", "/a b/x"},
      {entry + "Hidden=true\n", "Hidden=true", "/a b/x"},
      {entry + "X-MATE-Autostart-enabled=false\n", "X-MATE-Autostart-enabled=false", "/a b/x"},
      {entry + "TryExec=/gone\n", "TryExec=/gone", "/a b/x"},
      {entry + "NotShowIn=GNOME\n", "it is for other desktops", "/a b/x"},
      {"[Desktop Entry]\nType=Application\n", "it does not say what to start", ""},
      {"[Desktop Entry]\nType=Application\nExec=\"x\n", "", ""},
      {"x", "it is no desktop entry", ""},
  };
  for (const auto& row : rows) {
    const AutostartReading reading = readAutostartEntry(row.text, session());
    EXPECT_EQ(reading.isStarted.value_or(false), row.reason.empty()) << row.text;
    EXPECT_EQ(reading.reason, row.reason) << row.text;
    EXPECT_EQ(reading.program, row.program) << row.text;
  }
}

TEST(AutostartEntry, KeepsAnyPathWhole) {
  EXPECT_THAT(autostartEntry("/a b$`\"\\%"), HasSubstr(R"(
Exec="/a b\\$\\`\\"\\\\%%"
)"));
  for (const std::string program :
       {"/usr/libexec/kelvane/helper", "/home/a b/helper", "/a\"b'c/\\d\\\\e", "/$HOME/`id`/%f%%",
        "/a;b=c&d|e~f*g?h#i(j)<k>", "/tab\there\nline/ö", "/ a"}) {
    const std::string entry = autostartEntry(program);
    EXPECT_EQ(isStartedAtLogin(entry, session()), true) << entry;
    GKeyFile* file = g_key_file_new();
    ASSERT_TRUE(
        g_key_file_load_from_data(file, entry.data(), entry.size(), G_KEY_FILE_NONE, nullptr));
    const GCharPtr tried(g_key_file_get_string(file, "Desktop Entry", "TryExec", nullptr));
    const GCharPtr command(g_key_file_get_string(file, "Desktop Entry", "Exec", nullptr));
    g_key_file_unref(file);
    EXPECT_STREQ(tried.get(), program.c_str());
    int count = 0;
    char** words = nullptr;
    ASSERT_TRUE(g_shell_parse_argv(command.get(), &count, &words, nullptr)) << command.get();
    std::string word = words[0];
    g_strfreev(words);
    EXPECT_EQ(count, 1);
    // Field codes are expanded last.
    for (auto at = word.find('%'); at != std::string::npos; at = word.find('%', at + 1)) {
      EXPECT_EQ(word.substr(at, 2), "%%") << word;
      word.erase(at, 1);
    }
    EXPECT_EQ(word, program);
  }
}

class LoginItemsTest : public ::testing::Test {
 protected:
  LoginItemsTest() {
    std::string name = (fs::temp_directory_path() / "kelvane-login-XXXXXX").string();
    root = mkdtemp(name.data());
    folder = root / "config" / "autostart";
  }
  ~LoginItemsTest() override { fs::remove_all(root); }

  LinuxLoginItems items(const std::string& helper = "/opt/my programs/helper") const {
    return {folder, helper, session()};
  }
  void put(const std::string& name, const std::string& text) const {
    fs::create_directories(folder);
    std::ofstream(folder / name, std::ios::binary) << text;
  }
  std::vector<std::string> names() const {
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(folder))
      found.push_back(entry.path().filename().string());
    return found;
  }
  static PropertyDictionary job(const std::string& label, std::optional<bool> isOn) {
    PropertyDictionary job = {{"Label", label}};
    if (isOn) job.emplace("OnDemand", *isOn);
    return job;
  }

  fs::path root, folder;
};

TEST_F(LoginItemsTest, RegistersAndRemovesOnlyItsOwnEntry) {
  EXPECT_THAT(items().jobs().value(), IsEmpty());
  EXPECT_TRUE(items().setEnabled(kLabel, false));
  EXPECT_FALSE(fs::exists(folder.parent_path())) << "asking and removing make nothing";

  EXPECT_TRUE(items().setEnabled(kLabel, true));
  EXPECT_THAT(items().jobs().value(), UnorderedElementsAre(job(kLabel, true)));
  const fs::path entry = folder / (std::string(kLabel) + ".desktop");
  EXPECT_EQ(fs::status(entry).permissions(), fs::perms(0644));
  put("other.desktop", "[Desktop Entry]\nType=Application\nExec=x\n");
  put(entry.filename(), "[Desktop Entry]\nHidden=true\n");
  EXPECT_THAT(items().jobs().value(), UnorderedElementsAre(job(kLabel, false), job("other", true)));
  EXPECT_TRUE(items().setEnabled(kLabel, true));
  EXPECT_THAT(items().jobs().value(), UnorderedElementsAre(job(kLabel, true), job("other", true)));
  EXPECT_TRUE(items().setEnabled(kLabel, false));
  EXPECT_THAT(names(), UnorderedElementsAre("other.desktop"));
}

TEST_F(LoginItemsTest, RefusesWhatItCannotDo) {
  for (const std::string label : {"", "../escape", "a/b", "/etc/x"})
    for (const bool enabled : {true, false}) EXPECT_FALSE(items().setEnabled(label, enabled));
  EXPECT_FALSE(items("").setEnabled(kLabel, true));
  EXPECT_FALSE(items("helper").setEnabled(kLabel, true));
  EXPECT_FALSE(fs::exists(folder));

  fs::create_directories(folder / (std::string(kLabel) + ".desktop") / "inside");
  EXPECT_FALSE(items().setEnabled(kLabel, true));
  EXPECT_FALSE(items().setEnabled(kLabel, false));
  EXPECT_THAT(names(), UnorderedElementsAre(std::string(kLabel) + ".desktop"));

  fs::remove_all(folder);
  std::ofstream(folder) << "a file where the folder should be";
  EXPECT_EQ(items().jobs(), std::nullopt);
  EXPECT_FALSE(items().setEnabled(kLabel, true));
  EXPECT_TRUE(items().setEnabled(kLabel, false));
}

TEST_F(LoginItemsTest, ReadsRegularFilesWithinBounds) {
  const std::string entry = "[Desktop Entry]\nType=Application\nExec=x\n";
  put("on.desktop", entry);
  put("broken.desktop", "garbage");
  put("large.desktop", entry + std::string(64 * 1024, '#'));
  put("notes.txt", entry);
  put("target", entry);
  fs::create_symlink("target", folder / "linked.desktop");
  fs::create_symlink("/dev/null", folder / "masked.desktop");
  fs::create_symlink("nowhere", folder / "dangling.desktop");
  fs::create_directory(folder / "folder.desktop");
  ASSERT_EQ(mkfifo((folder / "pipe.desktop").c_str(), 0600), 0);
  EXPECT_THAT(items().jobs().value(),
              UnorderedElementsAre(job("on", true), job("linked", true),
                                   job("broken", std::nullopt), job("large", std::nullopt)));

  for (int i = 0; i < 600; ++i) put(std::to_string(i) + ".desktop", entry);
  EXPECT_EQ(items().jobs().value().size(), 512u);
}

}  // namespace
}  // namespace kelvane
