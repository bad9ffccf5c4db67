// A program that asks the router's devices as its arguments say, one after another, and prints what it gets. C library
// only, so that it is built for the router's architecture too.
//   get SECTION NAME   set SECTION NAME VALUE   commit SECTION   many PREFIX COUNT   backlight NUMBER
//   shell COMMAND      sleep SECONDS            told FILE (makes the file, waits to be killed)
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Record {
    int32_t index;
    int32_t reserved;
    const char* name;
    char* value;
};

int request(unsigned long number, const char* section, const char* name, char* value) {
    const int fd = open("/dev/apsoc_nvram", O_RDONLY);
    Record record = {atoi(section), 0, name, value}; // NOLINT(cert-err34-c): the tests' own arguments
    const int result = ioctl(dup(fd), number, &record);
    const int error = errno;
    close(fd);
    errno = error;
    return result;
}

void tell(const char* what, int result) {
    if (result < 0)
        printf("%s: %s\n", what, strerror(errno));
    else if (result > 0)
        printf("%s: %d\n", what, result);
}

void many(const char* prefix, int count) {
    for (int i = 0; i < count; ++i) {
        char name[64];
        snprintf(name, sizeof name, "%s%d", prefix, i);
        tell("set", request(0x1003, "1", name, name));
        if (i % 7 == 6)
            tell("commit", request(0x1004, "1", nullptr, nullptr));
    }
}

// Runs the command that begins at `words`, and returns how many words it takes.
int run(char** words) {
    static char value[1024];
    const char* const command = words[0];
    if (strcmp(command, "get") == 0) {
        memset(value, 0, sizeof value);
        tell("get", request(0x1001, words[1], words[2], value));
        printf("%s=%s\n", words[2], value);
        return 3;
    }
    if (strcmp(command, "set") == 0) {
        tell("set", request(0x1003, words[1], words[2], words[3]));
        return 4;
    }
    if (strcmp(command, "commit") == 0) {
        tell("commit", request(0x1004, words[1], nullptr, nullptr));
        return 2;
    }
    if (strcmp(command, "many") == 0) {
        many(words[1], atoi(words[2])); // NOLINT(cert-err34-c): the tests' own arguments
        return 3;
    }
    if (strcmp(command, "backlight") == 0) {
        const int fd = open("/dev/ostrel_backlight", O_RDONLY);
        tell("backlight", ioctl(fd, strtoul(words[1], nullptr, 10), 1));
        close(fd);
        return 2;
    }
    if (strcmp(command, "shell") == 0) {
        fflush(stdout);
        const int status = system(words[1]); // NOLINT(cert-env33-c,concurrency-mt-unsafe): what is tested
        tell("shell", WEXITSTATUS(status));
        return 2;
    }
    if (strcmp(command, "sleep") == 0) {
        sleep(static_cast<unsigned>(atoi(words[1]))); // NOLINT(cert-err34-c): the tests' own arguments
        return 2;
    }
    if (strcmp(command, "told") == 0) {
        close(open(words[1], O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        for (;;)
            pause();
    }
    printf("what is %s?\n", command);
    exit(2);
}

} // namespace

int main(int argc, char** argv) {
    for (int at = 1; at < argc;)
        at += run(argv + at);
    return 0;
}
