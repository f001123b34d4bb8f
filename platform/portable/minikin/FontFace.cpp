#include "FontFace.h"

#include <hb-ot.h>

#include <algorithm>
#include <climits>

namespace minikin {

namespace {

constexpr hb_tag_t kOs2Tag = HB_TAG('O', 'S', '/', '2');
constexpr hb_tag_t kColorBitmapTag = HB_TAG('C', 'B', 'D', 'T');

struct BlobDeleter {
    void operator()(hb_blob_t* blob) const { hb_blob_destroy(blob); }
};
using Blob = std::unique_ptr<hb_blob_t, BlobDeleter>;

struct FaceDeleter {
    void operator()(hb_face_t* face) const { hb_face_destroy(face); }
};
using Face = std::unique_ptr<hb_face_t, FaceDeleter>;

Face openFace(const void* data, size_t size, int index) {
    const bool usable = data != nullptr && size > 0 && size <= UINT_MAX && index >= 0;
    Blob blob(usable ? hb_blob_create(static_cast<const char*>(data), static_cast<unsigned>(size),
                                      HB_MEMORY_MODE_READONLY, nullptr, nullptr)
                     : hb_blob_get_empty());
    return Face(hb_face_create(blob.get(), usable ? static_cast<unsigned>(index) : 0));
}

FontStyle readStyle(hb_face_t* face) {
    constexpr unsigned kWeightClass = 4;
    constexpr unsigned kSelection = 62;  // bit 0: italic
    const Blob table(hb_face_reference_table(face, kOs2Tag));
    unsigned size = 0;
    const char* bytes = hb_blob_get_data(table.get(), &size);
    if (size < kSelection + 2) return FontStyle();

    const auto u16 = [bytes](unsigned offset) {
        return static_cast<unsigned>(static_cast<uint8_t>(bytes[offset]) << 8 |
                                     static_cast<uint8_t>(bytes[offset + 1]));
    };
    const unsigned weight = std::clamp(u16(kWeightClass), 1u, 1000u);
    const bool italic = (u16(kSelection) & 1) != 0;
    return FontStyle(static_cast<uint16_t>(weight), italic ? FontStyle::Slant::ITALIC : FontStyle::Slant::UPRIGHT);
}

}  // namespace

FontFace::FontFace(const void* data, size_t size, int index, const std::vector<FontVariation>& axes) {
    for (auto& page : mPages) page.store(nullptr, std::memory_order_relaxed);

    const Face face = openFace(data, size, index);
    mStyle = readStyle(face.get());
    const Blob bitmaps(hb_face_reference_table(face.get(), kColorBitmapTag));
    mHasColorBitmaps = hb_blob_get_length(bitmaps.get()) > 0;

    mFont.reset(hb_font_create(face.get()));
    hb_ot_font_set_funcs(mFont.get());
    if (!axes.empty()) {
        std::vector<hb_variation_t> positions;
        positions.reserve(axes.size());
        for (const FontVariation& axis : axes) positions.push_back({axis.axisTag, axis.value});
        hb_font_set_variations(mFont.get(), positions.data(), static_cast<unsigned>(positions.size()));
    }
    hb_font_make_immutable(mFont.get());
}

FontFace::~FontFace() {
    for (auto& page : mPages) delete page.load(std::memory_order_relaxed);
}

bool FontFace::hasGlyph(uint32_t codePoint) const {
    if (codePoint >= kCodePoints) return false;
    const uint32_t bit = codePoint % kPageSize;
    return (page(codePoint / kPageSize)[bit / 32] >> (bit % 32) & 1) != 0;
}

bool FontFace::hasVariant(uint32_t codePoint, uint32_t variationSelector) const {
    hb_codepoint_t glyph = 0;
    return hb_font_get_variation_glyph(mFont.get(), codePoint, variationSelector, &glyph);
}

const FontFace::Page& FontFace::page(uint32_t number) const {
    std::atomic<const Page*>& slot = mPages[number];
    if (const Page* known = slot.load(std::memory_order_acquire)) return *known;

    auto fresh = std::make_unique<Page>();
    for (uint32_t i = 0; i < kPageSize; ++i) {
        hb_codepoint_t glyph = 0;
        if (hb_font_get_nominal_glyph(mFont.get(), number * kPageSize + i, &glyph) && glyph != 0) {
            (*fresh)[i / 32] |= 1u << (i % 32);
        }
    }
    // Two threads may have asked for the same page; the first to publish wins, both found the same bits.
    const Page* expected = nullptr;
    if (slot.compare_exchange_strong(expected, fresh.get(), std::memory_order_acq_rel)) return *fresh.release();
    return *expected;
}

}  // namespace minikin
