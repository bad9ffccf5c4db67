// ostrel-sim with its window on a desktop of the test's own.
#ifndef OSTREL_TESTS_E2E_WINDOWED_RUN_H
#define OSTREL_TESTS_E2E_WINDOWED_RUN_H

#include "simulator/panel.h"
#include "tests/e2e/patience.h"
#include "tests/e2e/simulator_run.h"
#include "tests/e2e/x_desktop.h"

#include <csignal>

// Runs while the test goes on.
class WindowedRun {
  public:
    // `words` stand between --state and the end of the shell's command; `assets` is what becomes /ostrel.
    WindowedRun(const XDesktop& desktop, const std::string& words, const std::string& assets = "")
        : WindowedRun("DISPLAY=" + desktop.name(), words, assets) {}

    // On the display that `environment` names, in a shell's words.
    WindowedRun(const std::string& environment, const std::string& words, const std::string& assets = "") {
        const std::string command = "cd '" + desk.directory.path + "' && " + environment + " OSTREL_ASSETS='" +
                                    (assets.empty() ? desk.file("assets") : assets) +
                                    "' exec '" OSTREL_SIM "' --state '" + desk.file("state") + "' " + words + " >'" +
                                    desk.file("output") + "' 2>'" + desk.file("errors") + "'";
        pid = fork();
        if (pid == 0) {
            unsetenv("WAYLAND_DISPLAY");
            unsetenv("SDL_VIDEODRIVER");
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
    }
    ~WindowedRun() {
        if (pid > 0)
            kill(pid, SIGTERM);
        status();
    }
    WindowedRun(const WindowedRun&) = delete;
    WindowedRun& operator=(const WindowedRun&) = delete;

    // Waits for the end; as $? tells it.
    int status() {
        if (pid > 0)
            waitpid(pid, &ended, 0);
        pid = 0;
        return WIFEXITED(ended) ? WEXITSTATUS(ended) : 128 + WTERMSIG(ended);
    }

    std::string output() const { return contentOf(desk.file("output")); }
    std::string errors() const { return contentOf(desk.file("errors")); }
    bool says(const std::string& text) const {
        return soon([&] { return output() == text; });
    }
    bool complains(const std::string& text) const {
        return soon([&] { return errors() == text; });
    }

    Desk desk;
    pid_t pid = 0;
    int ended = 0;
};

// What the probe paints, as it is seen.
inline uint32_t painted(int x, int y) {
    return ostrel::toRgb888(static_cast<uint16_t>((x / 10) << 11 | (y * 63 / 239) << 5 | ((x + y) & 31)));
}

#endif
