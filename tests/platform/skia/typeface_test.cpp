#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <thread>

#include "drawn_text.h"
#include "platform/portable/skia/font_access.h"
#include "support/random.h"

using namespace testsupport;
using QxFontEffect::test::Rng;

namespace {

/// Memory whose last byte is followed by a page that cannot be touched, so that reading on past it ends the program.
class FencedBytes {
public:
    FencedBytes(const void* bytes, size_t size) : mSize(size) {
        const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
        const size_t room = (size + page - 1) / page * page;
        mMapped = room + page;
        mBase = static_cast<char*>(mmap(nullptr, mMapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        EXPECT_NE(mBase, MAP_FAILED);
        EXPECT_EQ(mprotect(mBase + room, page, PROT_NONE), 0);
        mData = mBase + room - size;
        std::memcpy(mData, bytes, size);
    }
    ~FencedBytes() { munmap(mBase, mMapped); }
    FencedBytes(const FencedBytes&) = delete;
    FencedBytes& operator=(const FencedBytes&) = delete;

    char* data() { return mData; }
    size_t size() const { return mSize; }

private:
    size_t mSize;
    size_t mMapped;
    char* mBase;
    char* mData;
};

/// Opens a possibly broken font and uses it in every way there is. True when it opened.
bool openAndDraw(const FencedBytes& bytes, char* data) {
    const sk_sp<SkTypeface> typeface = openBytes(data, bytes.size());
    if (typeface == nullptr) return false;
    CoveragePlane plane(64, 64);
    SkCanvas canvas = plane.canvas();
    for (float size : {13.f, 48.f, 300.f}) {
        SkFont font(typeface, size);
        for (int glyph = 0; glyph < 80; glyph += 3) {
            font.setEdging(glyph % 2 == 0 ? SkFont::Edging::kAlias : SkFont::Edging::kAntiAlias);
            font.setEmbolden(glyph % 5 == 0);
            EXPECT_GE(boundsOf(font, static_cast<SkGlyphID>(glyph)).width(), 0);
            canvas.drawTextBlob(blobOf(font, static_cast<SkGlyphID>(glyph)), 4, 50, SkPaint());
        }
    }
    return true;
}

uint32_t bigEndian(const char* at, int bytes) {
    uint32_t value = 0;
    for (int i = 0; i < bytes; ++i) value = value << 8 | static_cast<uint8_t>(at[i]);
    return value;
}

void append(std::string* out, uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) *out += static_cast<char>(value >> shift);
}

/// The font as a WOFF file whose tables are stored as they are: FreeType reads it, layout in place could not.
std::string packedForWeb(const std::vector<char>& font) {
    const uint32_t tables = bigEndian(font.data() + 4, 2);
    std::string directory, data;
    for (uint32_t i = 0; i < tables; ++i) {
        const char* entry = font.data() + 12 + 16 * i;
        const uint32_t length = bigEndian(entry + 12, 4);
        directory.append(entry, 4);
        const uint32_t offset = 44 + 20 * tables + static_cast<uint32_t>(data.size());
        for (uint32_t field : {offset, length, length, bigEndian(entry + 4, 4)}) append(&directory, field);
        data.append(font.data() + bigEndian(entry + 8, 4), length);
        data.append((4 - length % 4) % 4, '\0');
    }
    const uint32_t size = static_cast<uint32_t>(data.size());
    std::string packed = "wOFF";
    for (uint32_t field :
         {bigEndian(font.data(), 4), 44 + 20 * tables + size, tables << 16, 12 + 16 * tables + size, 0u})
        append(&packed, field);
    return packed.append(20, '\0') + directory + data;
}

std::vector<uint8_t> drawnWith(const sk_sp<SkTypeface>& typeface, SkGlyphID first, float size) {
    CoveragePlane plane(300, 120);
    std::vector<SkGlyphID> glyphs;
    std::vector<SkPoint> points;
    for (int i = 0; i < 6; ++i) {
        glyphs.push_back(static_cast<SkGlyphID>(first + i));
        points.push_back({static_cast<float>(i) * 40, 0});
    }
    plane.canvas().drawTextBlob(blobOf(SkFont(typeface, size), glyphs, points), 5, 80, SkPaint());
    return plane.pixels;
}

}  // namespace

TEST(Typeface, OnlyFontsAndFacesThatExistOpen) {
    const std::vector<char>& plain = fontBytes(kRobotoRegular);
    const std::vector<char>& collection = fontBytes(kNotoCjk);
    const std::string garbage(5000, 'x');
    const std::string packed = packedForWeb(plain);
    const std::string bitmapFont = "STARTFONT 2.1\nFONT x\nSIZE 8 75 75\nFONTBOUNDINGBOX 8 8 0 0\nENDFONT\n";
    const struct {
        const char* what;
        const void* bytes;
        size_t size;
        int index;
        bool opens;
    } rows[] = {
        {"plain file", plain.data(), plain.size(), 0, true},
        {"index past a plain file", plain.data(), plain.size(), 1, false},
        {"index 7 of a plain file", plain.data(), plain.size(), 7, false},
        {"negative index", plain.data(), plain.size(), -1, false},
        {"index of a variation", plain.data(), plain.size(), 0x10000, false},
        {"fourth face", collection.data(), collection.size(), 3, true},
        {"past the collection", collection.data(), collection.size(), 99, false},
        {"garbage", garbage.data(), garbage.size(), 0, false},
        {"packed for the web", packed.data(), packed.size(), 0, false},
        {"another format", bitmapFont.data(), bitmapFont.size(), 0, false},
        {"one byte", plain.data(), 1, 0, false},
        {"no bytes", plain.data(), 0, 0, false},
        {"null", nullptr, 100, 0, false},
    };
    for (const auto& row : rows) EXPECT_EQ(openBytes(row.bytes, row.size, row.index) != nullptr, row.opens) << row.what;
    EXPECT_EQ(SkTypeface::MakeFromStream(nullptr), nullptr);
}

TEST(Typeface, TruncatedFontsAreRefusedOrSurvive) {
    const std::vector<char>& font = fontBytes(kRobotoRegular);
    std::vector<size_t> lengths;
    for (size_t length = 4; length < 700; length += 23) lengths.push_back(length);
    for (size_t i = 1; i < 60; ++i) lengths.push_back(font.size() * i / 60);
    lengths.push_back(font.size() - 1);
    for (size_t length : lengths) {
        FencedBytes bytes(font.data(), length);
        const bool opened = openAndDraw(bytes, bytes.data());
        EXPECT_FALSE(opened && length < 256) << length << " bytes do not even hold the list of tables";
    }
}

TEST(Typeface, DamagedFontsAreRefusedOrSurvive) {
    int opened = 0;
    for (const char* file : {kRobotoRegular, kNotoNaskh}) {
        const std::vector<char>& font = fontBytes(file);
        for (uint64_t seed = 0; seed < 60; ++seed) {
            Rng rng(seed);
            FencedBytes bytes(font.data(), font.size());
            // Half of the cases hit the header and the tables next to it, where most of the structure is.
            const uint32_t range = static_cast<uint32_t>(seed % 2 == 0 ? font.size() : 6000);
            for (int i = 0; i < 300; ++i) bytes.data()[rng.below(range)] = static_cast<char>(rng.byte());
            opened += openAndDraw(bytes, bytes.data());
        }
    }
    EXPECT_GT(opened, 20) << "the damage must leave enough to draw with";
}

TEST(Typeface, ReadsTheBytesInPlaceAndTellsLayoutAboutThem) {
    const std::vector<char>& bytes = fontBytes(kNotoCjk);
    const sk_sp<SkTypeface> typeface = openFont(kNotoCjk, 2);
    const portable::FontAccess access = portable::accessFont(typeface.get());
    EXPECT_EQ(static_cast<const void*>(access.bytes), static_cast<const void*>(bytes.data()));
    EXPECT_EQ(access.size, bytes.size());
    EXPECT_EQ(access.index, 2);
    EXPECT_FALSE(access.hasColorBitmaps);
    EXPECT_TRUE(portable::accessFont(openFont(kNotoEmoji).get()).hasColorBitmaps);
    EXPECT_EQ(portable::accessFont(nullptr).bytes, nullptr);
    EXPECT_NE(typeface->uniqueID(), openFont(kNotoCjk, 2)->uniqueID());
}

TEST(Typeface, ACopyingStreamOutlivesItsSource) {
    std::vector<char> bytes = fontBytes(kRobotoRegular);
    const sk_sp<SkTypeface> typeface =
        SkTypeface::MakeFromStream(std::make_unique<SkMemoryStream>(bytes.data(), bytes.size(), true));
    std::fill(bytes.begin(), bytes.end(), 0);
    ASSERT_NE(typeface, nullptr);
    EXPECT_EQ(drawnWith(typeface, 40, 48), drawnWith(openFont(kRobotoRegular), 40, 48));
}

TEST(Typeface, ThreadsShareItWithoutDisturbingEachOther) {
    const sk_sp<SkTypeface> shared = openFont(kNotoNaskh);
    constexpr int kThreads = 4, kRounds = 40;
    std::vector<std::vector<uint8_t>> wanted;
    for (int i = 0; i < kThreads; ++i)
        wanted.push_back(
            drawnWith(openFont(kNotoNaskh), static_cast<SkGlyphID>(20 + 7 * i), 30 + 5.5f * static_cast<float>(i)));

    std::vector<int> wrong(kThreads, 0);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&, i] {
            for (int round = 0; round < kRounds; ++round) {
                const sk_sp<SkTypeface> own = openFont(kRobotoRegular);  // opening and closing at the same time
                const auto pixels =
                    drawnWith(shared, static_cast<SkGlyphID>(20 + 7 * i), 30 + 5.5f * static_cast<float>(i));
                wrong[static_cast<size_t>(i)] += pixels != wanted[static_cast<size_t>(i)] || own == nullptr;
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, std::vector<int>(kThreads, 0));
}

TEST(SharedPointer, CountsOwners) {
    struct Counted : SkRefCnt {
        explicit Counted(int* left) : alive(left) { ++*alive; }
        ~Counted() override { --*alive; }
        int* alive;
    };
    int alive = 0;
    {
        sk_sp<Counted> first = sk_make_sp<Counted>(&alive);
        sk_sp<SkRefCnt> second = first;
        EXPECT_FALSE(first->unique());
        const sk_sp<Counted>& self = first;
        first = self;  // assignment to itself keeps it
        first.reset();
        EXPECT_EQ(alive, 1);
        EXPECT_TRUE(second->unique());
        second = sk_sp<SkRefCnt>(second.release());
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
}
