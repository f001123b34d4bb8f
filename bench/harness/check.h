#pragma once

#include "harness/row.h"

namespace qxbench {

/// Runs every contender of a row once and compares: the plain loops must leave the same bytes, a peer nearly the same.
/// Prints a line for a row that fails.
bool checkRow(const Row& row, bool withPeer);

}  // namespace qxbench
