// Findings as text for people and as JSON for programs. Pure functions, any thread.
#pragma once

#include <string>
#include <vector>

#include "programs/kelvane-commands/doctor/diagnosis.h"

namespace kelvane {

// A line for each finding in three columns, and a second one, indented, for what to do. What other
// programs call themselves can't change the form: control characters become spaces.
std::string plainTextOf(const std::vector<Finding>& findings);

// {"canBeSeen": true, "findings": [{"verdict","subject","text","remedy"}, ...]}; a remedy may be
// null.
std::string jsonOf(const std::vector<Finding>& findings);

// Nothing found keeps the item from being seen.
bool canBeSeen(const std::vector<Finding>& findings);

}  // namespace kelvane
