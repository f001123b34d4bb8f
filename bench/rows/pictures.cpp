#include <cstring>
#include <memory>
#include <string>

#include "effect/QxEffect.h"
#include "effect/QxLinearGradient.h"
#include "effect/QxOuterShadow.h"
#include "effect/QxStroke.h"
#include "effect/QxText.h"
#include "pixel/QxBlender.h"
#include "pixel/kernel/layers.h"
#include "plain/plain.h"
#include "rows/rows.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

constexpr uint32_t kTextColor = 0xFF2040C0u, kStrokeColor = 0xFFFFFFFFu, kShadowColor = 0xFF000000u;
constexpr float kStrokeWidth = 5.0f, kShadowAngle = 135.0f, kShadowDistance = 8.0f, kShadowRadius = 20.0f;
constexpr int kCentred = 0;
QxGradient gStops[] = {{0xFFFF3020u, 1.0f, 0.0f}, {0xFF40C040u, 1.0f, 0.4f}, {0xFF2040FFu, 1.0f, 1.0f}};
constexpr int kStops = 3;

/// A headline with a gradient, a centred stroke and a shadow, which makes the stack go through its colour layer.
class Picture {
public:
    explicit Picture(const Mask& mask) : mMask(mask.coverage) {
        // What runs first lies on top, and the stack runs what was added last first.
        mStack.addText(kTextColor);
        mStack.addOuterShadowText(kShadowAngle, kShadowDistance, kShadowRadius, kShadowColor, 0.6f);
        mStack.addStrokeText(kStrokeWidth, kStrokeColor, 1.0f, 0, kCentred);
        mStack.addLinearGradientText(90.0f, 1.0f, 1.0f, kStops, gStops);
        left = mStack.getLeftOffset();
        top = mStack.getTopOffset();
        width = mask.width + left + mStack.getRightOffset();
        height = mask.height + top + mStack.getBottomOffset();
        mGlyph = {mMask.data(), static_cast<uint16_t>(mask.width), static_cast<uint16_t>(mask.height), 0, 0};
        mOutput = std::make_unique<QxBitmap>(static_cast<unsigned>(width), static_cast<unsigned>(height), 4);
    }

    QxEffect& stack() { return mStack; }
    QxGlyph& glyph() { return mGlyph; }
    QxBitmap& output() { return *mOutput; }
    size_t bytes() const { return 4 * static_cast<size_t>(width) * static_cast<size_t>(height); }
    void reset() { std::memset(mOutput->pixels, 0, bytes()); }

    void render() {
        mStack.initEffect(width, height);
        mStack.setDstBitmap(mOutput.get());
        mStack.renderEffectLayer(left, top, &mGlyph);
        mStack.doEffectPostProcessing();
        mStack.compositeLayers(mOutput.get());
    }

    std::vector<float> result() const { return std::vector<float>(mOutput->pixels, mOutput->pixels + bytes()); }

    int left, top, width, height;

private:
    std::vector<uint8_t> mMask;
    QxEffect mStack;
    QxGlyph mGlyph;
    std::unique_ptr<QxBitmap> mOutput;
};

/// The picture taken apart: bitmaps as the stack makes them, and the step of each part in the order they run.
class Parts {
public:
    explicit Parts(Picture& picture)
        : mPicture(picture),
          mCoverage(static_cast<unsigned>(picture.width), static_cast<unsigned>(picture.height), 1),
          mLayer(mCoverage.width, mCoverage.height, 4),
          mRect(picture.left, picture.top, picture.left + picture.glyph().width, picture.top + picture.glyph().height) {
    }

    void drawCoverage() {
        QxBlender::drawBitmap(mPicture.left, mPicture.top, &mCoverage, mPicture.glyph().pixels, mPicture.glyph().width,
                              mPicture.glyph().height, 0xFF000000u);
    }
    void compose() {
        kernel::composeLayers(mLayer.pixels, mCoverage.pixels, 255, mPicture.output().pixels,
                              int64_t{mCoverage.width} * mCoverage.height);
    }
    /// Where the stack sends what a core of this type paints.
    ParamPostProcessing paramsOf(int type) {
        QxBitmap* const output = &mPicture.output();
        const bool outside = type == QXE_STROKE || type == QXE_OUTER_SHADOW;
        return {outside ? &mLayer : output, &mCoverage, &mRect, 1, type == QXE_STROKE ? output : nullptr};
    }
    void runCore(int type) {
        ParamPostProcessing p = paramsOf(type);
        mPicture.stack().getEffect(type)->doPostProcessing(&p);
    }

