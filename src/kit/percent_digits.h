// How a charge fraction is written as whole percent. Pure, any thread.
#pragma once

#include <string>

namespace kelvane {

// 0.4 is "40"; a half goes to the even percent. What is no number, or too large for an integer,
// reads as printf writes it ("inf", "nan").
std::string percentDigits(double fraction);

}  // namespace kelvane
