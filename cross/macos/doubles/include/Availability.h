// Nothing is too new for this system: what @available guards is always taken.
#pragma once
