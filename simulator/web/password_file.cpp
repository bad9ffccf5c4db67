#include "simulator/web/password_file.h"

#include "simulator/descriptor.h"
#include "simulator/failure.h"
#include "simulator/web/vnc_password.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>

namespace ostrel {
namespace {

// Enough to see that a line is too long.
std::string beginning(const Descriptor& file, const std::string& path) {
    char bytes[64];
    std::string text;
    while (text.size() < sizeof bytes && text.find('\n') == std::string::npos) {
        const ssize_t count = read(file.get(), bytes, sizeof bytes);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw systemFailure("cannot read the password in " + path);
        if (count == 0)
            break;
        text.append(bytes, static_cast<size_t>(count));
    }
    return text;
}

bool isVisibleAscii(char c) {
    return c >= ' ' && c <= '~';
}

} // namespace

std::string readPassword(const std::string& path, bool& others) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status = {};
    if (!file.isOpen() || fstat(file.get(), &status) != 0)
        throw systemFailure("cannot read the password in " + path);
    others = S_ISREG(status.st_mode) && (status.st_mode & (S_IRGRP | S_IROTH)) != 0;
    std::string line = beginning(file, path);
    line.erase(std::min(line.find('\n'), line.size()));
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    if (line.empty())
        throw Failure("there is no password in " + path + "; write one into its first line");
    if (line.size() > MAX_PASSWORD_LENGTH)
        throw Failure(
            "the password in " + path + " is too long: VNC knows " + std::to_string(MAX_PASSWORD_LENGTH) +
            " characters and no more; shorten its first line");
    if (!std::all_of(line.begin(), line.end(), isVisibleAscii))
        throw Failure(
            "the password in " + path +
            " has characters that VNC viewers send differently; choose from the letters "
            "a to z, digits and signs of ASCII");
    return line;
}

} // namespace ostrel
