// What an action of the system's automation is made of: the request, the answer, and the objects in
// an answer, whose properties scripts read one by one. Plain values, any thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kelvane {

// A request; each action has a type of its own.
class Intent {
 public:
  virtual ~Intent() = default;
};

struct IntentResponse {
  // The type of the activity in which the application goes on with the request; absent for none.
  std::optional<std::string> userActivity;
};

struct IntentObject {
  std::string identifier;
  std::string displayString;  // what is shown for the object as a whole
  std::optional<std::string> pronunciationHint;
};

// What became of a value that an action was given: taken, one to be confirmed, or several of which
// one is to be chosen.
template <typename Value>
struct IntentResolutionResult {
  enum class Outcome { success, confirmationRequired, disambiguation };
  Outcome outcome;
  std::vector<Value> values;  // one unless `disambiguation`
};

}  // namespace kelvane
