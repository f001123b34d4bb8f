#pragma once

#include <cstdint>

namespace QxFontEffect {

/// Base of the records that hold an effect's settings.
///
/// A record serialises to a short string that identifies the effect and those settings that decide its pixels: a
/// letter, then bytes of 128 and more only. The effect stack joins the strings of its cores into a cache key.
class QxProperty {
public:
    QxProperty(unsigned int effectColor, float effectOpacity) : color(effectColor), opacity(effectOpacity) {}
    QxProperty(const QxProperty&) = default;
    QxProperty& operator=(const QxProperty&) = default;
    virtual ~QxProperty() = default;

    /// Upper bound of the bytes `toSequentialChar` writes, its closing NUL not counted. Glows and gradients report 10
    /// bytes a stop and write 9; both numbers are part of the format.
    virtual int getSequentialCharLength() = 0;

    /// Writes the string at `*cursor` with a closing NUL and moves `*cursor` onto that NUL. Returns 1; 0 for a null
    /// cursor.
    virtual int toSequentialChar(char** cursor) = 0;

    uint32_t color;  ///< A 24-31, R 16-23, G 8-15, B 0-7
    float opacity;   ///< 0..1, stored as given
};

}  // namespace QxFontEffect
