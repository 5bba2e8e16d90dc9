#pragma once

#include "../../../darwin/objc/NSObject.h"
