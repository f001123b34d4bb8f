#pragma once

namespace minikin {

/// A paragraph measured beforehand, whose layouts can be reused. The portable layer never makes one: callers pass null.
class MeasuredText;

}  // namespace minikin
