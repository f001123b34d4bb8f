#include "base/QxLog.h"

#include <gtest/gtest.h>

#include <string>

#include "base/Error.h"
#include "base/QxString.h"
#include "support/captured_log.h"

namespace QxFontEffect {
namespace {

using test::CapturedLog;
using test::isLine;
using testing::ElementsAre;
using testing::IsEmpty;

/// Puts the process-wide switches back.
class QxLogTest : public testing::Test {
protected:
    ~QxLogTest() override {
        QxLog::mCurrentLogLevel = 0x3B;
        QxLog::isBuildTypeEngMode = 1;
        QxLog::isCheckedBuildType = 0;
        QxLog::DEBUG_ENABLE = 0;
    }
    CapturedLog log;
};

TEST_F(QxLogTest, MapsLevelsToPrioritiesUnderTheMask) {
    const struct {
        unsigned char mask;
        int level, priority;  // -1: nothing written
    } cases[] = {
        {0x3B, 1, 3},  {0x3B, 2, 4},    {0x3B, 4, -1}, {0x3B, 8, 6},  {0x3B, 16, 4}, {0x3B, 64, -1},
        {0xFF, 4, 5},  {0xFF, 3, 4},    {0xFF, 5, 4},  {0xFF, 6, 4},  {0xFF, 7, 4},  {0xFF, 9, 4},
        {0xFF, 64, 4}, {0xFF, 256, -1}, {0xFF, 0, -1}, {0xFF, -1, 4}, {0x3D, 2, -1},
    };
    for (const auto& c : cases) {
        QxLog::setPrintLogLevel(c.mask);
        QxLog::printLog(static_cast<QxLogLevel>(c.level), "a.cpp", "%d", 5);
        SCOPED_TRACE(testing::Message() << "mask " << int{c.mask} << ", level " << c.level);
        if (c.priority < 0)
            EXPECT_THAT(log.take(), IsEmpty());
        else
            EXPECT_THAT(log.take(), ElementsAre(isLine(c.priority, "qxeffect", "[a] 5 \n")));
    }
}

TEST_F(QxLogTest, CutsFileNamesAndLongMessages) {
    const std::string longest(255, 'n');
    const struct {
        std::string name, wanted;
    } cases[] = {{"QxText.cpp", "QxText"}, {"a.b.c", "a.b"}, {"a.d/file", "a"}, {"plain", "plain"},
                 {".hidden", ""},          {"", ""},         {longest, longest}};
    for (const auto& c : cases) {
        QxLog::printLog(QX_LOG_ERROR, c.name.c_str(), "m");
        EXPECT_THAT(log.take(), ElementsAre(isLine(6, "qxeffect", "[" + c.wanted + "] m \n")));
    }
    QxLog::printLog(QX_LOG_ERROR, (longest + "n").c_str(), "m");
    QxLog::printLog(QX_LOG_ERROR, nullptr, "m");
    const char* noFormat = nullptr;
    QxLog::printLog(QX_LOG_ERROR, "a.cpp", noFormat, 0);
    EXPECT_THAT(log.take(), IsEmpty());

    QxLog::printLog(QX_LOG_ERROR, longest.c_str(), "%s", std::string(3000, 'x').c_str());
    EXPECT_THAT(log.take(), ElementsAre(isLine(6, "qxeffect", "[" + longest + "] " + std::string(1023, 'x') + " \n")));
}

TEST_F(QxLogTest, PrintsTimesWhenBothBitsAreOn) {
    QxLog::printTime("a.cpp", "blur", 1234);
    QxLog::printTime("a.cpp", "blur", -5, "%s-%d", "pass", 2);
    QxLog::printTime("a.cpp", "blur", 2000000, "%s", std::string(2000, 'x').c_str());
    EXPECT_THAT(log.take(),
                ElementsAre(isLine(4, "qxeffect", "[a] [Time] blur 1.234ms \n"),
                            isLine(4, "qxeffect", "[a] [Time] blur -0.005ms pass-2 \n"),
                            isLine(4, "qxeffect", "[a] [Time] blur 2000.000ms " + std::string(1000, 'x') + " \n")));
    for (const int mask : {0x02, 0x10}) {
        QxLog::setPrintLogLevel(static_cast<unsigned char>(mask));
        QxLog::printTime("a.cpp", "blur", 1234);
        QxLog::printTime("a.cpp", "blur", 1234, "%d", 1);
    }
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(QxLogTest, ConvertsStringsForPrinting) {
    QxString unmade, fits, tooLong;
    ASSERT_TRUE(fits.Construct((std::string(509, 'a') + "\xC3\xA9").c_str()));
    ASSERT_TRUE(tooLong.Construct(std::string(512, 'a').c_str()));
    Error::SetError(0);
    EXPECT_STREQ(QxLog::ConvertLog(&fits), (std::string(509, 'a') + "\xC3\xA9").c_str());
    EXPECT_STREQ(QxLog::ConvertLog(&tooLong), "[### string is too long ###]");
    EXPECT_STREQ(QxLog::ConvertLog(nullptr), "[### null ###]");
    EXPECT_STREQ(QxLog::ConvertLog(&unmade), "");
    EXPECT_EQ(Error::GetError(), 0);
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(QxLogTest, TakesTheBuildTypeOnce) {
    EXPECT_TRUE(QxLog::IsBuildTypeEngMode() && !QxLog::IsCheckedBuildType() && !QxLog::IsAllLogEnable());
    QxLog::DEBUG_ENABLE = 1;
    EXPECT_TRUE(QxLog::IsAllLogEnable());
    QxLog::SetBuildType(false);
    QxLog::SetBuildType(true);
    EXPECT_TRUE(QxLog::IsCheckedBuildType() && !QxLog::IsBuildTypeEngMode());
    EXPECT_FALSE(QxLog::IsAllLogEnable());
}

}  // namespace
}  // namespace QxFontEffect
