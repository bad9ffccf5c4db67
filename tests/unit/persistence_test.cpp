#include "settings/persistence.h"
#include "tests/support/call_log.h"
#include "tests/support/fake_system.h"

#include <gtest/gtest.h>

namespace {

// The flash partition as the commands leave it: its directories are there while it is mounted.
class FlashPartition : public testing::Test {
  protected:
    FlashPartition() {
        callLog() = {};
        fakeSystem() = {};
        fakeSystem().run = [this](const std::string& command) { return run(command); };
    }

    std::set<std::string> kept;
    bool mounted = false;
    int copyStatus = 0;

    int run(const std::string& command) {
        if (command == "mount -t jffs2 /dev/mtdblock5 /data") {
            mounted = true;
            fakeSystem().directories = kept;
        } else if (command == "umount /data") {
            mounted = false;
            fakeSystem().directories = {};
        } else if (command.compare(0, 6, "mkdir ") == 0) {
            kept.insert(command.substr(6));
            fakeSystem().directories = kept;
        } else {
            return copyStatus;
        }
        return 0;
    }
};

TEST_F(FlashPartition, TheFirstObjectEverMakesBothDirectories) {
    const Persistence files("a", "b");
    EXPECT_STREQ(files.path, "/apps/b-a");
    EXPECT_EQ(
        callLog().take(), "system(\"mount -t jffs2 /dev/mtdblock5 /data\")\n"
                          "opendir(\"/data/apps\") = null\n"
                          "system(\"mkdir /data/apps\")\n"
                          "opendir(\"/data/apps/b-a\") = null\n"
                          "system(\"mkdir /data/apps/b-a\")\n"
                          "system(\"umount /data\")\n");
    EXPECT_FALSE(mounted);
}

TEST_F(FlashPartition, WithAppsThereOnlyTheObjectsDirectoryIsMade) {
    kept = {"/data/apps"};
    const Persistence files("a", "b");
    EXPECT_EQ(
        callLog().take(), "system(\"mount -t jffs2 /dev/mtdblock5 /data\")\n"
                          "opendir(\"/data/apps\")\n"
                          "closedir(\"/data/apps\")\n"
                          "opendir(\"/data/apps/b-a\") = null\n"
                          "system(\"mkdir /data/apps/b-a\")\n"
                          "system(\"umount /data\")\n");
}

TEST_F(FlashPartition, ConstructingTheObjectTwiceRunsNoMkdirTheSecondTime) {
    const Persistence first("a", "b");
    callLog().take();
    const Persistence second("a", "b");
    EXPECT_EQ(
        callLog().take(), "system(\"mount -t jffs2 /dev/mtdblock5 /data\")\n"
                          "opendir(\"/data/apps\")\n"
                          "closedir(\"/data/apps\")\n"
                          "opendir(\"/data/apps/b-a\")\n"
                          "closedir(\"/data/apps/b-a\")\n"
                          "system(\"umount /data\")\n");
    EXPECT_TRUE(fakeSystem().openDirectories.empty());
}

TEST_F(FlashPartition, ConstructedWithAAndBTheObjectWorksInTheDirectoryBA) {
    Persistence files("a", "b");
    callLog().take();
    files.persist("/tmp/settings.bin", "x");
    EXPECT_EQ(
        callLog().take(), "system(\"mount -t jffs2 /dev/mtdblock5 /data\")\n"
                          "system(\"cp /tmp/settings.bin /data/apps/b-a/x\")\n"
                          "system(\"umount /data\")\n");
    files.depersist("x");
    EXPECT_EQ(
        callLog().take(), "system(\"mount -t jffs2 /dev/mtdblock5 /data\")\n"
                          "system(\"rm /data/apps/b-a/x\")\n"
                          "system(\"umount /data\")\n");
}

TEST_F(FlashPartition, CopyFilePutsTwoBlanksBeforeTheDestinationAndOneBehindIt) {
    Persistence files("a", "b");
    callLog().take();
    files.copyFile("x", "/tmp/y");
    EXPECT_EQ(
        callLog().take(), "system(\"mount -t jffs2 /dev/mtdblock5 /data\")\n"
                          "system(\"cp /data/apps/b-a/x  /tmp/y \")\n"
                          "system(\"umount /data\")\n");
}

TEST_F(FlashPartition, EveryOperationLeavesDataUnmountedAlsoWhenTheCopyFails) {
    Persistence files("a", "b");
    for (const int status : {0, 1, 127}) {
        copyStatus = status;
        files.persist("/tmp/absent", "x");
        EXPECT_FALSE(mounted) << "persist, status " << status;
        files.copyFile("x", "/tmp/y");
        EXPECT_FALSE(mounted) << "copyFile, status " << status;
        files.depersist("x");
        EXPECT_FALSE(mounted) << "depersist, status " << status;
    }
}

TEST_F(FlashPartition, TheDestructorRunsNothing) {
    {
        const Persistence files("a", "b");
        callLog().take();
    }
    EXPECT_EQ(callLog().take(), "");
}

TEST_F(FlashPartition, AMountThatFailsStopsNothing) {
    Persistence files("a", "b");
    callLog().take();
    fakeSystem().run = [](const std::string&) { return 255; };
    files.depersist("x");
    EXPECT_EQ(
        callLog().take(), "system(\"mount -t jffs2 /dev/mtdblock5 /data\")\n"
                          "system(\"rm /data/apps/b-a/x\")\n"
                          "system(\"umount /data\")\n");
}

TEST_F(FlashPartition, ThePathIsCutAt149Bytes) {
    // "/apps/" and "-" beside the two names: 149 bytes in all, and one more.
    const std::string whole = "/apps/" + std::string(71, 's') + "-" + std::string(71, 'f');
    ASSERT_EQ(whole.size(), 149U);
    const Persistence fits(std::string(71, 'f').c_str(), std::string(71, 's').c_str());
    EXPECT_EQ(fits.path, whole);
    const Persistence cut(std::string(72, 'f').c_str(), std::string(71, 's').c_str());
    EXPECT_EQ(cut.path, whole);
    const Persistence farPast(std::string(5000, 'f').c_str(), std::string(71, 's').c_str());
    EXPECT_EQ(farPast.path, whole);
}

TEST_F(FlashPartition, ACommandIsCutAt199Bytes) {
    Persistence files("a", "b");
    // "rm /data/apps/b-a/" is 18 bytes long.
    const std::string longest(181, 'x');
    for (const char* excess : {"", "y", "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy"}) {
        callLog().take();
        files.depersist((longest + excess).c_str());
        EXPECT_EQ(
            callLog().take(), "system(\"mount -t jffs2 /dev/mtdblock5 /data\")\n"
                              "system(\"rm /data/apps/b-a/" +
                                  longest +
                                  "\")\n"
                                  "system(\"umount /data\")\n");
    }
}

TEST_F(FlashPartition, TheCutTakesCopyFilesTrailingBlankFirst) {
    Persistence files("a", "b");
    callLog().take();
    // "cp /data/apps/b-a/x  " is 21 bytes long; with 178 bytes of destination no room is left for the last blank.
    files.copyFile("x", std::string(178, 'd').c_str());
    EXPECT_EQ(
        callLog().take(), "system(\"mount -t jffs2 /dev/mtdblock5 /data\")\n"
                          "system(\"cp /data/apps/b-a/x  " +
                              std::string(178, 'd') +
                              "\")\n"
                              "system(\"umount /data\")\n");
}

} // namespace
