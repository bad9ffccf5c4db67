// What a program sees of the files.
#include "tests/e2e/simulator_run.h"

#include <gtest/gtest.h>

namespace {

std::string shown(const Desk& desk, const std::string& shellCommand) {
    const Told run = desk.run("--headless sh -c '" + shellCommand + "'");
    return run.output + run.errors;
}

TEST(View, IsTheRouters) {
    const Desk desk;
    desk.write("assets/hello", "from the assets\n");
    EXPECT_EQ(shown(desk, "pwd; cat /ostrel/hello; ls -A /data; id -u"), "/\nfrom the assets\n0\n");
    EXPECT_EQ(
        shown(
            desk, "stat -c %F /dev/fb0 /dev/input/event0 /dev/apsoc_nvram /dev/ostrel_backlight | sed s/empty.//; wc "
                  "-c < /dev/fb0"),
        "regular file\nfifo\nregular file\nregular file\n153600\n");
    EXPECT_EQ(shown(desk, "cat < /dev/null; echo x > /dev/null; head -c 2 /dev/zero | wc -c"), "2\n");
}

TEST(View, CanBeWrittenWhereTheUserWorksAndNowhereElse) {
    const Desk desk;
    const Told run = desk.run("--headless sh -c 'echo written > \"'\"$PWD\"'/here\"; touch /usr/there /etc/there "
                              "/ostrel/there /there2/x 2>&1 | grep -c there'");
    EXPECT_EQ(run.output, "4\n");
    EXPECT_EQ(contentOf(desk.file("here")), "written\n");
}

TEST(View, ChangesNothingOnTheHost) {
    const Desk desk;
    shown(desk, "touch /data/x; mkdir /made-in-the-view; mkdir -p /dev/made");
    for (const char* path : {"/made-in-the-view", "/.ostrel-sim", "/dev/made", "/dev/apsoc_nvram", "/data/x"})
        EXPECT_FALSE(std::filesystem::exists(path)) << path;
}

TEST(View, HasProcessesOfItsOwn) {
    const Desk desk;
    EXPECT_EQ(
        shown(desk, "test $$ -lt 100 && ls -d /proc/[0-9]* | wc -l | { read n; test $n -lt 10 && echo few; }"),
        "few\n");
}

TEST(View, LetsARootlessUserMount) {
    const Desk desk;
    EXPECT_EQ(
        shown(
            desk,
            "/bin/mount --bind /dev/mtdblock5 /data && echo kept > /data/file && /bin/umount /data && ls -A /data"),
        "");
    EXPECT_EQ(shown(desk, "cat /dev/mtdblock5/file"), "kept\n"); // in the next run, too
}

TEST(View, OfAnOrdinaryUserIsTheSame) {
    if (geteuid() != 0)
        return; // then every test here is this one
    const Desk desk;
    std::filesystem::permissions(desk.directory.path, std::filesystem::perms::all);
    std::filesystem::remove_all(desk.file("state"));
    desk.write("errors", "");
    desk.write("output", "");
    for (const char* name : {"errors", "output"})
        std::filesystem::permissions(desk.file(name), std::filesystem::perms::all);
    const Told run = desk.run(
        "--headless sh -c 'id -u; test -p /dev/input/event0 && /bin/mount --bind /dev/mtdblock5 /data && echo mounted'",
        "setpriv --reuid 12345 --regid 12345 --clear-groups");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output, "0\nmounted\n");
    EXPECT_EQ(run.status, 0);
}

} // namespace
