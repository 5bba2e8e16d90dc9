#include "programs/kelvane-commands/doctor/report.h"

#include <algorithm>

#include <glib.h>
#include <nlohmann/json.hpp>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {
namespace {

constexpr std::size_t kVerdictWidth = 9;
constexpr std::size_t kSubjectWidth = 15;

const char* wordOf(Finding::Verdict verdict) {
  switch (verdict) {
    case Finding::Verdict::ok:
      return "ok";
    case Finding::Verdict::note:
      return "note";
    case Finding::Verdict::problem:
      break;
  }
  return "problem";
}

std::string padded(std::string text, std::size_t width) {
  text.resize(std::max(width, text.size()), ' ');
  return text;
}

std::string onOneLine(const std::string& text) {
  const GCharPtr valid(g_utf8_make_valid(
      text.data(), static_cast<gssize>(std::min<std::size_t>(text.size(), 4096))));
  std::string line;
  for (const char* at = valid.get(); *at;) {
    const char* next = g_utf8_next_char(at);
    line += g_unichar_iscntrl(g_utf8_get_char(at)) ? std::string(" ") : std::string(at, next);
    at = next;
  }
  return line;
}

}  // namespace

std::string plainTextOf(const std::vector<Finding>& findings) {
  std::string text;
  for (const Finding& finding : findings) {
    text += padded(wordOf(finding.verdict), kVerdictWidth) +
            padded(finding.subject, kSubjectWidth) + onOneLine(finding.text) + "\n";
    if (!finding.remedy.empty())
      text += std::string(kVerdictWidth + kSubjectWidth, ' ') + onOneLine(finding.remedy) + "\n";
  }
  return text;
}

std::string jsonOf(const std::vector<Finding>& findings) {
  using Json = nlohmann::ordered_json;
  Json list = Json::array();
  for (const Finding& finding : findings)
    list.push_back({{"verdict", wordOf(finding.verdict)},
                    {"subject", finding.subject},
                    {"text", onOneLine(finding.text)},
                    {"remedy", finding.remedy.empty() ? Json() : Json(onOneLine(finding.remedy))}});
  return Json{{"canBeSeen", canBeSeen(findings)}, {"findings", std::move(list)}}.dump();
}

bool canBeSeen(const std::vector<Finding>& findings) {
  return std::ranges::none_of(findings, &Finding::keepsItemAway);
}

}  // namespace kelvane
