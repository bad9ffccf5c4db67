#include "simulator/state_directory.h"

#include "simulator/failure.h"
#include "simulator/panel.h"
#include "simulator/state.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <pwd.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ostrel {
namespace {

namespace fs = std::filesystem;

std::string homeDirectory() {
    const char* home = getenv("HOME");
    if (home != nullptr && *home == '/')
        return home;
    const passwd* user = getpwuid(getuid()); // NOLINT(concurrency-mt-unsafe): before any thread is started
    if (user == nullptr || *user->pw_dir != '/')
        throw Failure(
            "there is no home directory to keep the router's state in; set HOME, or choose a directory with --state");
    return user->pw_dir;
}

Failure cannotWrite(const std::string& path, int reason = errno) {
    return Failure(
        "cannot write " + path + ": " + strerrordesc_np(reason) + (reason == ENOSPC ? "; make room, or" : ";") +
        " choose another directory with --state");
}

// An empty file of `size` bytes, whatever was there before.
void makeFile(const std::string& path, off_t size) {
    const Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!file.isOpen())
        throw cannotWrite(path);
    // Allocated, not sparse: a full disk is noticed here and does not end the program in the middle of drawing.
    const int reason = size > 0 ? posix_fallocate(file.get(), 0, size) : 0;
    if (reason != 0)
        throw cannotWrite(path, reason);
}

// Who only looks whether a simulator runs there holds the lock for an instant, which is waited for.
bool isLockedSoon(int lock) {
    constexpr int TRIES = 20;
    constexpr useconds_t PAUSE_US = 10000;
    for (int tries = 1; flock(lock, LOCK_EX | LOCK_NB) != 0; ++tries) {
        if (tries == TRIES)
            return false;
        usleep(PAUSE_US);
    }
    return true;
}

} // namespace

std::string defaultStateDirectory(const std::string& name) {
    const char* stateHome = getenv("XDG_STATE_HOME");
    const std::string base = stateHome != nullptr && *stateHome == '/' ? stateHome : homeDirectory() + "/.local/state";
    return base + "/ostrel-sim/" + name;
}

StateDirectory::StateDirectory(const std::string& path, bool fresh) {
    std::error_code error;
    fs::create_directories(path, error);
    if (error)
        throw Failure("cannot make the state directory " + path + ": " + error.message() + "; choose one with --state");
    directory = fs::canonical(path, error).string();
    if (error)
        throw Failure("cannot use the state directory " + path + ": " + error.message() + "; choose one with --state");
    lock();
    if (fresh)
        forget();
    makeFiles();
    mapPage();
}

StateDirectory::~StateDirectory() {
    munmap(shared, sizeof(SharedPage));
}

void StateDirectory::lock() {
    lockFile = Descriptor(open(file(state::LOCK).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!lockFile.isOpen())
        throw cannotWrite("in the state directory " + directory);
    if (!isLockedSoon(lockFile.get()))
        throw Failure("another simulator uses " + directory + "; end it, or choose another directory with --state");
}

void StateDirectory::forget() const {
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory, error))
        if (entry.path().filename().string().rfind(state::STORE, 0) == 0)
            fs::remove(entry.path(), error);
    fs::remove_all(file(state::FLASH), error);
}

void StateDirectory::makeFiles() const {
    makeFile(file(state::FRAMEBUFFER), PANEL_BYTES);
    makeFile(file(state::NVRAM), 0);
    makeFile(file(state::BACKLIGHT), 0);
    makeFile(file(state::LOG), 0);
    unlink(file(state::OLD_LOG).c_str());
    makeFile(file(state::SHARED_PAGE), sizeof(SharedPage));
    // A new FIFO each time: nothing that was touched in an earlier run is left in it.
    unlink(file(state::TOUCH).c_str());
    if (mkfifo(file(state::TOUCH).c_str(), 0600) != 0)
        throw cannotWrite(file(state::TOUCH));
    if (mkdir(file(state::FLASH).c_str(), 0700) != 0 && errno != EEXIST)
        throw cannotWrite(file(state::FLASH));
}

void StateDirectory::mapPage() {
    const Descriptor file_(open(file(state::SHARED_PAGE).c_str(), O_RDWR | O_CLOEXEC));
    void* page = mmap(nullptr, sizeof(SharedPage), PROT_READ | PROT_WRITE, MAP_SHARED, file_.get(), 0);
    if (page == MAP_FAILED)
        throw systemFailure("cannot map " + file(state::SHARED_PAGE));
    shared = static_cast<SharedPage*>(page);
}

} // namespace ostrel
