#pragma once

#include <vector>

#include "SkFont.h"
#include "SkPoint.h"
#include "SkRect.h"
#include "SkRefCnt.h"

/// Runs of positioned glyphs, ready to draw. Immutable.
class SkTextBlob : public SkRefCnt {
public:
    /// Glyph i stands with its origin at points[i], relative to where the blob is drawn.
    struct Run {
        SkFont font;
        std::vector<SkGlyphID> glyphs;
        std::vector<SkPoint> points;
    };

    explicit SkTextBlob(std::vector<Run> runs) : mRuns(std::move(runs)) {}
    const std::vector<Run>& runs() const { return mRuns; }

private:
    const std::vector<Run> mRuns;
};

/// Collects runs into a blob.
class SkTextBlobBuilder {
public:
    /// Where the caller writes a run; valid until the next call on the builder.
    struct RunBuffer {
        SkGlyphID* glyphs;
        SkScalar* pos;

        /// `pos` as x, y pairs.
        SkPoint* points() const { return reinterpret_cast<SkPoint*>(pos); }
    };

    /// Starts a run of `count` glyphs, all 0 at the origin until the caller fills them in.
    ///
    /// @param bounds  a hint for quick rejection, not looked at.
    /// @return null pointers, and no run, for a count below 1.
    const RunBuffer& allocRunPos(const SkFont& font, int count, const SkRect* bounds = nullptr);

    /// The runs so far as a blob, null when there are none. The builder is empty afterwards.
    sk_sp<SkTextBlob> make();

private:
    std::vector<SkTextBlob::Run> mRuns;
    RunBuffer mBuffer{nullptr, nullptr};
};
