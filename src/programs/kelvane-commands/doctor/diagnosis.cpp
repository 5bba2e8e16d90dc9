#include "programs/kelvane-commands/doctor/diagnosis.h"

namespace kelvane {
namespace {

using Verdict = Finding::Verdict;

void diagnoseSessionBus(const DoctorFacts& facts, std::vector<Finding>& findings) {
  if (facts.sessionBusProblem.empty()) {
    findings.push_back({Verdict::ok, "session bus", facts.sessionBus});
    return;
  }
  findings.push_back({Verdict::problem, "session bus", "none: " + facts.sessionBusProblem,
                      "Run Kelvane within a desktop session, where DBUS_SESSION_BUS_ADDRESS names "
                      "its bus.",
                      true});
}

}  // namespace

std::vector<Finding> diagnose(const DoctorFacts& facts) {
  std::vector<Finding> findings;
  diagnoseSessionBus(facts, findings);
  if (facts.sessionBusProblem.empty()) diagnoseTray(facts, findings);
  diagnosePower(facts.power, findings);
  diagnoseDesktop(facts, findings);
  diagnosePreferences(facts.preferences, findings);
  return findings;
}

}  // namespace kelvane
