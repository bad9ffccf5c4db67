// The icons in tests: "/ostrel/NAME" is opened where the build staged it. Takes over open.
#include "util/api.h"

#include <cstdarg>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>

extern "C" OSTREL_API int openTaken(const char* path, int flags, ...) __asm__("open");
extern "C" int openTaken(const char* path, int flags, ...) { // NOLINT(cert-dcl50-cpp): open is variadic
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    constexpr char ROUTER[] = "/ostrel/";
    constexpr size_t ROUTER_LENGTH = sizeof ROUTER - 1;
    std::string staged;
    if (strncmp(path, ROUTER, ROUTER_LENGTH) == 0) {
        staged = std::string(OSTREL_STAGED) + "/" + (path + ROUTER_LENGTH);
        path = staged.c_str();
    }
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}
