#include "simulator/program.h"

#include "simulator/failure.h"
#include "simulator/state.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sstream>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace ostrel {
namespace {

constexpr const char* BUBBLEWRAP = "bwrap";

bool isFile(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// The first executable file of that name on the PATH; empty when there is none.
std::string findOnPath(const std::string& name) {
    const char* path = getenv("PATH");
    std::istringstream directories(path != nullptr ? path : "/usr/bin:/bin");
    for (std::string directory; std::getline(directories, directory, ':');) {
        std::string candidate = (directory.empty() ? "." : directory) + "/" + name;
        if (isFile(candidate) && access(candidate.c_str(), X_OK) == 0)
            return candidate;
    }
    return "";
}

// In the child: bubblewrap's words go to `complaints`, the program's to the simulator's own standard error.
void setUpChild(int complaints, std::initializer_list<int> inherited) {
    dup2(complaints, STDERR_FILENO);
    for (const int fd : inherited)
        fcntl(fd, F_SETFD, 0);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    signal(SIGPIPE, SIG_DFL);
}

} // namespace

std::string resolveProgram(const std::string& name) {
    const bool isPath = name.find('/') != std::string::npos;
    std::string path = isPath ? name : findOnPath(name);
    if (path.empty() && isFile(name))
        throw Failure(
            "there is no program " + name + " on the PATH; did you mean ./" + name + "?", exit_status::NOT_FOUND);
    if (path.empty())
        throw Failure("there is no program " + name + " on the PATH", exit_status::NOT_FOUND);
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        throw Failure("there is no program " + path + ": " + strerrordesc_np(errno), exit_status::NOT_FOUND);
    if (S_ISDIR(status.st_mode))
        throw Failure(path + " is a directory, not a program", exit_status::NOT_EXECUTABLE);
    if (!S_ISREG(status.st_mode))
        throw Failure(path + " is not a program", exit_status::NOT_EXECUTABLE);
    if (access(path.c_str(), X_OK) != 0)
        throw Failure(path + " is not executable; chmod +x makes it so", exit_status::NOT_EXECUTABLE);
    return std::filesystem::absolute(path).lexically_normal().string();
}

Program::~Program() {
    cleanUp();
}

void Program::start(
    const std::vector<std::string>& sandbox, const std::vector<std::string>& program, const std::string& state,
    Ended whenEnded) {
    if (findOnPath(BUBBLEWRAP).empty())
        throw Failure("bubblewrap is missing, which makes the program's view of the files; apt-get install bubblewrap");
    path = program.front();
    stateDirectory = state;
    ended = std::move(whenEnded);
    complaint.clear();
    reported = false;
    lastReport = {};

    int sockets[2] = {};
    int pipeEnds[2] = {};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, sockets) != 0 || pipe2(pipeEnds, O_CLOEXEC) != 0)
        throw systemFailure("cannot start " + path);
    control = Descriptor(sockets[0]);
    complaints = Descriptor(pipeEnds[0]);
    const Descriptor launchControl(sockets[1]);
    const Descriptor complaintEnd(pipeEnds[1]);
    const Descriptor standardError(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3));

    std::vector<std::string> words = {BUBBLEWRAP};
    words.insert(words.end(), sandbox.begin(), sandbox.end());
    words.insert(
        words.end(), {"--", std::string(inside::SUPPORT) + "/launch", std::to_string(launchControl.get()),
                      std::to_string(standardError.get())});
    words.insert(words.end(), program.begin(), program.end());
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    bubblewrap = fork();
    if (bubblewrap < 0)
        throw systemFailure("cannot start " + path);
    if (bubblewrap == 0) {
        setUpChild(complaintEnd.get(), {launchControl.get(), standardError.get()});
        execvp(BUBBLEWRAP, arguments.data());
        _exit(exit_status::SIMULATOR_FAILED);
    }
    loop.watch(control.get(), POLLIN, [this](short /*events*/) { hear(); });
    loop.watch(complaints.get(), POLLIN, [this](short /*events*/) { hearBubblewrap(); });
}

void Program::hearBubblewrap() {
    char bytes[512];
    const ssize_t count = read(complaints.get(), bytes, sizeof bytes);
    if (count <= 0) {
        loop.unwatch(complaints.get());
        return;
    }
    complaint.append(bytes, static_cast<size_t>(count));
}

// Without a last report the socket ends: launch was killed, or never started.
void Program::hear() {
    LaunchReport report = {};
    if (recv(control.get(), &report, sizeof report, 0) == sizeof report) {
        reported = true;
        lastReport = report;
        if (report.event == LaunchEvent::Started)
            return;
    }
    pollfd more = {complaints.get(), POLLIN, 0};
    while (poll(&more, 1, 0) > 0 && (more.revents & POLLIN) != 0)
        hearBubblewrap();
    while (!complaint.empty() && complaint.back() == '\n')
        complaint.pop_back();
    cleanUp();
    const Ending ending =
        reported ? describeEnding(path, lastReport, stateDirectory) : describeNoView(complaint, geteuid() == 0);
    if (ended)
        std::exchange(ended, nullptr)(ending);
}

void Program::terminate() {
    if (control.isOpen())
        shutdown(control.get(), SHUT_WR);
}

void Program::cleanUp() {
    loop.unwatch(control.get());
    loop.unwatch(complaints.get());
    control.reset();
    complaints.reset();
    if (bubblewrap > 0)
        waitpid(bubblewrap, nullptr, 0);
    bubblewrap = 0;
}

} // namespace ostrel
