// What the facts mean for Kelvane and its user. Pure functions, any thread.
#pragma once

#include <string>
#include <vector>

#include "programs/kelvane-commands/doctor/facts.h"

namespace kelvane {

struct Finding {
  // note: worth knowing, as it may not be what is expected. problem: something does not work.
  enum class Verdict { ok, note, problem };
  Verdict verdict = Verdict::ok;
  std::string subject;  // "tray"
  std::string text;
  std::string remedy;          // what to do, in whole sentences; empty: nothing
  bool keepsItemAway = false;  // nobody can see the item as long as this is so
  bool operator==(const Finding&) const = default;
};

// In a fixed order of subjects; several findings may be of one. What a missing session bus hides is
// left out.
std::vector<Finding> diagnose(const DoctorFacts& facts);

// The parts of it.
void diagnoseTray(const DoctorFacts& facts, std::vector<Finding>& findings);
void diagnosePower(const PowerFacts& facts, std::vector<Finding>& findings);
void diagnoseDesktop(const DoctorFacts& facts, std::vector<Finding>& findings);
void diagnosePreferences(const PreferencesFacts& facts, std::vector<Finding>& findings);

}  // namespace kelvane
