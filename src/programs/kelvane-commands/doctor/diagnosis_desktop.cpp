// What else Kelvane uses of the desktop: notifications, the portal, the start at login.

#include <string>

#include "programs/kelvane-commands/doctor/diagnosis.h"

namespace kelvane {
namespace {

using Verdict = Finding::Verdict;

Finding findingOfNotifier(const NotifierFacts& notifier) {
  const std::string subject = "notifications";
  switch (notifier.presence) {
    case Presence::startable:
      return {Verdict::ok, subject, "no server runs yet, the bus starts one when it is wanted"};
    case Presence::absent:
      return {Verdict::problem, subject, "no server: what Kelvane has to tell is not seen",
              "Run a notification daemon, for example dunst on X11 or mako on Wayland."};
    case Presence::running:
      break;
  }
  if (!notifier.isAnswering)
    return {Verdict::problem, subject, "the server does not answer",
            "Restart the desktop’s notification daemon."};
  std::string text = notifier.name + " " + notifier.version + ":";
  for (const std::string& ability : notifier.abilities) text += " " + ability;
  if (notifier.abilities.empty()) text += " no abilities";
  return {Verdict::ok, subject, text};
}

Finding findingOfPortal(Presence portal) {
  switch (portal) {
    case Presence::running:
      return {Verdict::ok, "portal", "it runs"};
    case Presence::startable:
      return {Verdict::note, "portal", "it does not run, and Kelvane does not start it"};
    case Presence::absent:
      break;
  }
  return {Verdict::note, "portal", "none, so the desktop’s light or dark may not be known",
          "Install xdg-desktop-portal, and the part of it that is made for this desktop."};
}

Finding findingOfLogin(const LoginFacts& login) {
  const std::string subject = "login";
  const char* const renew = "In Kelvane’s Preferences… switch “Launch at login” off and on again.";
  if (!login.problem.empty())
    return {Verdict::problem, subject, login.path + " can’t be read: " + login.problem, renew};
  if (!login.entry)
    return {Verdict::note, subject, "not started: there is no " + login.path,
            "To have it started, switch on “Launch at login” in Kelvane’s Preferences…."};
  const AutostartReading& entry = *login.entry;
  if (!entry.isStarted)
    return {Verdict::problem, subject, login.path + " is no use: " + entry.reason, renew};
  if (!entry.program.empty() && !login.hasProgram)
    return {Verdict::problem, subject,
            login.path + " starts " + entry.program + ", which is not there", renew};
  if (!*entry.isStarted)
    return {Verdict::note, subject, "not started: " + entry.reason + " in " + login.path,
            "To have it started, switch it on in the desktop’s settings or in Kelvane’s."};
  return {Verdict::ok, subject, "started by " + login.path};
}

}  // namespace

void diagnoseDesktop(const DoctorFacts& facts, std::vector<Finding>& findings) {
  if (facts.sessionBusProblem.empty()) {
    findings.push_back(findingOfNotifier(facts.notifier));
    findings.push_back(findingOfPortal(facts.portal));
  }
  findings.push_back(findingOfLogin(facts.login));
}

}  // namespace kelvane
