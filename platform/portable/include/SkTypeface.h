#pragma once

#include <memory>

#include "SkRefCnt.h"
#include "SkStream.h"
#include "SkTypes.h"

/// One face of a font file. Fonts on different threads may share it: whatever needs the rasteriser takes the
/// face's own lock.
class SkTypeface : public SkRefCnt {
public:
    /// Opens the face of a font in memory. The bytes are read in place for as long as the typeface lives.
    ///
    /// @param index  face within a collection, 0 for a plain file.
    /// @return null for bytes that are no font and for an index that the file does not have.
    static sk_sp<SkTypeface> MakeFromStream(std::unique_ptr<SkStreamAsset> stream, int index = 0);

    SkFontID uniqueID() const { return mUniqueId; }

protected:
    SkTypeface();

private:
    const SkFontID mUniqueId;
};
