// A simulator that runs while a test goes on, and a VNC viewer that does what the test says, wrong things included.
#ifndef OSTREL_TESTS_E2E_VNC_CLIENT_H
#define OSTREL_TESTS_E2E_VNC_CLIENT_H

#include "simulator/clock.h"
#include "simulator/descriptor.h"
#include "tests/e2e/simulator_run.h"

#include <arpa/inet.h>
#include <csignal>
#include <functional>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

// Looks every few milliseconds whether `isSo`, for ten seconds.
inline bool within10s(const std::function<bool()>& isSo) {
    for (const int64_t end = ostrel::nowMs() + 10000; ostrel::nowMs() < end; usleep(5000))
        if (isSo())
            return true;
    return isSo();
}

// The probe in a simulator with a web panel, on any free port.
class RunningSimulator {
  public:
    explicit RunningSimulator(const std::string& probeArguments) {
        const std::string command = "cd '" + desk.directory.path + "' && OSTREL_ASSETS='" + desk.file("assets") +
                                    "' exec '" OSTREL_SIM "' --web --state '" + desk.file("state") +
                                    "' '" OSTREL_PROBE "' " + probeArguments + " >'" + desk.file("output") + "' 2>'" +
                                    desk.file("errors") + "'";
        pid = fork();
        if (pid == 0) {
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
        within10s([&] {
            const std::string errors = contentOf(desk.file("errors"));
            const size_t colon = errors.rfind(':');
            port = colon != std::string::npos && errors.back() == '\n'
                       ? static_cast<int>(strtol(errors.c_str() + colon + 1, nullptr, 10))
                       : 0;
            return port != 0;
        });
    }
    ~RunningSimulator() {
        kill(pid, SIGTERM);
        waitpid(pid, nullptr, 0);
    }
    RunningSimulator(const RunningSimulator&) = delete;
    RunningSimulator& operator=(const RunningSimulator&) = delete;

    std::string output() const { return contentOf(desk.file("output")); }

    // Resident memory in KiB.
    long memory() const {
        const std::string status = contentOf("/proc/" + std::to_string(pid) + "/status");
        const size_t at = status.find("VmRSS:");
        return at == std::string::npos ? -1 : strtol(status.c_str() + at + 6, nullptr, 10);
    }

    Desk desk;
    pid_t pid = 0;
    int port = 0;
};

class Client {
  public:
    explicit Client(int port) : socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        connected = connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
        const timeval patience = {10, 0};
        setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    }

    bool send(const std::string& bytes) const {
        return ::send(socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
    }

    // Exactly `size` bytes, or less when the connection ends or nothing comes for ten seconds.
    std::string receive(size_t size) const {
        std::string bytes(size, '\0');
        size_t done = 0;
        while (done < size) {
            const ssize_t count = recv(socket.get(), bytes.data() + done, size - done, 0);
            if (count <= 0)
                break;
            done += static_cast<size_t>(count);
        }
        bytes.resize(done);
        return bytes;
    }

    bool shakeHands() const {
        return receive(12) == "RFB 003.008\n" && send("RFB 003.008\n") && receive(2) == "\x01\x01" && send("\x01") &&
               receive(4) == std::string(4, '\0') && send("\x01") && receive(24).size() == 24 && receive(5) == "probe";
    }

    bool point(int x, int y, bool pressed) const {
        return send(
            {5, static_cast<char>(pressed), static_cast<char>(x >> 8), static_cast<char>(x & 255), 0,
             static_cast<char>(y)});
    }

    // Asks for the whole picture in the raw encoding; empty when it does not come whole.
    std::string picture(size_t bytesPerPixel) const {
        requestPicture();
        std::string whole(size_t{320} * 240 * bytesPerPixel, '\0');
        const std::string head = receive(4);
        if (head.size() != 4)
            return "";
        const int rectangles = static_cast<unsigned char>(head[2]) << 8 | static_cast<unsigned char>(head[3]);
        for (int i = 0; i < rectangles; ++i) {
            const std::string rectangle = receive(12);
            const auto field = [&](size_t at) {
                return static_cast<size_t>(
                    static_cast<unsigned char>(rectangle[at]) << 8 | static_cast<unsigned char>(rectangle[at + 1]));
            };
            if (rectangle.size() != 12 || rectangle.substr(8) != std::string(4, '\0'))
                return "";
            for (size_t row = 0; row < field(6); ++row) {
                const std::string pixels = receive(field(4) * bytesPerPixel);
                whole.replace(((field(2) + row) * 320 + field(0)) * bytesPerPixel, pixels.size(), pixels);
            }
        }
        return whole;
    }

    bool requestPicture() const { return send({3, 0, 0, 0, 0, 0, 1, 64, 0, static_cast<char>(240)}); }

    ostrel::Descriptor socket;
    bool connected = false;
};

#endif
