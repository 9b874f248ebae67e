#include "platform/linux/PosixFiles.h"

#include "platform/linux/XdgFolders.h"
#include "rigs/Disk.h"
#include "rigs/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace kestrovan {
namespace {

using rigs::contentOf;
using rigs::modeOf;
using std::filesystem::path;

std::ptrdiff_t filesIn(const path& folder)
{
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

class PosixFilesTest : public testing::Test {
protected:
    TemporaryFolder folder_;
    PosixFiles files_;
};

TEST_F(PosixFilesTest, FilesAndFoldersAreForThisUserAlone)
{
    const auto deep = folder_.path() / "a/b/c";
    const mode_t before = umask(0);
    files_.createFolders(deep);
    files_.createFolders(deep);
    EXPECT_EQ(files_.writeAtomically(deep / "photo", "one"), std::nullopt);
    umask(before);
    EXPECT_EQ(modeOf(folder_.path() / "a"), 0700U);
    EXPECT_EQ(modeOf(deep), 0700U);
    EXPECT_EQ(modeOf(deep / "photo"), 0600U);
    EXPECT_TRUE(files_.exists(deep / "photo"));
    EXPECT_FALSE(files_.exists(deep / "other"));
}

TEST_F(PosixFilesTest, ACopyIsWholeAndForThisUserAloneAndReplaces)
{
    const auto from = folder_.path() / "from";
    const auto to = folder_.path() / "to";
    const std::string content(200'000, 'p');
    ASSERT_EQ(files_.writeAtomically(from, content), std::nullopt);
    ASSERT_EQ(files_.writeAtomically(to, "old"), std::nullopt);
    chmod(from.c_str(), 0644);
    EXPECT_EQ(files_.copy(from, to, content.size()), std::nullopt);
    EXPECT_EQ(contentOf(to), content);
    EXPECT_EQ(modeOf(to), 0600U);
    EXPECT_EQ(files_.copy(to, to, content.size()), std::nullopt) << "onto itself";
    EXPECT_EQ(contentOf(to), content);
    files_.remove(to);
    files_.remove(to);
    EXPECT_FALSE(files_.exists(to));
}

TEST_F(PosixFilesTest, WhatIsNoRegularFileOrTooLargeIsNotCopiedAndNothingIsWaitedFor)
{
    const auto to = folder_.path() / "to";
    const auto pipe = folder_.path() / "pipe";
    const auto large = folder_.path() / "large";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    ASSERT_EQ(files_.writeAtomically(large, "12345"), std::nullopt);
    EXPECT_EQ(files_.copy(pipe, to, 4), "Not a regular file");
    EXPECT_EQ(files_.copy(folder_.path(), to, 4), "Not a regular file");
    EXPECT_EQ(files_.copy("/dev/zero", to, 4), "Not a regular file");
    EXPECT_EQ(files_.copy(large, to, 4), "File too large");
    EXPECT_EQ(files_.copy(folder_.path() / "none", to, 4), "No such file or directory");
    EXPECT_EQ(filesIn(folder_.path()), 2);
}

TEST_F(PosixFilesTest, AFailedWriteLeavesWhatWasThereAndNothingElse)
{
    const auto file = folder_.path() / "photo";
    ASSERT_EQ(files_.writeAtomically(file, "old"), std::nullopt);

    {
        const rigs::FullDisk full(1000);
        EXPECT_EQ(files_.writeAtomically(file, std::string(5000, 'x')), "File too large");
    }
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(filesIn(folder_.path()), 1);
    EXPECT_EQ(files_.writeAtomically(folder_.path() / "none/photo", "x"), "No such file or directory");
    EXPECT_EQ(files_.writeAtomically(file / "photo", "x"), "Not a directory");
    files_.createFolders(file / "folder"); // refused without a throw
    EXPECT_EQ(files_.writeAtomically(file, "new"), std::nullopt);
    EXPECT_EQ(contentOf(file), "new");
}

TEST(XdgFoldersTest, ThePicturesFolderIsWhatTheUsersFileSays)
{
    const auto of = [](const char* content) { return xdgFolders::picturesOf(content, "/home/me"); };
    EXPECT_EQ(of(""), path("/home/me/Pictures"));
    EXPECT_EQ(of("# note\nXDG_MUSIC_DIR=\"$HOME/Lagu\"\n  XDG_PICTURES_DIR = \"$HOME/Gambar\"\n"),
              path("/home/me/Gambar"));
    EXPECT_EQ(of("XDG_PICTURES_DIR=\"/data/My \\\"best\\\" pictures\""), path("/data/My \"best\" pictures"));
    EXPECT_EQ(of("XDG_PICTURES_DIR=\"/a\"\nXDG_PICTURES_DIR=\"/b\"\n"), path("/b"));
    EXPECT_EQ(of("XDG_PICTURES_DIR=\"$HOME/\"\n"), std::nullopt);
    EXPECT_EQ(of("XDG_PICTURES_DIR=\"$HOME\"\n"), std::nullopt);
    EXPECT_EQ(
        of("#XDG_PICTURES_DIR=\"/a\"\nXDG_PICTURES_DIR=\"relative\"\nXDG_PICTURES_DIR=\"/open\n"
           "XDG_PICTURES_DIR\nXDG_PICTURES_DIR=$HOME/bare\nXDG_PICTURES_DIRS=\"/c\"\nXDG_PICTURES_DIR=\"$HOMES/x\""),
        path("/home/me/Pictures"));
}

class EnvironmentTest : public PosixFilesTest {
protected:
    EnvironmentTest()
    {
        setenv("HOME", folder_.path().c_str(), 1);
        unsetenv("XDG_CONFIG_HOME");
        unsetenv("XDG_DATA_HOME");
    }
};

TEST_F(EnvironmentTest, FoldersFollowTheEnvironment)
{
    EXPECT_EQ(files_.dataFolder(), folder_.path() / ".local/share");
    EXPECT_EQ(files_.picturesFolder(), folder_.path() / "Pictures");
    files_.createFolders(folder_.path() / ".config");
    ASSERT_FALSE(files_.writeAtomically(folder_.path() / ".config/user-dirs.dirs", "XDG_PICTURES_DIR=\"/p\"\n"));
    EXPECT_EQ(files_.picturesFolder(), path("/p"));
    setenv("XDG_CONFIG_HOME", "not/absolute", 1);
    EXPECT_EQ(files_.picturesFolder(), path("/p"));
    setenv("XDG_CONFIG_HOME", "/elsewhere", 1);
    setenv("XDG_DATA_HOME", "/data", 1);
    EXPECT_EQ(files_.picturesFolder(), folder_.path() / "Pictures");
    EXPECT_EQ(files_.dataFolder(), path("/data"));
}

TEST_F(EnvironmentTest, WithoutAHomeThereIsNoPicturesFolderAndNoPlaceForData)
{
    unsetenv("HOME");
    EXPECT_EQ(files_.picturesFolder(), std::nullopt);
    EXPECT_EQ(files_.dataFolder(), std::nullopt);
}

} // namespace
} // namespace kestrovan
