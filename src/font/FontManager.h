#pragma once

#include <minikin/FontFamily.h>
#include <minikin/MinikinFont.h>

#include <memory>
#include <vector>

namespace QxFontEffect {

class List;
class QxFontManagerImpl;
class QxString;
struct QxFontFamily;

/// The process-wide registry of fonts. Turns font files and font bytes into the families that text is shaped with:
/// a text's own font first, then every system family loaded so far.
///
/// Fonts stay registered for the life of the process; a file is mapped once, whatever faces of it are used. Every
/// member may be called from any thread: one lock, shared by all managers, guards them. Nothing throws; failures are
/// false. A manager whose memory could not be had answers false with error 8.
class FontManager {
public:
    /// The process's manager, made at first use. It is taken down at exit, after which its members fail with error
    /// 8; fonts in use then stay readable.
    static FontManager* GetInstance();

    /// A manager of one's own, for tools and tests.
    FontManager();
    FontManager(const FontManager&) = delete;
    FontManager& operator=(const FontManager&) = delete;
    /// Releases the fonts and the system families. Fonts inside families that were handed out live on with them.
    ~FontManager();

    /// Whether the face is registered. Null or empty path: false.
    bool IsExisting(const char* path, int ttcIndex);

    /// Registers one face.
    ///
    /// @param path           names the font, and the file to map when there is no buffer. A file that could not be
    ///                       read is not tried again.
    /// @param buffer         null, or `size` font bytes made with `new char[]`; taken over whatever the result is.
    /// @param size           ignored without buffer.
    /// @param ttcIndex       face within a collection, 0 for a plain file.
    /// @param checkExisting  succeed at once when the face is registered. Either way the first registration wins.
    bool AddMinikinFont(const char* path, char* buffer, unsigned int size, int ttcIndex, bool checkExisting);
    bool AddMinikinFont(QxString* path, char* buffer, unsigned int size, int ttcIndex, bool checkExisting);

    /// Gives a registered face; never loads one.
    bool GetMinikinFont(std::shared_ptr<minikin::MinikinFont>& out, QxString* path, int ttcIndex);

    /// Registers every font of a family; the first failure ends it, and fonts before it stay registered.
    bool BuildMinikinFamily(QxFontFamily* family);

    /// Builds the first system family of exactly this locale list that is not loaded yet.
    /// @return whether there was one, even if it could not be built.
    bool LoadMinikinFontFamily(unsigned int localeListId);

    bool IsSystemFontFamiliesAlreadySet();

    /// Adopts the system's families (a List of QxFontFamily, with everything in it), the first time only; a list
    /// given later stays the caller's. True either way.
    bool SetSystemFontFamilies(List* families);

    /// Appends the families for one text. May append nothing and still succeed.
    ///
    /// @param familyName  null or the wished family; matters for medium weights only.
    /// @param userFont    null or the path of the text's own font; its name gives the style, registered or not.
    /// @param weight      in: the weight so far; out: the user font's, when its name says one.
    bool GetMinikinFontFamilies(QxString* familyName, std::vector<std::shared_ptr<minikin::FontFamily>>& out,
                                QxString* userFont, int& weight);

private:
    class ExitGuard;

    void takeDown(bool keepFonts);

    QxFontManagerImpl* mImpl;
};

}  // namespace QxFontEffect
