#include "simulator/simulator.h"

#include "simulator/elf.h"
#include "simulator/event_loop.h"
#include "simulator/failure.h"
#include "simulator/panel.h"
#include "simulator/paths.h"
#include "simulator/program.h"
#include "simulator/progress.h"
#include "simulator/recorder.h"
#include "simulator/run_report.h"
#include "simulator/sandbox.h"
#include "simulator/script_player.h"
#include "simulator/shown_log.h"
#include "simulator/state.h"
#include "simulator/state_directory.h"
#include "simulator/store/log.h"
#include "simulator/store/power_on.h"
#include "simulator/touch_stream.h"
#include "simulator/web/password_file.h"
#include "simulator/web/web_panel.h"
#include "simulator/window/sdl_window.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <poll.h>
#include <sys/signalfd.h>
#include <utility>

namespace ostrel {
namespace {

std::string stateDirectoryFor(const Options& options, const std::string& program) {
    return options.state.empty() ? defaultStateDirectory(std::filesystem::path(program).filename().string())
                                 : options.state;
}

std::unique_ptr<ScriptPlayer> playerFor(
    const Options& options, EventLoop& loop, TouchStream& stream, Panel& panel, const std::string& stateDirectory) {
    if (options.script.empty())
        return nullptr;
    return std::make_unique<ScriptPlayer>(readScript(options.script), loop, stream, panel, stateDirectory);
}

// Empty when none is asked for.
std::string passwordFor(const Options& options) {
    if (options.passwordFile.empty())
        return "";
    bool others = false;
    std::string password = readPassword(options.passwordFile, others);
    if (others)
        say("others on this machine can read the password in " + options.passwordFile +
            "; chmod 600 would keep it yours");
    return password;
}

// As a shell would take it.
std::string shellCommand(const std::vector<std::string>& words) {
    std::string command;
    for (const std::string& word : words) {
        const bool isPlain = !word.empty() && word.find_first_of(" \t\n\"'\\$`&|;<>()*?[]#~!{}") == std::string::npos;
        std::string quoted = word;
        for (size_t at = 0; (at = quoted.find('\'', at)) != std::string::npos; at += 4)
            quoted.replace(at, 1, "'\\''");
        command += (command.empty() ? "" : " ") + (isPlain ? word : "'" + quoted + "'");
    }
    return command;
}

class Simulator {
  public:
    Simulator(const Options& options, const std::string& path, RunReport& report)
        : options(options), path(path), report(report), directory(stateDirectoryFor(options, path), options.fresh),
          panel(directory.file(state::FRAMEBUFFER), directory.page()),
          stream(directory.file(state::TOUCH), commandKind(commandLine()).bits, loop, directory.page()),
          player(playerFor(options, loop, stream, panel, directory.path())), program(loop) {}

    int run() {
        switchOnStore();
        watchSignals();
        if (options.verbose)
            shownLog.emplace(directory.file(state::LOG), loop);
        if (!options.record.empty())
            startRecording();
        showFace();
        startProgram();
        watchProgress();
        if (web)
            say("the panel is at " + web->whereabouts());
        if (player)
            player->play(options.speed, options.patienceMs, [this](const std::string& failure) { endPlay(failure); });
        loop.run();
        report.write(player ? player->checks() : std::vector<Check>(), exitStatus == 0 ? "" : failure);
        return exitStatus;
    }

  private:
    void startRecording() {
        std::vector<std::string> words = {"ostrel-sim"};
        if (options.fresh)
            words.emplace_back("--fresh");
        words.insert(words.end(), {"--script", options.record});
        words.insert(words.end(), options.program.begin(), options.program.end());
        recorder.emplace(Recording(options.record, shellCommand(words), options.speed, say), loop, stream, panel);
        stream.divertTo(*recorder);
    }

    std::vector<std::string> commandLine() const {
        std::vector<std::string> words = options.program;
        words.front() = path;
        return words;
    }

    void showFace() {
        const std::string name = std::filesystem::path(path).filename().string();
        if (options.face == Face::Window || (options.face == Face::Unchosen && hasDisplay()))
            openWindow(name);
        if (options.face == Face::Web || (options.face == Face::Unchosen && !window))
            web.emplace(name, WebFace{options.address, options.port, passwordFor(options)}, loop, panel, stream);
    }

    // A display that was not asked for by name and is out of reach is no reason to give up.
    void openWindow(const std::string& name) {
        try {
            window.emplace(name, loop, panel, stream, WindowRequests{[this] { close(); }, [this] { restart(); }});
        } catch (const Failure& failure) {
            if (options.face == Face::Window)
                throw;
            say(failure.what());
        }
    }

    // The program may be started anew in one run; the settings it has not committed are lost only with the power.
    void switchOnStore() {
        std::vector<std::string> messages;
        if (!powerOnStore(directory.path(), supportDirectory() + "/factory-settings", messages))
            throw Failure(messages.back() + "; make room, or choose another directory with --state");
        for (const std::string& message : messages)
            say(message);
    }

