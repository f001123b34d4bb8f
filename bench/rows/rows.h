#pragma once

#include <vector>

#include "harness/row.h"
#include "scene/masks.h"

/// The lines of the table. Masks must outlive them.
namespace qxbench {

void addBlendRows(const std::vector<Mask>& masks, Rows& rows);
void addLayerRows(const std::vector<Mask>& masks, Rows& rows);
void addKernelRows(const std::vector<Mask>& masks, Rows& rows);
void addShadowRows(const std::vector<Mask>& masks, Rows& rows);
void addGlowRows(const std::vector<Mask>& masks, Rows& rows);
void addStrokeRows(const std::vector<Mask>& masks, Rows& rows);
void addReliefRows(const std::vector<Mask>& masks, Rows& rows);
void addFillRows(const std::vector<Mask>& masks, Rows& rows);

/// A whole picture through the effect stack and each of its parts alone. The parts' names begin with kPartPrefix.
void addPictureRows(const Mask& mask, Rows& rows);
constexpr char kPicture[] = "whole picture";
constexpr char kPartPrefix[] = "part: ";

}  // namespace qxbench
