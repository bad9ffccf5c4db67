#include "simulator/ending.h"

#include "simulator/elf.h"
#include "simulator/failure.h"
#include "simulator/sandbox.h"
#include "simulator/state.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <elf.h>
#include <iterator>

namespace ostrel {
namespace {

// What bubblewrap says when the kernel refuses: part of its words, and what helps.
struct Refusal {
    const char* words;
    const char* userCan;
    const char* rootCan;
};
constexpr const char* CONTAINER = "start the container with 'docker run --privileged'";
constexpr const char* USER = "as root, 'sysctl kernel.unprivileged_userns_clone=1' or 'sysctl "
                             "kernel.apparmor_restrict_unprivileged_userns=0' allows them, in a container 'docker run "
                             "--privileged'";
constexpr const char* LIMIT = "raise the limits that 'sysctl user' shows, as root";
constexpr Refusal REFUSALS[] = {
    {"ENOSPC", LIMIT, LIMIT},                     // "nesting depth or /proc/sys/user/max_*_namespaces exceeded"
    {"namespace", USER, CONTAINER},               // "Creating new namespace failed", "No permissions to create new ..."
    {"uid map", USER, CONTAINER},                 // refused by AppArmor
    {"mount proc", CONTAINER, CONTAINER},         // a container that hides parts of /proc
    {"make / slave", CONTAINER, CONTAINER},       // mounting is refused
    {"Unexpected capabilities", USER, CONTAINER}, // neither root nor an ordinary user
};

std::string whyNotExecuted(const std::string& path, int reason) {
    const std::string cannot = "cannot run " + path + ": ";
    const ElfKind kind = programKind(path);
    if (reason == ENOEXEC && kind.bits != Bits::Unknown)
        return cannot + "it is a program for " + machineName(kind.machine) + "; compile it for this machine" +
               (kind.machine == EM_ARM ? ", or run it under 'qemu-arm -L ROOT', where ROOT has its libraries" : "");
    if (reason == ENOEXEC)
        return cannot + "it is neither a program nor a script that names its interpreter";
    if (reason == ENOENT && !hiddenBy(path).empty())
        return cannot + "inside, " + hiddenBy(path) + " is the router's own; copy the program to another folder";
    const std::string interpreter = scriptInterpreter(path);
    if (reason == ENOENT && !interpreter.empty())
        return cannot + "its interpreter " + interpreter + " is not on this machine";
    if (reason == ENOENT) // the file itself was there
        return cannot + "its dynamic loader is not on this machine; compile it here";
    return cannot + strerrordesc_np(reason);
}

} // namespace

Ending describeEnding(const std::string& path, const LaunchReport& report, const std::string& stateDirectory) {
    const std::string name = path.substr(path.rfind('/') + 1);
    const auto ended = [&](const std::string& andLeft) {
        const char* description = sigdescr_np(report.value);
        return Ending{
            exit_status::SIGNAL_BASE + report.value, name + " was ended by signal " + std::to_string(report.value) +
                                                         " (" + (description != nullptr ? description : "unknown") +
                                                         ")" + andLeft};
    };
    switch (report.event) {
    case LaunchEvent::Exited:
        return {report.value, name + " exited with status " + std::to_string(report.value)};
    case LaunchEvent::Signalled:
        return ended("");
    case LaunchEvent::DumpedCore:
        return ended(" and left a core dump");
    case LaunchEvent::KeptCore:
        return ended(" and left a core dump, " + stateDirectory + "/" + state::CORE);
    case LaunchEvent::ExecFailed:
        return {exit_status::NOT_EXECUTABLE, whyNotExecuted(path, report.value), false};
    case LaunchEvent::Started:
        break;
    }
    return {exit_status::SIGNAL_BASE + SIGKILL, name + " was ended from outside together with its view of the files"};
}

Ending describeNoView(const std::string& complaint, bool asRoot) {
    std::string sentence = "cannot make the program's view of the files";
    const auto* const refusal = std::find_if(std::begin(REFUSALS), std::end(REFUSALS), [&](const Refusal& row) {
        return complaint.find(row.words) != std::string::npos;
    });
    if (refusal == std::end(REFUSALS))
        sentence.append(": ").append(complaint.empty() ? "bubblewrap ended without a word" : complaint);
    else
        sentence.append(", namespaces are not allowed here (")
            .append(complaint)
            .append("); ")
            .append(asRoot ? refusal->rootCan : refusal->userCan);
    return {exit_status::SIMULATOR_FAILED, sentence, false};
}

} // namespace ostrel
