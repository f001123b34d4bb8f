#pragma once

namespace QxFontEffect {

class QxString;

/// What the name of a font file says about its style.
struct UserFontStyle {
    bool italic;
    int weight;
};

/// Reads the style off a font path such as "/fonts/Name-Bold.ttf".
///
/// The first of -Italic, -Thin, -Light, -Medium, -Black, -Bold that stands anywhere behind the first character and
/// before the last decides. None of them leaves the weight as it was; so does "-BoldItalic".
///
/// @param weight      the weight so far.
/// @param familyName  null or the wished family.
UserFontStyle userFontStyle(const QxString& path, const QxString* familyName, int weight);

/// Whether the path names one of the system's own Roboto files.
bool isSystemRoboto(const QxString& path);

}  // namespace QxFontEffect
