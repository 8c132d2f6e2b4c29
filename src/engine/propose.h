// Proposals for a caller that can't wait.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Lemara.h"

namespace lemara {

/// Lemara::lortu_ezzg_proposamenak, which asks `go_on` before each candidate and ends
/// when it answers false, with what was found until then. An empty `go_on` is never
/// asked.
std::vector<std::string> propose(const Lemara& engine, const std::string& hitza,
                                 const std::function<bool()>& go_on);

}  // namespace lemara
