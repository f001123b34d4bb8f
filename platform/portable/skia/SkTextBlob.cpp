#include "SkTextBlob.h"

const SkTextBlobBuilder::RunBuffer& SkTextBlobBuilder::allocRunPos(const SkFont& font, int count, const SkRect*) {
    mBuffer = {nullptr, nullptr};
    if (count < 1) return mBuffer;

    const size_t glyphs = static_cast<size_t>(count);
    mRuns.push_back({font, std::vector<SkGlyphID>(glyphs), std::vector<SkPoint>(glyphs, SkPoint{0, 0})});
    mBuffer = {mRuns.back().glyphs.data(), &mRuns.back().points.front().fX};
    return mBuffer;
}

sk_sp<SkTextBlob> SkTextBlobBuilder::make() {
    mBuffer = {nullptr, nullptr};
    if (mRuns.empty()) return nullptr;
    sk_sp<SkTextBlob> blob = sk_make_sp<SkTextBlob>(std::move(mRuns));
    mRuns.clear();
    return blob;
}
