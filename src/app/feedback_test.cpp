#include "app/feedback.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/percent_encoding.h"
#include "platform/memory/memory_computer.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;

std::string percentDecoded(const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isEscape = text[i] == '%';
    result += isEscape ? static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16)) : text[i];
    if (isEscape) i += 2;
  }
  return result;
}

TEST(PercentEncoding, KeepsWhatNeedsNoEscape) {
  const struct {
    const char* text;
    const char* encoded;
  } rows[] = {
      {"", ""},
      {"azAZ09-._~", "azAZ09-._~"},
      {"1.2 (3)\n", "1.2%20%283%29%0A"},
      {"a&b=c+d%e#f?g/h", "a%26b%3Dc%2Bd%25e%23f%3Fg%2Fh"},
      {"@[`{", "%40%5B%60%7B"},
      {"Ångström 🔋", "%C3%85ngstr%C3%B6m%20%F0%9F%94%8B"},
  };
  for (const auto& row : rows) EXPECT_EQ(percentEncoded(row.text), row.encoded);
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) everyByte += static_cast<char>(byte);
  EXPECT_EQ(percentDecoded(percentEncoded(everyByte)), everyByte);
}

class FeedbackTest : public ::testing::Test {
 protected:
  MemoryComputer computer;
  ApplicationInformation information{"Kelvane", "org.kelvane.Kelvane", "1.2.0", "345", "©"};
  Feedback feedback{computer.platform(), information};
};

TEST_F(FeedbackTest, OpensTheFormWithTheFactsFilledIn) {
  computer.systemInfo.footprint = 10'000'000;
  computer.systemInfo.screens = 2;
  feedback.sendFeedback();
  const std::string start =
      "https://kelvane.example/feedback?product=Kelvane&metadata=Kelvane%201.2.0%20%28345%29%0A";
  ASSERT_THAT(computer.workspace.opened, ElementsAre(::testing::StartsWith(start)));
  const std::string& url = computer.workspace.opened[0];
  EXPECT_EQ(percentDecoded(url.substr(url.find("metadata=") + 9)),
            "Kelvane 1.2.0 (345)\n"
            "Bundle Identifier: org.kelvane.Kelvane\n"
            "OS: Memory 1.0\n"
            "Model: Memory1,1\n"
            "Architecture: x86_64\n"
            "Locale: en_US (English)\n"
            "Screens: 2\n"
            "Primary Screen Scale: 2\n"
            "App Memory Usage: 9.5 MB");
}

TEST_F(FeedbackTest, NamesWhatCannotBeReadAndReadsAfresh) {
  const Platform platform = computer.platform();
  const std::string before = systemInformationText(platform, information);
  computer.systemInfo.model.reset();
  computer.systemInfo.machine.reset();
  computer.systemInfo.footprint.reset();
  computer.systemInfo.screens = 0;
  computer.systemInfo.scale = 1.75;
  const std::string after = systemInformationText(platform, information);
  EXPECT_EQ(after.substr(after.find("Model")),
            "Model: <Unknown model>\nArchitecture: <Unknown>\nLocale: en_US (English)\n"
            "Screens: 0\nPrimary Screen Scale: 2\nApp Memory Usage: <Unavailable>");
  EXPECT_EQ(after.substr(0, after.find("Model")), before.substr(0, before.find("Model")));
}

TEST_F(FeedbackTest, OpensTheQuestionsAndThePanel) {
  feedback.openFAQ();
  EXPECT_THAT(computer.workspace.opened, ElementsAre("https://kelvane.example/faq"));
  feedback.showAbout();
  EXPECT_EQ(computer.windows.activations, 1);
  ASSERT_EQ(computer.windows.aboutPanels.size(), 1U);
  EXPECT_EQ(computer.windows.aboutPanels[0].build, "345");
}

}  // namespace
}  // namespace kelvane
