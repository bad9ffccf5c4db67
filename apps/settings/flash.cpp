#include "flash.h"

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A file in memory that nobody else can read, for as long as the object lasts: what is copied to or from the flash.
class PrivateFile {
  public:
    PrivateFile() : descriptor(mkstemp(path)) {} // with mode 0600
    ~PrivateFile() {
        if (descriptor < 0)
            return;
        close(descriptor);
        unlink(path);
    }
    PrivateFile(const PrivateFile&) = delete;
    PrivateFile& operator=(const PrivateFile&) = delete;

    bool isOpen() const { return descriptor >= 0; }

    bool write(const std::string& text) {
        size_t written = 0;
        while (written < text.size()) {
            const ssize_t count = ::write(descriptor, text.data() + written, text.size() - written);
            if (count <= 0)
                return false;
            written += static_cast<size_t>(count);
        }
        return true;
    }

    std::string read() {
        constexpr size_t MOST = 65536;
        std::string text;
        char bytes[4096];
        ssize_t count = 0;
        while (text.size() < MOST &&
               (count = pread(descriptor, bytes, sizeof bytes, static_cast<off_t>(text.size()))) > 0)
            text.append(bytes, static_cast<size_t>(count));
        return text;
    }

    char path[32] = "/tmp/ostrel-settings-XXXXXX";

  private:
    int descriptor;
};

} // namespace

Flash::Flash() : files("settings", "ostrel") {}

bool Flash::write(const char* name, const std::string& text) {
    {
        PrivateFile source;
        if (!source.isOpen() || !source.write(text))
            return false;
        files.persist(source.path, name);
    }
    return read(name) == text && !isBesideFlash(name);
}

std::string Flash::read(const char* name) {
    PrivateFile destination;
    if (!destination.isOpen())
        return "";
    files.copyFile(name, destination.path);
    return destination.read();
}

void Flash::remove(const char* name) {
    files.depersist(name);
}

bool Flash::isUsable() {
    const bool isWritten = write("probe", "probe\n");
    remove("probe");
    return isWritten;
}

// Where mounting fails, files end up in the folder that the partition should cover, and are gone with the power.
bool Flash::isBesideFlash(const char* name) const {
    const std::string path = std::string("/data") + files.path + "/" + name;
    struct stat status = {};
    return stat(path.c_str(), &status) == 0;
}
