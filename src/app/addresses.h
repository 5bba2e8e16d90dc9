// The product's pages on the web.
#pragma once

namespace kelvane {

constexpr const char* kFeedbackAddress = "https://kelvane.example/feedback";
constexpr const char* kFaqAddress = "https://kelvane.example/faq";

}  // namespace kelvane
