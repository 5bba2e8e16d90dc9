// Since when something exists is checked by the build for macOS.
#pragma once

#define API_AVAILABLE(...)
#define API_DEPRECATED(...)
#define API_DEPRECATED_WITH_REPLACEMENT(...)
