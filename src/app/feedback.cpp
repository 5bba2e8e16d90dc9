#include "app/feedback.h"

#include <cmath>
#include <utility>

#include "app/addresses.h"
#include "app/percent_encoding.h"
#include "platform/system_info.h"
#include "platform/text_formats.h"
#include "platform/windows.h"
#include "platform/workspace.h"

namespace kelvane {
namespace {

// Memory is counted in binary megabytes and written in decimal ones.
constexpr double kMemoryScale = 0.95367431640625;  // 1,000,000 / 1,048,576

std::string memoryUsage(const Platform& platform) {
  const auto bytes = platform.systemInfo.memoryFootprint();
  if (!bytes) return "<Unavailable>";
  return platform.textFormats.informationStorage(static_cast<double>(*bytes) * kMemoryScale);
}

}  // namespace

std::string systemInformationText(const Platform& platform,
                                  const ApplicationInformation& information) {
  SystemInfo& system = platform.systemInfo;
  std::string text = information.name + " " + information.version + " (" + information.build + ")";
  const auto add = [&](const char* label, const std::string& value) {
    text += std::string("\n") + label + ": " + value;
  };
  add("Bundle Identifier", information.identifier);
  add("OS", system.systemDescription());
  add("Model", system.hardwareModel().value_or("<Unknown model>"));
  add("Architecture", system.architecture().value_or("<Unknown>"));
  add("Locale", system.localeIdentifier() + " (" + system.languageNameInEnglish() + ")");
  add("Screens", std::to_string(system.screenCount()));
  add("Primary Screen Scale", std::to_string(std::lround(system.primaryScreenScale())));
  add("App Memory Usage", memoryUsage(platform));
  return text;
}

Feedback::Feedback(const Platform& platform, ApplicationInformation information)
    : platform_(platform), information_(std::move(information)) {}

void Feedback::sendFeedback() {
  const std::string metadata = systemInformationText(platform_, information_);
  platform_.workspace.openUrl(std::string(kFeedbackAddress) +
                              "?product=" + percentEncoded(information_.name) +
                              "&metadata=" + percentEncoded(metadata));
}

void Feedback::showAbout() {
  platform_.windows.activate();
  platform_.windows.showAboutPanel(information_);
}

void Feedback::openFAQ() { platform_.workspace.openUrl(kFaqAddress); }

}  // namespace kelvane
