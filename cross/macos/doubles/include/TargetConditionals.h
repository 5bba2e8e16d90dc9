// Nobody asks yet.
#pragma once
