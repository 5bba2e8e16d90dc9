#include "platform/linux/desktop/linux_text_formats.h"

#include <clocale>
#include <cstdlib>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace kelvane {
namespace {

class ScopedVariable {
 public:
  ScopedVariable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    setenv(name, value, 1);
  }
  ~ScopedVariable() {
    if (old_) {
      setenv(name_, old_->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  const char* name_;
  std::optional<std::string> old_;
};

TEST(LinuxTextFormats, twelveHoursByTheTimeFormat) {
  const struct {
    const char* format;
    bool is12Hour;
  } rows[] = {
      {"%r", true},          {"%I:%M:%S %p", true}, {"%l:%M:%S", true},  {"%-I.%M %P", true},
      {"%p %I:%M:%S", true}, {"%T", false},         {"%H:%M:%S", false}, {"%H.%M.%S", false},
      {"%OH:%M", false},     {"%OI:%M", true},      {"%%I", false},      {"%", false},
      {"", false},
  };
  for (const auto& row : rows)
    EXPECT_EQ(isTwelveHourFormat(row.format), row.is12Hour) << row.format;
}

TEST(LinuxTextFormats, readsTheZoneAndLeavesTheLocaleAlone) {
  const ScopedVariable locale("LC_ALL", "C");
  LinuxTextFormats formats;
  const Date noon(std::chrono::hours(12));
  {
    const ScopedVariable zone("TZ", "AAA-5:30");  // east of Greenwich in POSIX's notation
    EXPECT_EQ(formats.shortTime(noon), "17:30");
  }
  {
    const ScopedVariable zone("TZ", "BBB+3");
    EXPECT_EQ(formats.shortTime(noon), "09:00");
  }
  EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
}

TEST(LinuxTextFormats, unknownLocaleReads24Hours) {
  const ScopedVariable locale("LC_ALL", "xx_NOWHERE.UTF-8");
  EXPECT_FALSE(environmentClockStyle().use12Hour);
}

}  // namespace
}  // namespace kelvane
