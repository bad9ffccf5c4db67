// slow-machine PERCENT COMMAND [ARGUMENTS]: runs a command, and everything that it starts, as on a machine that is
// slower: they are stopped for all but PERCENT of the time, while clocks and timers go on. Exits as the command does.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr long PERIOD_US = 50000;

void pause(long microseconds) {
    const timespec time = {0, microseconds * 1000};
    nanosleep(&time, nullptr);
}

// What the command started and left behind counts too: the group is theirs.
int runSlowly(pid_t child, long percent) {
    int status = 0;
    for (;;) {
        pause(PERIOD_US * percent / 100);
        if (waitpid(child, &status, WNOHANG) == child)
            break;
        kill(-child, SIGSTOP);
        pause(PERIOD_US * (100 - percent) / 100);
        kill(-child, SIGCONT);
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

int main(int argc, char** argv) {
    const long percent = argc > 2 ? strtol(argv[1], nullptr, 10) : 0;
    if (percent < 1 || percent > 99) {
        fputs("slow-machine PERCENT COMMAND [ARGUMENTS]\n", stderr);
        return 2;
    }
    const pid_t child = fork();
    if (child == 0) {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL); // or it would stay stopped
        execvp(argv[2], argv + 2);
        perror(argv[2]);
        _exit(127);
    }
    setpgid(child, child);
    return runSlowly(child, percent);
}
