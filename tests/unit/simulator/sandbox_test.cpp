#include "simulator/sandbox.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

using Words = std::vector<std::string>;

View routerView() {
    View view;
    view.topLevel = {{"/bin", "usr/bin"}, {"/data", ""}, {"/dev", ""}, {"/home", ""},
                     {"/ostrel", ""},     {"/proc", ""}, {"/tmp", ""}, {"/usr", ""}};
    view.state = "/home/me/state";
    view.callerDirectory = "/home/me/work";
    view.assets = "/opt/assets";
    view.support = "/opt/support";
    view.asRoot = true;
    return view;
}

TEST(Sandbox, BindsEachTopLevelEntryAndMakesTheRoutersOwn) {
    EXPECT_EQ(
        sandboxArguments(routerView()), (Words{
                                            "--unshare-pid",
                                            "--as-pid-1",
                                            "--die-with-parent",
                                            "--symlink",
                                            "usr/bin",
                                            "/bin",
                                            "--ro-bind-try",
                                            "/home",
                                            "/home",
                                            "--ro-bind-try",
                                            "/usr",
                                            "/usr",
                                            "--proc",
                                            "/proc",
                                            "--dev",
                                            "/dev",
                                            "--bind",
                                            "/tmp",
                                            "/tmp",
                                            "--dir",
                                            "/data",
                                            "--bind",
                                            "/home/me/work",
                                            "/home/me/work",
                                            "--bind",
                                            "/home/me/state",
                                            "/home/me/state",
                                            "--ro-bind",
                                            "/opt/assets",
                                            "/ostrel",
                                            "--ro-bind",
                                            "/opt/support",
                                            "/.ostrel-sim",
                                            "--bind",
                                            "/home/me/state/fb0",
                                            "/dev/fb0",
                                            "--bind",
                                            "/home/me/state/event0",
                                            "/dev/input/event0",
                                            "--bind",
                                            "/home/me/state/apsoc_nvram",
                                            "/dev/apsoc_nvram",
                                            "--bind",
                                            "/home/me/state/ostrel_backlight",
                                            "/dev/ostrel_backlight",
                                            "--bind",
                                            "/home/me/state/mtdblock5",
                                            "/dev/mtdblock5",
                                            "--chdir",
                                            "/"}));
}

TEST(Sandbox, IsRootInAUserNamespaceForAnOrdinaryUser) {
    View view = routerView();
    view.asRoot = false;
    const Words arguments = sandboxArguments(view);
    const Words expected = {"--unshare-user", "--uid", "0", "--gid", "0", "--cap-add", "CAP_SYS_ADMIN"};
    EXPECT_NE(std::search(arguments.begin(), arguments.end(), expected.begin(), expected.end()), arguments.end());
}

// Binding the host's root writable, or a directory that the view replaces, would undo the view.
TEST(Sandbox, NeverBindsADirectoryThatTheViewReplaces) {
    for (const char* directory : {"/", "/dev", "/dev/shm", "/proc/self", "/ostrel", "/data/apps", "/.ostrel-sim"}) {
        View view = routerView();
        view.callerDirectory = directory;
        const Words arguments = sandboxArguments(view);
        const Words bind = {"--bind", directory, directory};
        EXPECT_EQ(std::search(arguments.begin(), arguments.end(), bind.begin(), bind.end()), arguments.end())
            << directory;
    }
    View view = routerView();
    view.callerDirectory = "/database"; // only looks like /data
    const Words arguments = sandboxArguments(view);
    EXPECT_NE(std::find(arguments.begin(), arguments.end(), "/database"), arguments.end());
}

TEST(Sandbox, ListsTheHostsRoot) {
    const auto entries = listTopLevel();
    const auto is = [](const char* path) { return [path](const TopLevelEntry& entry) { return entry.path == path; }; };
    EXPECT_TRUE(std::any_of(entries.begin(), entries.end(), is("/usr")));
    EXPECT_TRUE(std::any_of(entries.begin(), entries.end(), is("/etc")));
}

} // namespace
