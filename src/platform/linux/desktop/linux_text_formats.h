// Which clock the user's environment asks for: the time zone of the C library, and 12 or 24 hours
// by the time locale. The texts themselves are English, made by the portable formats. Main thread.
#pragma once

#include "platform/portable/text_formats.h"

namespace kelvane {

// Whether a strftime(3) time format (nl_langinfo's T_FMT) writes 12-hour clock times.
bool isTwelveHourFormat(const std::string& format);

// The clock of the environment: 12 hours if the locale that LC_ALL, LC_TIME or LANG names (in this
// order, as POSIX has it) writes the time so, 24 hours when it has no such locale installed. Reads
// the locale through an object of its own: the process stays in the "C" locale. The zone is asked
// anew at each time, so a change of /etc/localtime is followed.
ClockStyle environmentClockStyle();

class LinuxTextFormats : public PortableTextFormats {
 public:
  LinuxTextFormats() : PortableTextFormats(environmentClockStyle()) {}
};

}  // namespace kelvane
