// Loading a table for a caller that wants to go on when there is none.
#pragma once

#include "Taula.h"

namespace lemara {

/// As Taula::kargatu, but a file that can't be opened, or one that brings no state, gives
/// false. Never ends the process.
bool load_table(Taula& table);

}  // namespace lemara
