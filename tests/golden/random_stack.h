#pragma once

#include <cstdint>
#include <vector>

#include "effect/QxEffect.h"
#include "golden/coverage_file.h"
#include "support/random.h"

namespace QxFontEffect::test {

/// Adds one effect of the type with random settings through the stack's public adders; some lie outside their ranges.
void addRandomEffect(Rng& rng, QxEffect& stack, int type);

/// Draws scene `number`: a piece of the stored coverage, in a bitmap that sometimes cuts it, under up to six random
/// effects, in plain or layer mode. `onlyType` above 0 makes it that one effect alone.
///
/// @return the picture, 4 bytes a pixel, with its width and height in front.
std::vector<uint8_t> drawScene(uint32_t number, int onlyType, const Coverage& stored);

/// The usual CRC-32 (polynomial 0xEDB88320), continued from `crc`; start with 0.
uint32_t crc32(uint32_t crc, const std::vector<uint8_t>& bytes);

}  // namespace QxFontEffect::test
