// What this application says of itself: a plain value that each `main` fills, from the build or
// from the application's bundle. Any thread.
#pragma once

#include <string>

namespace kelvane {

struct ApplicationInformation {
  std::string name;        // "Kelvane"
  std::string identifier;  // "org.kelvane.Kelvane"
  std::string version;     // "1.2.0"
  std::string build;       // "345"
  std::string copyright;   // one line
};

}  // namespace kelvane
