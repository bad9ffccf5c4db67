#include "simulator/window/picture_file.h"

#include "simulator/descriptor.h"
#include "simulator/failure.h"
#include "simulator/png_file.h"

#include <fcntl.h>

namespace ostrel {
namespace {

// An empty file that nobody had before.
std::string reserveFile(const std::string& name) {
    for (int number = 1;; ++number) {
        std::string file = name + "-" + std::to_string(number) + ".png";
        const Descriptor created(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        if (created.isOpen())
            return file;
        if (errno != EEXIST)
            throw writeFailure(file);
    }
}

} // namespace

std::string savePicture(const std::string& name, const Picture& picture) {
    std::string file = reserveFile(name);
    try {
        writePng(file, picture);
    } catch (const Failure&) {
        unlink(file.c_str());
        throw;
    }
    return file;
}

} // namespace ostrel
