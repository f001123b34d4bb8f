#include "portable/assets.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "support/temporary_folder.h"

namespace {

/// A folder of assets beside a file that is none.
class Assets : public ::testing::Test {
protected:
    Assets() {
        std::filesystem::create_directories(folder.path("assets/fonts"));
        folder.write("assets/fonts/some.ttf", "0123456789");
        folder.write("secret", "outside");
        mManager.reset(portable::newAssetManager(folder.path("assets")));
    }

    const QxFontEffect::test::TemporaryFolder folder;
    std::unique_ptr<AAssetManager, decltype(&portable::deleteAssetManager)> mManager{nullptr,
                                                                                     portable::deleteAssetManager};
};

}  // namespace

TEST_F(Assets, AreReadInPiecesUpToTheirEnd) {
    AAsset* asset = AAssetManager_open(mManager.get(), "fonts/some.ttf", AASSET_MODE_BUFFER);
    ASSERT_NE(asset, nullptr);
    EXPECT_EQ(AAsset_getLength(asset), 10);
    char bytes[16] = {};
    EXPECT_EQ(AAsset_read(asset, bytes, 4), 4);
    EXPECT_EQ(AAsset_read(asset, bytes + 4, 12), 6);
    EXPECT_STREQ(bytes, "0123456789");
    EXPECT_EQ(AAsset_read(asset, bytes, 16), 0);
    EXPECT_LT(AAsset_read(asset, nullptr, 16), 0);
    EXPECT_EQ(AAsset_getLength(asset), 10);
    AAsset_close(asset);
}

TEST_F(Assets, OpenOnlyFilesBelowTheirDirectory) {
    const std::string absolute = folder.path("assets/fonts/some.ttf");
    for (const char* name : {"missing.ttf", "fonts", "", "../secret", "fonts/../../secret", absolute.c_str()})
        EXPECT_EQ(AAssetManager_open(mManager.get(), name, AASSET_MODE_BUFFER), nullptr) << name;
    for (int mode : {-1, 0, 4}) EXPECT_EQ(AAssetManager_open(mManager.get(), "fonts/some.ttf", mode), nullptr) << mode;
    EXPECT_EQ(AAssetManager_open(mManager.get(), nullptr, AASSET_MODE_BUFFER), nullptr);
    EXPECT_EQ(AAssetManager_open(nullptr, "fonts/some.ttf", AASSET_MODE_BUFFER), nullptr);
}

TEST_F(Assets, DefaultManagersFollowTheDirectoryThatIsSet) {
    portable::setAssetDirectory(folder.path("assets/fonts"));
    mManager.reset(portable::newDefaultAssetManager());
    portable::setAssetDirectory(".");
    AAsset* asset = AAssetManager_open(mManager.get(), "some.ttf", AASSET_MODE_STREAMING);
    EXPECT_NE(asset, nullptr);
    AAsset_close(asset);
}