    void startProgram() {
        setenv(variable::STATE, directory.path().c_str(), 1);
        setenv(variable::SPEED, std::to_string(options.speed).c_str(), 1);
        if (player || recorder) // they touch when they are asked: no stroke is old, however long a busy machine holds
                                // the program up
            setenv(variable::STALE_MS, "86400000", 1);
        std::error_code error;
        View view;
        view.topLevel = listTopLevel();
        view.state = directory.path();
        view.callerDirectory = std::filesystem::current_path(error).string();
        view.assets = assetsDirectory();
        view.support = supportDirectory();
        view.asRoot = geteuid() == 0;
        logLine(directory.path().c_str(), "starts %s", path.c_str());
        if (window)
            window->setState("running");
        program.start(
            sandboxArguments(view), commandLine(), directory.path(), [this](const Ending& ending) { endRun(ending); });
    }

    // A run in which nobody looks at standard error stays as quiet as it was quick.
    void watchProgress() {
        if (options.verbose || isatty(STDERR_FILENO) != 0)
            progress.watch();
    }

    std::string stage() {
        const std::string name = std::filesystem::path(path).filename().string();
        if (endingIt || restarting)
            return "waiting for " + name + " to end";
        if (!program.hasStarted())
            return "still making the view of the files for " + name;
        if (player && player->current().empty())
            return "waiting for " + name + " to deal with the script's last touch";
        if (player)
            return "still at " + player->current();
        return panel.isBlank() ? name + " runs and has not drawn anything yet" : "";
    }

    void endRun(const Ending& ending) {
        logLine(directory.path().c_str(), "%s", ending.sentence.c_str());
        if (std::exchange(restarting, false) && !endingIt) {
            stream.empty();
            startProgram();
            return;
        }
        loop.stop();
        if (endingIt && (ending.ran || exitStatus != 0)) // the simulator's own doing
            return;
        if (recorder)
            recorder->finish(ending.ran ? std::optional<int>(ending.status) : std::nullopt);
        failure = player ? player->programEnded(ending) : "";
        exitStatus = ending.ran && player && player->awaitsEnd() ? 0 : ending.status;
        if (exitStatus != 0)
            say(ending.sentence);
        if (failure.empty())
            failure = ending.sentence;
        else if (failure != ending.sentence)
            say(failure);
        if (exitStatus == 0 && player && failure != ending.sentence)
            exitStatus = exit_status::SCRIPT_FAILED;
    }

    void endPlay(const std::string& whatFailed) {
        if (!whatFailed.empty())
            say(whatFailed);
        endProgram(whatFailed.empty() ? 0 : exit_status::SCRIPT_FAILED, whatFailed);
    }

    // The panel stays as the program left it, as the router's does.
    void restart() {
        if (player || recorder) {
            say("Ctrl+R restarts the program only when no script is played or recorded");
            return;
        }
        if (endingIt)
            return;
        restarting = true;
        watchProgress();
        window->setState("restarting");
        program.terminate();
    }

    // A script that is cut short by it has failed.
    void close() {
        if (!endingIt)
            endPlay(player ? player->programEnded({-1, "the window was closed"}) : "");
    }

    void endProgram(int status, const std::string& why) {
        if (recorder)
            recorder->finish(std::nullopt);
        endingIt = true;
        exitStatus = status;
        failure = why;
        watchProgress();
        if (window)
            window->setState("ending");
        program.terminate();
    }

    void watchSignals() {
        sigset_t ends;
        sigemptyset(&ends);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP})
            sigaddset(&ends, signal);
        sigprocmask(SIG_BLOCK, &ends, nullptr);
        signals = Descriptor(signalfd(-1, &ends, SFD_CLOEXEC | SFD_NONBLOCK));
        loop.watch(signals.get(), POLLIN, [this](short /*events*/) {
            signalfd_siginfo information = {};
            if (read(signals.get(), &information, sizeof information) != sizeof information)
                return;
            const int signal = static_cast<int>(information.ssi_signo);
            endProgram(
                exit_status::SIGNAL_BASE + signal,
                "the simulator was ended by signal " + std::to_string(signal) + " (" + sigdescr_np(signal) + ")");
        });
    }

    const Options& options;
    std::string path;
    RunReport& report;
    EventLoop loop;
    StateDirectory directory;
    std::optional<ShownLog> shownLog;
    Panel panel;
    TouchStream stream;
    std::unique_ptr<ScriptPlayer> player;
    std::optional<Recorder> recorder;
    std::optional<WebPanel> web;
    std::optional<SdlWindow> window;
    Program program;
    Progress progress{loop, [this] { return stage(); }, say};
    Descriptor signals;
    bool endingIt = false;
    bool restarting = false;
    int exitStatus = 0;
    std::string failure; // what the user was told, when the status is not 0
};

} // namespace

void say(const std::string& sentence) {
    std::cerr << "ostrel-sim: " + sentence + "\n";
}

int simulate(const Options& options) {
    std::error_code error;
    if (std::filesystem::current_path(error).empty())
        throw Failure("the directory that you are in is gone; cd to one that is there");
    RunReport report(options.junit, std::filesystem::path(options.program.front()).filename().string());
    try {
        return Simulator(options, resolveProgram(options.program.front()), report).run();
    } catch (const Failure& failure) {
        report.write({}, failure.what());
        throw;
    }
}

} // namespace ostrel
