#pragma once

#include "SkTypes.h"

using SkScalar = float;
