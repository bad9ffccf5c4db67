// The first process in the program's view. Starts the program, adopts what it leaves behind, and tells the simulator
// exactly how it ended.
#include "simulator/core_dump.h"
#include "simulator/descriptor.h"
#include "simulator/launch_protocol.h"
#include "simulator/state.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/wait.h>

using namespace ostrel;

namespace {

constexpr int GRACE_MS = 5000; // to put things in order, on a busy machine too

void report(int control, LaunchEvent event, int value) {
    const LaunchReport message = {event, value};
    send(control, &message, sizeof message, MSG_NOSIGNAL);
}

void prepend(const char* name, const char* first, const char* separator) {
    const char* rest = getenv(name);
    const std::string value = rest != nullptr && *rest != '\0' ? first + std::string(separator) + rest : first;
    setenv(name, value.c_str(), 1);
}

// Only the program gets these, not bubblewrap and not this process.
void prepareEnvironment() {
    prepend("PATH", inside::COMMANDS, ":");
    prepend("LD_PRELOAD", inside::SHIM, ":");
    // The address sanitizer wants to be loaded first; it works behind the shim as well.
    prepend("ASAN_OPTIONS", "verify_asan_link_order=0", ":");
    // The program finds its panel and its files as on the router.
    for (const char* name : {"OSTREL_FRAMEBUFFER", "OSTREL_TOUCH", "OSTREL_ASSETS"})
        unsetenv(name);
}

// Starts the program; what cannot be executed writes errno into the pipe that success closes.
pid_t start(char** program, const sigset_t& signals) {
    int ends[2] = {};
    if (pipe2(ends, O_CLOEXEC) != 0)
        return -1;
    const Descriptor readEnd(ends[0]);
    Descriptor writeEnd(ends[1]);
    const pid_t child = fork();
    if (child == 0) {
        sigprocmask(SIG_SETMASK, &signals, nullptr);
        prepareEnvironment();
        execv(program[0], program);
        const int reason = errno;
        if (write(writeEnd.get(), &reason, sizeof reason) != sizeof reason)
            _exit(1);
        _exit(0);
    }
    writeEnd.reset();
    int reason = 0;
    if (child < 0 || read(readEnd.get(), &reason, sizeof reason) == sizeof reason) {
        errno = child < 0 ? errno : reason;
        return -1;
    }
    return child;
}

// The working directory, where the kernel puts the dump unless the machine collects them, goes with the view.
LaunchEvent whatIsLeft(int status) {
    if (!WCOREDUMP(status))
        return LaunchEvent::Signalled;
    const char* directory = getenv(variable::STATE);
    const bool isKept = directory != nullptr && keepCoreDump("/", directory + std::string("/") + state::CORE);
    return isKept ? LaunchEvent::KeptCore : LaunchEvent::DumpedCore;
}

void reportEnd(int control, int status) {
    if (WIFEXITED(status))
        report(control, LaunchEvent::Exited, WEXITSTATUS(status));
    else
        report(control, whatIsLeft(status), WTERMSIG(status));
}

// Reaps whatever has ended. True when the program was among it, which is then reported.
bool reapAndReport(int control, pid_t program) {
    bool ended = false;
    int status = 0;
    for (pid_t pid = 0; (pid = waitpid(-1, &status, WNOHANG)) > 0;)
        if (pid == program) {
            ended = true;
            reportEnd(control, status);
        }
    return ended;
}

// Until the program has ended, or the simulator wants it to end: then everything gets SIGTERM, and a moment later this
// process leaves, and with it whatever is left in its namespace.
void attend(int control, pid_t program, const sigset_t& childEnds) {
    const Descriptor ends(signalfd(-1, &childEnds, SFD_CLOEXEC | SFD_NONBLOCK));
    bool ending = false;
    while (!reapAndReport(control, program)) {
        pollfd fds[] = {{ends.get(), POLLIN, 0}, {ending ? -1 : control, POLLIN, 0}};
        if (poll(fds, 2, ending ? GRACE_MS : -1) == 0)
            return;
        signalfd_siginfo information = {};
        while (read(ends.get(), &information, sizeof information) > 0) {
        }
        if (fds[1].revents != 0) {
            ending = true;
            kill(-1, SIGTERM);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc <= LAUNCH_PROGRAM)
        return 125;
    const int control = atoi(argv[LAUNCH_CONTROL]);      // NOLINT(cert-err34-c): written by the simulator
    const int standardError = atoi(argv[LAUNCH_STDERR]); // NOLINT(cert-err34-c): likewise
    fcntl(control, F_SETFD, FD_CLOEXEC);
    dup2(standardError, STDERR_FILENO);
    close(standardError);

    // The terminal's signals are the program's; this process ends with it.
    sigset_t blocked;
    sigset_t before;
    sigfillset(&blocked);
    sigprocmask(SIG_SETMASK, &blocked, &before);
    const pid_t program = start(argv + LAUNCH_PROGRAM, before);
    if (program < 0) {
        report(control, LaunchEvent::ExecFailed, errno);
        return 0;
    }
    report(control, LaunchEvent::Started, 0);
    sigset_t childEnds;
    sigemptyset(&childEnds);
    sigaddset(&childEnds, SIGCHLD);
    attend(control, program, childEnds);
    return 0;
}
