// Formats in the user's language and region, by the system's own formatters. Main thread.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/text_formats.h"

namespace kelvane {

class MacTextFormats : public TextFormats {
 public:
  MacTextFormats();
  ~MacTextFormats() override;

  std::optional<std::string> abbreviatedDuration(double seconds) override;
  std::string shortTime(Date date) override;
  std::optional<std::string> percent(double ratio) override;
  std::string informationStorage(double bytes) override;

 private:
  struct Formatters;
  const std::unique_ptr<Formatters> formatters_;
};

}  // namespace kelvane
