#pragma once

#include <string>
#include <utility>
#include <vector>

#include "job.h"
#include "picture.h"

namespace qxrender {

/// A value that the library did not take as it was given.
struct Adjustment {
    std::string effect;
    std::string parameter;
    double asked;
    double used;
};

struct Rendering {
    Picture picture;
    int textX = 0;  ///< where the view's top-left corner lies in the picture
    int textY = 0;
    int viewWidth = 0;
    int viewHeight = 0;
    Padding margins;  ///< what the effect stack asks for around the view
    int lines = 0;    ///< drawn
    bool layerMode = false;
    std::vector<Adjustment> adjustments;
    std::vector<std::pair<const char*, double>> milliseconds;  ///< a stage each, in order
};

/// Draws a job through the library's public classes. Throws Failure.
///
/// The first text of a process chooses its fallback fonts.
Rendering render(const Job& job);

}  // namespace qxrender
