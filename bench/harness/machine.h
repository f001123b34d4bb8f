#pragma once

#include <string>
#include <utility>
#include <vector>

namespace qxbench {

/// What figures depend on: processor, load, compiler, flags, date, the instructions chosen, the peers. Names with
/// values, in the order to print.
std::vector<std::pair<std::string, std::string>> describeMachine(bool withPeers);

}  // namespace qxbench
