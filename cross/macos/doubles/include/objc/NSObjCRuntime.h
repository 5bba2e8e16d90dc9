#pragma once

#include "../../../darwin/objc/NSObjCRuntime.h"
