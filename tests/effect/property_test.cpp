#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "effect/QxBevelProperty.h"
#include "effect/QxEmbossProperty.h"
#include "effect/QxInnerGlowProperty.h"
#include "effect/QxInnerShadowProperty.h"
#include "effect/QxLinearGradientProperty.h"
#include "effect/QxOuterGlowProperty.h"
#include "effect/QxOuterShadowProperty.h"
#include "effect/QxPatternProperty.h"
#include "effect/QxRadialGradientProperty.h"
#include "effect/QxStrokeProperty.h"
#include "effect/QxTextProperty.h"

namespace QxFontEffect {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

using Bytes = std::vector<int>;

// The string of a record; also checks the closing NUL, the cursor and that nothing is written behind the NUL.
Bytes keyOf(QxProperty& record) {
    std::string buffer(4096, '\x11');
    char* cursor = &buffer[0];
    EXPECT_EQ(record.toSequentialChar(&cursor), 1);
    const size_t length = static_cast<size_t>(cursor - buffer.data());
    EXPECT_EQ(buffer[length], '\0');
    EXPECT_EQ(buffer.find_first_not_of('\x11', length + 1), std::string::npos);
    EXPECT_LE(length, static_cast<size_t>(record.getSequentialCharLength()));
    Bytes bytes;
    for (size_t i = 0; i < length; ++i) bytes.push_back(static_cast<unsigned char>(buffer[i]));
    return bytes;
}

QxGradient gStops[] = {{0xFF112233u, 1.0f, 0.0f}, {0x00000000u, 0.0f, 0.56f}, {0x89ABCDEFu, 0.5f, 1.0f}};
const Bytes kStopBytes = {143, 143, 129, 129, 130, 130, 131, 131, 128,  //
                          128, 128, 128, 128, 128, 128, 128, 128, 184,  //
                          136, 137, 138, 139, 140, 141, 142, 143, 228};

Bytes joined(Bytes head, const Bytes& tail) {
    head.insert(head.end(), tail.begin(), tail.end());
    return head;
}

TEST(Property, StringsOfAllRecordsByteByByte) {
    const Bytes color = {143, 143, 129, 129, 130, 130, 131, 131};
    const Bytes other = {128, 129, 130, 131, 132, 133, 134, 135};
    QxTextProperty text(0xFF112233u, 0.5f);
    QxOuterShadowProperty outerShadow(-30, 99.9f, 130, 0xFF112233u, 1);
    QxInnerShadowProperty innerShadow(400, 1, -1.9f, 0xFF112233u, 1);
    QxStrokeProperty stroke(130, 0xFF112233u, 1, -1, 2);
    QxOuterGlowProperty outerGlow(7.9f, 0xFF112233u, 1, 3, gStops);
    QxInnerGlowProperty innerGlow(7.9f, 0xFF112233u, 1, 0, gStops);
    QxLinearGradientProperty linear(359.9f, 3, 1, 3, gStops);
    QxRadialGradientProperty radial(0, 0.29f, 1, -5, gStops);
    QxBevelProperty bevel(1, 300, 12.5f, 1, 0, 20, 1, -10, 95, 0xFF112233u, 0.3f, 0x01234567u, 0.4f);
    QxEmbossProperty emboss(2, -1, -1, 0, 200, -3, 1, 720, -95, 0x01234567u, 0.3f, 0xFF112233u, 0.4f);

    const struct {
        const char* name;
        QxProperty* record;
        int reported;
        Bytes bytes;
    } rows[] = {
        {"text", &text, 9, joined({'T'}, color)},
        {"outer shadow", &outerShadow, 13, joined({'S', 130, 202, 128 + 99, 130}, color)},
        {"inner shadow", &innerShadow, 13, joined({'I', 128, 168, 129, 255}, color)},
        {"stroke", &stroke, 12, joined(joined({'K', 130}, color), {255, 130})},
        {"outer glow", &outerGlow, 40, joined(joined({'G', 135}, color), kStopBytes)},
        {"inner glow without stops", &innerGlow, 10, joined({'N', 135}, color)},
        {"linear gradient", &linear, 35, joined({'L', 130, 231, 140, 136}, kStopBytes)},
        // 0.29 * 100 is 29 in single precision and below 29 in double.
        {"radial gradient with a negative count", &radial, 5, {'D', 128, 128, 129, 141}},
        {"bevel", &bevel, 30,
         joined(joined({'B', 129, 130, 140, 128, 131, 142, 136, 129, 128, 144, 130, 222, 133}, color), other)},
        {"emboss", &emboss, 30,
         joined(joined({'E', 130, 143, 143, 128, 128, 128, 128, 128, 200, 128, 128, 128, 251}, other), color)},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(keyOf(*row.record), row.bytes) << row.name;
        EXPECT_EQ(row.record->getSequentialCharLength(), row.reported) << row.name;
    }
}

TEST(Property, PatternStringHoldsTheAddressAndThePerCents) {
    QxBitmap* const address = reinterpret_cast<QxBitmap*>(uintptr_t{0x7F12345678u});
    QxPatternProperty record(address, 12, 0.5f);
    EXPECT_EQ(keyOf(record),
              Bytes({'P', 129, 130, 131, 132, 133, 134, 135, 136, 128, 131, 142, 136, 128, 128, 131, 130}));
    EXPECT_EQ(record.getSequentialCharLength(), 17);
}

TEST(Property, WithoutACursorNothingIsWritten) {
    QxGradient stop = {0xFF112233u, 1.0f, 0.0f};
    QxOuterGlowProperty glow(5, 0, 1, 1, &stop);
    QxStrokeProperty stroke(3, 0, 1, 0, 0);
    char* nowhere = nullptr;
    EXPECT_EQ(0, glow.toSequentialChar(nullptr));
    EXPECT_EQ(0, stroke.toSequentialChar(&nowhere));
    EXPECT_EQ(nullptr, nowhere);
}

TEST(Property, StopsThatAreNotThereAreNotWritten) {
    QxOuterGlowProperty glow(0, 0, 1, 3, nullptr);
    EXPECT_EQ(keyOf(glow).size(), 10u);
    EXPECT_EQ(glow.getSequentialCharLength(), 40);
    QxLinearGradientProperty endless(0, 1, 1, std::numeric_limits<int>::max(), nullptr);
    EXPECT_EQ(endless.getSequentialCharLength(), std::numeric_limits<int>::max());
}

TEST(Property, ConstructorsLimitAndReduce) {
    const struct {
        float given, angle, altitude, gradientScale, patternScale;
    } rows[] = {
        {-30, -30, -30, 0, 0},       {400, 40, 40, 2, 10},   {-400, -40, -40, 0, 0},
        {1.75f, 1, 1, 1.75f, 1.75f}, {2.5f, 2, 2, 2, 2.5f},  {kInf, 127, 37, 2, 10},
        {-kInf, -128, -38, 0, 0},    {3e9f, 127, 37, 2, 10}, {kNan, 0, 0, kNan, kNan},
    };
    const auto same = [](float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); };
    for (const auto& row : rows) {
        EXPECT_EQ(QxInnerShadowProperty(row.given, 0, 0, 0, 0).angle, row.angle) << row.given;
        EXPECT_EQ(QxBevelProperty(0, 0, 0, 0, 0, 0, 0, row.given, row.given, 0, 0, 0, 0).angle, row.angle) << row.given;
        EXPECT_EQ(QxEmbossProperty(0, 0, 0, 0, 0, 0, 0, row.given, row.given, 0, 0, 0, 0).altitude, row.altitude)
            << row.given;
        const QxRadialGradientProperty radial(row.given, row.given, 1, 0, nullptr);
        EXPECT_EQ(radial.angle, row.angle) << row.given;
        EXPECT_TRUE(same(radial.scale, row.gradientScale)) << row.given;
        EXPECT_TRUE(same(QxPatternProperty(nullptr, row.given, 1).scale, row.patternScale)) << row.given;
        EXPECT_TRUE(same(QxOuterShadowProperty(row.given, 0, 0, 0, 0).angle, row.given)) << row.given;
    }
    EXPECT_TRUE(std::isnan(QxEmbossProperty(0, 0, kNan, 0, 0, -3, 0, 0, 0, 0, 0, 0, 0).depth));
}

}  // namespace
}  // namespace QxFontEffect
