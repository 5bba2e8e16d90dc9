#include "programs/kelvane-autostart-helper/bus_wait.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

TEST(BusWait, KnowsWhereTheBusWillBe) {
  const struct {
    const char *address, *runtimeFolder, *socket;
  } rows[] = {
      {"unix:path=/run/user/1000/bus", nullptr, "/run/user/1000/bus"},
      {"unix:path=/a/bus,guid=5", "/run/user/1", "/a/bus"},
      {"unix:guid=5,path=/a/bus", nullptr, "/a/bus"},
      {"unix:path=/a/b%20c%2fd;unix:path=/e", nullptr, "/a/b c/d"},
      {"unix:path=/a%2", nullptr, ""},
      {"unix:path=/a%zz", nullptr, ""},
      {"unix:path=relative", nullptr, ""},
      {"unix:abstract=/tmp/dbus-x", "/run/user/1", ""},
      {"unix:path", nullptr, ""},
      {"unix:", nullptr, ""},
      {"tcp:host=localhost,port=5", nullptr, ""},
      {"autolaunch:", nullptr, ""},
      {"", "/run/user/1000", "/run/user/1000/bus"},
      {nullptr, "/run/user/1000", "/run/user/1000/bus"},
      {nullptr, "", ""},
      {nullptr, nullptr, ""},
  };
  for (const auto& row : rows)
    EXPECT_EQ(sessionBusSocket(row.address, row.runtimeFolder), row.socket)
        << (row.address ? row.address : "no address");
}

class BusWaitTest : public ::testing::Test {
 protected:
  BusWaitTest() {
    std::string name = (fs::temp_directory_path() / "kelvane-wait-XXXXXX").string();
    folder = mkdtemp(name.data());
  }
  ~BusWaitTest() override { fs::remove_all(folder); }

  static void bindTo(const fs::path& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.string().copy(address.sun_path, sizeof address.sun_path - 1);
    const int server = socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(server);
  }

  // This process watches something.
  static bool isWatching() {
    for (const auto& file : fs::directory_iterator("/proc/self/fdinfo")) {
      std::ifstream lines(file.path());
      for (std::string line; std::getline(lines, line);)
        if (line.starts_with("inotify wd")) return true;
    }
    return false;
  }

  fs::path folder;
};

TEST_F(BusWaitTest, IsOverWhenTheSocketIsThere) {
  const fs::path socket = folder / "a" / "b" / "bus";
  // Each before or after the watch, as it happens: there must be no gap between them.
  for (int round = 0; round < 20; ++round) {
    std::thread session([&] {
      fs::create_directories(socket.parent_path());
      bindTo(folder / "aside");
      fs::rename(folder / "aside", socket);
    });
    EXPECT_EQ(waitForSocket(socket, 10s), "") << "round " << round;
    session.join();
    EXPECT_EQ(waitForSocket(socket, 0s), "");
    fs::remove_all(folder / "a");
  }
}

TEST_F(BusWaitTest, FollowsTheNameWhenTheFolderIsReplaced) {
  const fs::path runtime = folder / "run";
  fs::create_directory(runtime);
  std::thread session([&] {
    while (!isWatching()) std::this_thread::yield();
    fs::rename(runtime, folder / "old");
    fs::create_directory(runtime);
    bindTo(runtime / "bus");
  });
  const auto began = std::chrono::steady_clock::now();
  EXPECT_EQ(waitForSocket(runtime / "bus", 10s), "");
  EXPECT_LT(std::chrono::steady_clock::now() - began, 5s) << "found at the last look only";
  session.join();
}

TEST_F(BusWaitTest, GivesUpInTime) {
  EXPECT_NE(waitForSocket(folder / "bus", 20ms), "");
  EXPECT_NE(waitForSocket(folder / "missing" / "bus", 0s), "");
  fs::create_directory(folder / "bus");
  EXPECT_NE(waitForSocket(folder / "bus", 20ms), "") << "no socket";
}

}  // namespace
}  // namespace kelvane
