#include "programs/kelvane-commands/doctor_command.h"

#include <ostream>

#include "programs/kelvane-commands/doctor/gathering.h"
#include "programs/kelvane-commands/doctor/report.h"

namespace kelvane {

int runDoctorCommand(const PowerOptions& power, bool asJson, std::ostream& out) {
  const auto findings = diagnose(gatherFacts(power));
  if (asJson)
    out << jsonOf(findings) << std::endl;
  else
    out << plainTextOf(findings) << std::flush;
  return canBeSeen(findings) ? 0 : 1;
}

}  // namespace kelvane
