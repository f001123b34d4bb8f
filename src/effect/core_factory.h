#pragma once

#include "effect/QxECoreBase.h"

namespace QxFontEffect {

/// A new core without id and record, the caller's to delete. Null for a number that no core has and when memory fails.
QxECoreBase* makeCore(int type);

}  // namespace QxFontEffect
