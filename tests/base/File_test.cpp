#include "base/File.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "base/Error.h"
#include "base/QxString.h"
#include "support/captured_log.h"
#include "support/temporary_folder.h"

namespace QxFontEffect {
namespace {

using test::CapturedLog;
using test::isErrorLine;
using test::isNativeError;
using testing::ElementsAre;

/// Works in a folder of its own, whose name is not ASCII.
class FileTest : public testing::Test {
protected:
    void write(const char* text) {
        File file;
        ASSERT_TRUE(file.Construct(path.c_str(), "w"));
        ASSERT_EQ(file.Write(text, 1, strlen(text)), strlen(text));
    }

    const test::TemporaryFolder folder{"qx_\xC3\xA9\xF0\x9F\x98\x80"};
    const std::string path = folder.path("file");
    CapturedLog log;
};

TEST_F(FileTest, WritesAndReadsThroughBothFormsOfPath) {
    write("hello world");
    QxString wide;
    ASSERT_TRUE(wide.Construct(path.c_str()));
    File file;
    ASSERT_TRUE(file.Construct(&wide, "r"));
    char bytes[16] = {};
    EXPECT_EQ(file.Read(bytes, 4, 4), 2u) << "whole elements";
    EXPECT_STREQ(bytes, "hello world");
    EXPECT_NE(file.Eof(), 0);
    EXPECT_EQ(file.Seek(-5, SEEK_END), 0);
    EXPECT_EQ(file.Eof(), 0);
    EXPECT_EQ(file.Tell(), 6);
    EXPECT_EQ(file.Write("x", 1, 1), 0u) << "opened for reading";
    EXPECT_NE(file.Error(), 0);
    EXPECT_GE(file.GetFileDescriptor(), 0);
}

TEST_F(FileTest, AnswersWithoutAStream) {
    write("text");
    File file;
    char byte = 0;
    const auto answersNothing = [&] {
        return file.Read(&byte, 1, 1) == 0 && file.Write(&byte, 1, 1) == 0 && file.Seek(0, SEEK_SET) == -1 &&
               file.Tell() == -1 && file.Eof() == -1 && file.Error() == -1 && file.GetFileDescriptor() == -1 &&
               file.GetFilePointer() == nullptr;
    };
    EXPECT_TRUE(answersNothing());
    ASSERT_TRUE(file.Construct(path.c_str(), "r"));
    EXPECT_EQ(file.Read(nullptr, 1, 1), 0u);
    file.Close();
    file.Close();
    EXPECT_TRUE(answersNothing());
    EXPECT_FALSE(file.Construct(path.c_str(), "r")) << "closed is still constructed";
    EXPECT_EQ(Error::GetError(), 4);
}

TEST_F(FileTest, KeepsTheStreamOpenWhenAskedTo) {
    write("text");
    QxString wide;
    ASSERT_TRUE(wide.Construct(path.c_str()));
    FILE* stream = nullptr;
    {
        File file;
        ASSERT_TRUE(file.Construct(&wide, "r", true));
        file.Close();
        char byte = 0;
        EXPECT_EQ(file.Read(&byte, 1, 1), 1u);
        stream = file.GetFilePointer();
    }
    EXPECT_EQ(fgetc(stream), 'e');
    fclose(stream);
}

TEST_F(FileTest, ReportsWhatCannotBeOpened) {
    QxString unmade, sizeZero, wide;
    ASSERT_TRUE(sizeZero.Construct(L"\xFFFFFFFF") && wide.Construct(path.c_str()));
    File file;
    EXPECT_FALSE(file.Construct(path.c_str(), "r"));
    EXPECT_EQ(Error::GetError(), 11);
    EXPECT_THAT(log.take(), ElementsAre(isErrorLine("QX_File", "OpenFile - Fail to open file. errno = 2"),
                                        isNativeError("QX_File", 11)));
    EXPECT_FALSE(file.Construct(&sizeZero, "r"));
    EXPECT_EQ(Error::GetError(), 7);
    EXPECT_THAT(log.take(),
                ElementsAre(isErrorLine("QX_File", "OpenFile() - pathSize < 0"), isNativeError("QX_File", 7)));
    EXPECT_FALSE(file.Construct(&unmade, "r"));
    EXPECT_THAT(log.take(),
                ElementsAre(isNativeError("QxString", 8), isErrorLine("QX_File", "OpenFile() - pathSize < 0"),
                            isNativeError("QX_File", 7)));
    EXPECT_FALSE(file.Construct(static_cast<const QxString*>(nullptr), "r"));
    EXPECT_FALSE(file.Construct(static_cast<const char*>(nullptr), "r"));
    EXPECT_FALSE(file.Construct(&wide, nullptr));
    EXPECT_FALSE(file.Construct(path.c_str(), nullptr));
    EXPECT_THAT(log.take(), testing::AllOf(testing::SizeIs(4), testing::Each(isNativeError("QX_File", 7))));
    EXPECT_TRUE(file.Construct(path.c_str(), "w")) << "a failed Construct may be followed by another";
}

TEST_F(FileTest, AsksRenamesAndRemovesByPath) {
    write("text");
    QxString from, to;
    const std::string target = folder.path("renamed");
    ASSERT_TRUE(from.Construct(path.c_str()) && to.Construct(target.c_str()));
    EXPECT_EQ(File::IsAccessible(&from, F_OK), 0);
    EXPECT_EQ(File::Rename(&from, &to), 0);
    EXPECT_EQ(File::IsAccessible(path.c_str(), F_OK), -1);
    EXPECT_EQ(File::Rename(target.c_str(), path.c_str()), 0);
    EXPECT_EQ(File::Unlink(&from), 0);
    EXPECT_EQ(File::Unlink(path.c_str()), -1);
    EXPECT_TRUE(log.take().empty()) << "the system's own answers are not failures";
}

TEST_F(FileTest, RefusesPathsWithoutAUtf8Form) {
    QxString sizeZero, good;
    ASSERT_TRUE(sizeZero.Construct(L"\xFFFFFFFF") && good.Construct(L"abc"));
    const auto refused = [](int result) {
        const bool right = result == -1 && Error::GetError() == 7;
        Error::SetError(0);
        return right;
    };
    EXPECT_TRUE(refused(File::IsAccessible(&sizeZero, F_OK)));
    EXPECT_TRUE(refused(File::Unlink(static_cast<const QxString*>(nullptr))));
    EXPECT_TRUE(refused(File::Rename(&good, &sizeZero)));
    EXPECT_TRUE(refused(File::Rename(nullptr, path.c_str())));
    EXPECT_THAT(log.take(), ElementsAre(isErrorLine("QX_File", "IsAccessible() - pathSize < 0"),
                                        isErrorLine("QX_File", "Unlink() - pathSize < 0"),
                                        isErrorLine("QX_File", "Rename() - pathSize < 0 : old 4, new 0"),
                                        isErrorLine("QX_File", "Rename() - pathSize < 0 : old -1, new 1")));
}

}  // namespace
}  // namespace QxFontEffect
