#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include "platform/places.h"
#include "platform/profile.h"

// A test with a folder of its own, in which everything lies, gone with the test.
class FolderTest : public testing::Test {
 protected:
    using Path = std::filesystem::path;

    FolderTest() {
        std::filesystem::create_directory(Folder);
        platform::SetPlaces({User, Program});
    }
    ~FolderTest() override {
        platform::SetPlaces();
        std::filesystem::remove_all(Folder);
    }

    static std::string BytesOf(const Path& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    static void Put(const Path& file, std::string_view bytes) {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
    }
    static auto CountIn(const Path& folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    }

    const Path Folder = std::filesystem::temp_directory_path() / std::to_string(std::random_device()());
    const Path User = Folder / "data" / "orvane", Program = Folder / "program";
};

class ProfileFileTest : public FolderTest {
 protected:
    void ExpectLeftAlone(const Path& name, platform::ProfileState state) const {
        EXPECT_EQ(platform::ReadProfileFile(Folder / name).State, state) << name;
        EXPECT_FALSE(platform::ReplaceProfileFile(Folder / name, "new")) << name;
    }

    const Path File = Folder / "a.ini";
};
