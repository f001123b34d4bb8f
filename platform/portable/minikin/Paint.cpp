#include <hwui/Paint.h>

namespace android {

namespace {

/// android.graphics.Paint's flags.
enum JavaFlag : uint32_t {
    kAntiAlias = 0x01,
    kFilterBitmap = 0x02,
    kDither = 0x04,
    kUnderline = 0x08,
    kStrikeThru = 0x10,
    kFakeBold = 0x20,
    kLinearMetrics = 0x40,
    kSubpixel = 0x80,
    kDevKern = 0x100,
    kEmbeddedBitmaps = 0x400,
    kAutoHinting = 0x800,
};

}  // namespace

Paint::Paint() {
    mFont.setEdging(SkFont::Edging::kAlias);
}
Paint::Paint(const Paint&) = default;
Paint::~Paint() = default;
Paint& Paint::operator=(const Paint&) = default;

void Paint::reset() {
    *this = Paint();
}

void Paint::setAntiAlias(bool antiAlias) {
    SkPaint::setAntiAlias(antiAlias);
    mFont.setEdging(antiAlias ? SkFont::Edging::kAntiAlias : SkFont::Edging::kAlias);
}

void Paint::setJavaFlags(uint32_t flags) {
    const auto has = [flags](JavaFlag flag) { return (flags & flag) != 0; };
    setAntiAlias(has(kAntiAlias));
    setFilterQuality(has(kFilterBitmap) ? kLow_SkFilterQuality : kNone_SkFilterQuality);
    setDither(has(kDither));
    mUnderline = has(kUnderline);
    mStrikeThru = has(kStrikeThru);
    mFont.setEmbolden(has(kFakeBold));
    mFont.setLinearMetrics(has(kLinearMetrics));
    mFont.setSubpixel(has(kSubpixel));
    mDevKern = has(kDevKern);
    mFont.setEmbeddedBitmaps(has(kEmbeddedBitmaps));
    mFont.setForceAutoHinting(has(kAutoHinting));
}

uint32_t Paint::getJavaFlags() const {
    uint32_t flags = 0;
    const auto add = [&flags](bool on, JavaFlag flag) { flags |= on ? flag : 0u; };
    add(isAntiAlias(), kAntiAlias);
    add(getFilterQuality() != kNone_SkFilterQuality, kFilterBitmap);
    add(isDither(), kDither);
    add(mUnderline, kUnderline);
    add(mStrikeThru, kStrikeThru);
    add(mFont.isEmbolden(), kFakeBold);
    add(mFont.isLinearMetrics(), kLinearMetrics);
    add(mFont.isSubpixel(), kSubpixel);
    add(mDevKern, kDevKern);
    add(mFont.isEmbeddedBitmaps(), kEmbeddedBitmaps);
    add(mFont.isForceAutoHinting(), kAutoHinting);
    return flags;
}

}  // namespace android
