// system, opendir and closedir, taken over: no command is run. Calls are logged as `system("umount /data")` and, for
// directories under /data, `opendir("/data/apps") = null` (it does not exist) or `opendir(...)` and `closedir(...)`.
// Other directories are the real ones.
#ifndef OSTREL_TESTS_SUPPORT_FAKE_SYSTEM_H
#define OSTREL_TESTS_SUPPORT_FAKE_SYSTEM_H

#include <functional>
#include <map>
#include <set>
#include <string>

struct FakeSystem {
    // Called with each command after it is logged; its result is the exit status. Unset: 0.
    std::function<int(const std::string& command)> run;

    // The directories under /data that exist.
    std::set<std::string> directories;

    // Those that were opened and not closed yet.
    std::map<void*, std::string> openDirectories;
};

FakeSystem& fakeSystem();

#endif
