#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <memory>
#include <mutex>

#include "SkTypeface.h"

namespace portable {

/// The one FreeType library of the process, null when it could not be made.
FT_Library fontLibrary();

/// What a face was last set to. Setting a size makes FreeType run the font's own size program again, which costs
/// more than a glyph, so it is only done when something changes.
struct FaceSetting {
    FT_F26Dot6 width = 0;
    FT_F26Dot6 height = 0;
    FT_Matrix matrix = {0x10000, 0, 0, 0x10000};

    friend bool operator==(const FaceSetting& a, const FaceSetting& b) {
        return a.width == b.width && a.height == b.height && a.matrix.xx == b.matrix.xx && a.matrix.xy == b.matrix.xy &&
               a.matrix.yx == b.matrix.yx && a.matrix.yy == b.matrix.yy;
    }
};

/// A typeface: one FreeType face over the stream's bytes, which it keeps.
class FaceTypeface : public SkTypeface {
public:
    FaceTypeface(std::unique_ptr<SkStreamAsset> stream, FT_Face face, int index);
    ~FaceTypeface() override;

    SkStreamAsset& stream() const { return *mStream; }
    int index() const { return mIndex; }
    bool hasColorBitmaps() const { return mHasColorBitmaps; }

    /// Guards the two below: a face and its glyph slot belong to one thread at a time.
    std::mutex& mutex() const { return mMutex; }
    FT_Face face() const { return mFace; }
    FaceSetting& setting() const { return mSetting; }

private:
    const std::unique_ptr<SkStreamAsset> mStream;
    const int mIndex;
    FT_FaceRec_* const mFace;
    const bool mHasColorBitmaps;
    mutable std::mutex mMutex;
    mutable FaceSetting mSetting;
};

}  // namespace portable
