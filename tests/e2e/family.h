// A command and everything that it starts, also what its parents have left behind: orphans become the test's children.
#ifndef OSTREL_TESTS_E2E_FAMILY_H
#define OSTREL_TESTS_E2E_FAMILY_H

#include "tests/e2e/patience.h"

#include <csignal>
#include <fstream>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

class Family {
  public:
    // Runs a shell command, with exec, so that `head` is what it runs.
    explicit Family(const std::string& shellCommand) {
        prctl(PR_SET_CHILD_SUBREAPER, 1);
        head = fork();
        if (head == 0) {
            execl("/bin/sh", "sh", "-c", shellCommand.c_str(), nullptr);
            _exit(127);
        }
    }
    ~Family() {
        if (status < 0)
            kill(head, SIGKILL);
        isGone();
        prctl(PR_SET_CHILD_SUBREAPER, 0);
    }
    Family(const Family&) = delete;
    Family& operator=(const Family&) = delete;

    // Waits until nobody is left; `status` is then the head's, as $? tells it.
    bool isGone() {
        return soon([&] {
            int ending = 0;
            pid_t pid = 0;
            while ((pid = waitpid(-1, &ending, WNOHANG)) > 0)
                if (pid == head)
                    status = WIFEXITED(ending) ? WEXITSTATUS(ending) : 128 + WTERMSIG(ending);
            return pid < 0;
        });
    }

    // How many there are at this moment.
    static int size() { return sizeBelow(getpid()); }

    pid_t head = 0;
    int status = -1;

  private:
    static int sizeBelow(pid_t parent) {
        const std::string number = std::to_string(parent);
        std::ifstream children("/proc/" + number + "/task/" + number + "/children");
        int count = 0;
        for (pid_t child = 0; children >> child;)
            count += 1 + sizeBelow(child);
        return count;
    }
};

#endif
