#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace QxFontEffect::test {

/// A folder of a test's own, which goes with everything in it.
class TemporaryFolder {
public:
    explicit TemporaryFolder(const std::string& name = "qx") : mPath(::testing::TempDir() + name + "-XXXXXX") {
        EXPECT_NE(mkdtemp(mPath.data()), nullptr);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return mPath; }
    std::string path(const std::string& name) const { return mPath + "/" + name; }

    /// Writes a file and gives its path.
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }
    std::string read(const std::string& name) const { return bytesOf(path(name)); }

    static std::string bytesOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

private:
    std::string mPath;
};

}  // namespace QxFontEffect::test
