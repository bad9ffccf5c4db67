// A simulator that runs while a test goes on, and a VNC viewer that does what the test says, wrong things included.
#ifndef OSTREL_TESTS_E2E_VNC_CLIENT_H
#define OSTREL_TESTS_E2E_VNC_CLIENT_H

#include "simulator/descriptor.h"
#include "simulator/web/ip_address.h"
#include "tests/e2e/patience.h"
#include "tests/e2e/simulator_run.h"

#include <csignal>
#include <rfb/rfb.h>
#include <sys/socket.h>
#include <sys/stat.h>

// The probe in a simulator with a web panel, on any free port.
class RunningSimulator {
  public:
    // `options` as for a shell; with a `password`, its file is "secret".
    explicit RunningSimulator(
        const std::string& probeArguments, const std::string& options = "", const std::string& password = "") {
        if (!password.empty())
            desk.write("secret", password + "\n");
        chmod(desk.file("secret").c_str(), 0600);
        const std::string command = "cd '" + desk.directory.path + "' && OSTREL_ASSETS='" + desk.file("assets") +
                                    "' exec '" OSTREL_SIM "' --web --state '" + desk.file("state") + "' " + options +
                                    (password.empty() ? "" : " --password-file secret") + " '" OSTREL_PROBE "' " +
                                    probeArguments + " >'" + desk.file("output") + "' 2>'" + desk.file("errors") + "'";
        pid = fork();
        if (pid == 0) {
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
        soon([&] {
            const std::string told = errors();
            const size_t begin = told.find("the panel is at http://");
            const size_t end = told.find("/\n", begin);
            port = begin != std::string::npos && end != std::string::npos
                       ? static_cast<int>(strtol(told.c_str() + told.rfind(':', end) + 1, nullptr, 10))
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
    std::string errors() const { return contentOf(desk.file("errors")); }

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
    explicit Client(int port, const ostrel::IpAddress& at = {})
        : socket(::socket(at.isIpv6() ? AF_INET6 : AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_storage address;
        const socklen_t size = at.fill(address, port);
        connected = connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), size) == 0;
        const timeval patience = {PATIENCE_S, 0};
        setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    }

    bool send(const std::string& bytes) const {
        return ::send(socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
    }

    // Exactly `size` bytes, or less when the connection ends or patience does.
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

    // What the server answers to the password: four zeros when it is right. Without one, it must not ask for any.
    std::string authenticate(std::string password = "") const {
        const std::string security = password.empty() ? "\x01" : "\x02";
        if (receive(12) != "RFB 003.008\n" || !send("RFB 003.008\n") || receive(2) != "\x01" + security ||
            !send(security))
            return "no handshake";
        if (!password.empty()) {
            std::string challenge = receive(16);
            if (challenge.size() != 16)
                return "no challenge";
            rfbEncryptBytes(reinterpret_cast<unsigned char*>(challenge.data()), password.data());
            send(challenge);
        }
        return receive(4);
    }

    bool shakeHands(const std::string& password = "") const {
        return authenticate(password) == std::string(4, '\0') && send("\x01") && receive(24).size() == 24 &&
               receive(5) == "probe";
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