    void runPlainCores() {
        auto& stack = mPicture.stack();
        plain::linearGradient(record<QxLinearGradientProperty>(stack, QXE_LINEAR_GRADIENT),
                              paramsOf(QXE_LINEAR_GRADIENT));
        plain::stroke(record<QxStrokeProperty>(stack, QXE_STROKE), paramsOf(QXE_STROKE));
        plain::outerShadow(record<QxOuterShadowProperty>(stack, QXE_OUTER_SHADOW), paramsOf(QXE_OUTER_SHADOW));
        plain::dstOver8(mCoverage.pixels, kTextColor, mPicture.output().pixels, pixels());
        plain::compose(mLayer.pixels, mCoverage.pixels, mPicture.output().pixels, pixels());
        plain::unpremultiply(255, mPicture.output().pixels, pixels());
    }

    void clear() {
        mPicture.reset();
        std::memset(mCoverage.pixels, 0, static_cast<size_t>(pixels()));
        std::memset(mLayer.pixels, 0, mPicture.bytes());
    }

    struct Snapshot {
        std::vector<uint8_t> coverage, layer, output;
    };
    Snapshot snapshot() {
        const QxBitmap& output = mPicture.output();
        return {{mCoverage.pixels, mCoverage.pixels + pixels()},
                {mLayer.pixels, mLayer.pixels + mPicture.bytes()},
                {output.pixels, output.pixels + mPicture.bytes()}};
    }
    std::vector<float> result() {
        const Snapshot now = snapshot();
        std::vector<float> all(now.coverage.begin(), now.coverage.end());
        all.insert(all.end(), now.layer.begin(), now.layer.end());
        all.insert(all.end(), now.output.begin(), now.output.end());
        return all;
    }
    void restore(const Snapshot& s) {
        std::memcpy(mCoverage.pixels, s.coverage.data(), s.coverage.size());
        std::memcpy(mLayer.pixels, s.layer.data(), s.layer.size());
        std::memcpy(mPicture.output().pixels, s.output.data(), s.output.size());
    }

private:
    template <typename Record>
    static const Record& record(QxEffect& stack, int type) {
        return *static_cast<Record*>(stack.getEffect(type)->getProperty());
    }
    int64_t pixels() const { return int64_t{mCoverage.width} * mCoverage.height; }

    Picture& mPicture;
    QxBitmap mCoverage, mLayer;
    QxRect mRect;
};

struct PartKind {
    const char* name;
    void (*run)(Parts&);
};

constexpr PartKind kParts[] = {
    {"coverage", [](Parts& parts) { parts.drawCoverage(); }},
    {"linear gradient", [](Parts& parts) { parts.runCore(QXE_LINEAR_GRADIENT); }},
    {"stroke centred 5", [](Parts& parts) { parts.runCore(QXE_STROKE); }},
    {"outer shadow 20", [](Parts& parts) { parts.runCore(QXE_OUTER_SHADOW); }},
    {"fill", [](Parts& parts) { parts.runCore(QXE_TEXT); }},
    {"composition", [](Parts& parts) { parts.compose(); }},
};

struct Stage {
    explicit Stage(const Mask& mask) : picture(mask), parts(picture) {}
    Picture picture;
    Parts parts;
    Parts::Snapshot before;
};

Case wholePicture(const Mask& mask) {
    const auto stage = std::make_shared<Stage>(mask);
    Case work;
    work.reset = [stage] { stage->parts.clear(); };
    work.ours = [stage] { stage->picture.render(); };
    work.plain = [stage] {
        stage->parts.drawCoverage();
        stage->parts.runPlainCores();
    };
    work.result = [stage] { return stage->picture.result(); };
    return work;
}

Case partOf(const Mask& mask, size_t index) {
    const auto stage = std::make_shared<Stage>(mask);
    for (size_t i = 0; i < index; ++i) kParts[i].run(stage->parts);
    stage->before = stage->parts.snapshot();
    Case work;
    work.reset = [stage] { stage->parts.restore(stage->before); };
    work.ours = [stage, index] { kParts[index].run(stage->parts); };
    work.result = [stage] { return stage->parts.result(); };
    return work;
}

}  // namespace

void addPictureRows(const Mask& mask, Rows& rows) {
    rows.push_back({kPicture, mask.name, "", mask.pixels(), [&mask] { return wholePicture(mask); }});
    for (size_t i = 0; i < std::size(kParts); ++i)
        rows.push_back({std::string(kPartPrefix) + kParts[i].name, mask.name, "", mask.pixels(),
                        [&mask, i] { return partOf(mask, i); }});
}

}  // namespace qxbench
