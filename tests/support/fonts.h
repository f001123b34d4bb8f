#pragma once

#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <mutex>
#include <string>
#include <vector>

/// Finds the packaged fonts that tests draw with, wherever the system keeps them. Link qx_test_fonts.
namespace testsupport {

/// Paths of all installed font files, listed once, in a configuration of its own that leaves the process's alone.
inline const std::vector<std::string>& fontFiles() {
    static const std::vector<std::string>* files = [] {
        auto* found = new std::vector<std::string>;
        FcConfig* config = FcInitLoadConfigAndFonts();
        FcPattern* everything = FcPatternCreate();
        FcObjectSet* wanted = FcObjectSetBuild(FC_FILE, static_cast<char*>(nullptr));
        FcFontSet* fonts = FcFontList(config, everything, wanted);
        for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
            FcChar8* file = nullptr;
            if (FcPatternGetString(fonts->fonts[i], FC_FILE, 0, &file) == FcResultMatch)
                found->push_back(reinterpret_cast<const char*>(file));
        }
        if (fonts != nullptr) FcFontSetDestroy(fonts);
        FcObjectSetDestroy(wanted);
        FcPatternDestroy(everything);
        FcConfigDestroy(config);
        return found;
    }();
    return *files;
}

/// Path of an installed font file by its bare name ("Roboto-Regular.ttf"). A font that is not installed fails the
/// test and gives "".
inline std::string fontFile(const std::string& fileName) {
    for (const std::string& path : fontFiles())
        if (path.substr(path.rfind('/') + 1) == fileName) return path;
    ADD_FAILURE() << "font " << fileName << " is not installed";
    return "";
}

/// The whole file; empty when it cannot be read.
inline std::vector<char> fileBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file ? static_cast<std::streamoff>(file.tellg()) : 0;
    std::vector<char> bytes(static_cast<size_t>(size));
    if (!file.seekg(0) || !file.read(bytes.data(), size)) bytes.clear();
    return bytes;
}

/// Bytes of an installed font file, kept for the whole test program, because layout and typefaces read in place.
inline const std::vector<char>& fontBytes(const std::string& fileName) {
    struct Loaded {
        std::string name;
        const std::vector<char>* bytes;
    };
    static std::mutex mutex;
    static std::vector<Loaded>* all = new std::vector<Loaded>;
    const std::lock_guard<std::mutex> lock(mutex);
    for (const Loaded& loaded : *all)
        if (loaded.name == fileName) return *loaded.bytes;
    all->push_back({fileName, new std::vector<char>(fileBytes(fontFile(fileName)))});
    return *all->back().bytes;
}

// The fonts of the reference values, as their packages name the files.
constexpr const char* kRobotoRegular = "Roboto-Regular.ttf";
constexpr const char* kRobotoMedium = "Roboto-Medium.ttf";
constexpr const char* kRobotoBlack = "Roboto-Black.ttf";
constexpr const char* kNotoCjk = "NotoSansCJK-Regular.ttc";
constexpr const char* kNotoEmoji = "NotoColorEmoji.ttf";
constexpr const char* kNotoNaskh = "NotoNaskhArabic-Regular.ttf";

}  // namespace testsupport
