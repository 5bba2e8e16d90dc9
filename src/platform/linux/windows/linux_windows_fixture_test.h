// A computer without a display, on which a script is the window program.
#pragma once

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <fcntl.h>
#include <glib-unix.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/linux/notifications/notification_server_test.h"
#include "platform/linux/windows/linux_windows.h"
#include "platform/memory/memory_run_loop.h"

namespace kelvane {

// A window program is a shell script here. `say` tells the resident something, `heed` reads what it
// tells until a line with that word comes; everything read is logged, and so is the stream's end.
inline constexpr const char* kPrelude = R"sh(#!/bin/sh
trap '' PIPE
exec 4> "${0%/*}/log"
note() { printf '%s\n' "$1" 2> /dev/null >&4; }
say() { printf '%s\n' "$1" 2> /dev/null >&3; }
heed() {
  while read -r line <&3; do
    note "$line"
    case $line in *"$1"*) return;; esac
  done
  note end
  exit 0
}
hello() { say '{"protocol":1,"dark":null,"reducedMotion":false}'; }
note "$GSK_RENDERER $GDK_DEBUG $GDK_DISABLE"
echo $$ > "${0%/*}/pid"
)sh";

class LinuxWindowsTest : public testing::Test {
 protected:
  LinuxWindowsTest() {
    setenv("DISPLAY", ":nowhere", 1);
    for (const char* name : {"WAYLAND_DISPLAY", "GSK_RENDERER", "GDK_DEBUG", "GDK_DISABLE"})
      unsetenv(name);
    std::string pattern = (std::filesystem::temp_directory_path() / "windows-XXXXXX").string();
    computer_ = mkdtemp(pattern.data());
    session_.startServer();
    session_.settle();
  }
  ~LinuxWindowsTest() override { std::filesystem::remove_all(computer_); }

  // What a computer starts with that has this window program; "" for none.
  void install(const std::string& script) {
    windows_.reset();
    const auto folder = computer_ / std::to_string(++installations_);  // one may still run
    std::filesystem::create_directory(folder);
    // Both ends, so that it never has an end.
    mkfifo((folder / "log").c_str(), 0600);
    log_ = UniqueFd(open((folder / "log").c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    heard_.clear();
    if (!script.empty()) {
      std::ofstream(folder / "program") << (script.starts_with("#!") ? "" : kPrelude) << script;
      std::filesystem::permissions(folder / "program", std::filesystem::perms::owner_all);
    }
    WindowOptions options;
    options.programs = {folder / "missing", folder, folder / "program"};
    options.isMotionReduced = [] { return true; };
    options.isItemShown = [this] { return isItemShown_; };
    options.itemPlace = [] { return Point{7, 3}; };
    windows_ = std::make_unique<LinuxWindows>(loop_, board_, options);
    session_.log.clear();
    answers_.clear();
  }
  bool until(const std::function<bool()>& done) {
    return runUntil([&] {
      loop_.run();
      return done();
    });
  }
  void settle() {
    for (int i = 0; i < 3; ++i) {
      session_.settle();
      loop_.run();
    }
  }
  // All that the script has logged by now.
  const std::string& heard() {
    std::array<char, 4096> bytes;
    ssize_t count = 0;
    while ((count = read(log_.get(), bytes.data(), bytes.size())) > 0)
      heard_.append(bytes.data(), static_cast<std::size_t>(count));
    return heard_;
  }
  bool hasHeard(const std::string& words) {
    GSource* source = g_unix_fd_source_new(log_.get(), G_IO_IN);
    const GUnixFDSourceFunc stay = [](gint, GIOCondition, gpointer) -> gboolean { return TRUE; };
    g_source_set_callback(source, G_SOURCE_FUNC(stay), nullptr, nullptr);
    g_source_attach(source, nullptr);
    const bool has = until([&] { return heard().find(words) != std::string::npos; });
    g_source_destroy(source);
    g_source_unref(source);
    return has;
  }
  std::unique_ptr<AlertHandle> show(const Alert& alert) {
    auto handle = windows_->alert(alert, [this](int button) {
      EXPECT_EQ(loop_.mode(), RunLoopMode::standard);
      answers_.push_back(button);
    });
    EXPECT_THAT(answers_, testing::IsEmpty()) << "not inside the call";
    return handle;
  }

  const PrivateBus bus_;
  NoticeSession session_{bus_};
  MemoryRunLoop loop_;
  NoticeBoard board_{session_.connection.get(), loop_};
  std::filesystem::path computer_;
  int installations_ = 0;
  UniqueFd log_;
  std::string heard_;
  bool isItemShown_ = true;
  std::unique_ptr<LinuxWindows> windows_;
  std::vector<int> answers_;
};

inline constexpr const char* kScriptThatStays = "hello; heed never";

}  // namespace kelvane
