// What a user is told when the simulator cannot do its work: one sentence each, with what to do.
#include "tests/e2e/simulator_run.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

constexpr const char* NO_NAMESPACES =
    "ostrel-sim: cannot make the program's view of the files, namespaces are not allowed here (bwrap: ";

void expectFailure(const Told& run, const std::string& begin, const std::string& end, int status = 125) {
    EXPECT_EQ(run.status, status);
    EXPECT_EQ(run.errors.substr(0, begin.size()), begin);
    ASSERT_GE(run.errors.size(), end.size());
    EXPECT_EQ(run.errors.substr(run.errors.size() - end.size()), end);
    EXPECT_EQ(run.errors.find('\n'), run.errors.size() - 1) << run.errors;
}

TEST(Failure, OfRootWithoutTheRightToMakeNamespaces) {
    if (geteuid() != 0)
        return; // there is no root to be refused; the next tests are an ordinary user's
    const Desk desk;
    expectFailure(
        desk.run("--headless true", "setpriv --bounding-set -sys_admin --inh-caps -sys_admin"),
        NO_NAMESPACES + std::string("Creating new namespace failed: Operation not permitted)"),
        "; start the container with 'docker run --privileged'\n");
}

// Inside a user namespace anybody may lower that namespace's limits; the commands end up as root or as an ordinary
// user.
TEST(Failure, OfAUserWhereNamespacesAreUsedUp) {
    const Desk desk;
    const char* asUser = "unshare --user --map-user=12345 --map-group=12345 --keep-caps sh -c 'echo 0 > "
                         "/proc/sys/user/max_user_namespaces && exec setpriv --ambient-caps -all --inh-caps -all "
                         "\"$@\"' sh";
    expectFailure(
        desk.run("--headless true", asUser), NO_NAMESPACES + std::string("Creating new namespace failed: "),
        "; raise the limits that 'sysctl user' shows, as root\n");
    const char* asRoot = "unshare --user --map-root-user sh -c 'echo 0 > /proc/sys/user/max_pid_namespaces && exec "
                         "\"$@\"' sh";
    expectFailure(
        desk.run("--headless true", asRoot), NO_NAMESPACES + std::string("Creating new namespace failed: "),
        "; raise the limits that 'sysctl user' shows, as root\n");
}

} // namespace
