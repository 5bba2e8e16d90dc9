// What the commands "Send Feedback…", "About" and "FAQ" do. Main thread.
//
// Nothing is sent from here: the user's browser opens the product's form with the facts filled in,
// and the user decides.
#pragma once

#include <string>

#include "platform/application_information.h"
#include "platform/platform.h"

namespace kelvane {

class Feedback {
 public:
  // The platform's parts outlive this object; the information is copied.
  Feedback(const Platform& platform, ApplicationInformation information);

  void sendFeedback();
  void showAbout();
  void openFAQ();

 private:
  Platform platform_;
  ApplicationInformation information_;
};

// The facts that a report needs to be reproduced: nine lines without a final line break, read
// afresh. What can't be read is named so; no line is ever missing.
std::string systemInformationText(const Platform& platform,
                                  const ApplicationInformation& information);

}  // namespace kelvane
