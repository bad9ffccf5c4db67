#include "tests/support/golden.h"

#include <cstdlib>
#include <filesystem>
#include <iomanip>
#include <sstream>

namespace {

constexpr uint16_t WRONG = 0xF800;

std::string hex(uint16_t colour) {
    std::ostringstream text;
    text << "0x" << std::hex << std::setw(4) << std::setfill('0') << colour;
    return text.str();
}

struct Differences {
    int count = 0;
    int firstX = 0;
    int firstY = 0;
    ostrel::Rect box;
    Picture picture;
};

Differences differencesOf(const Picture& actual, const Picture& expected) {
    Differences found;
    found.picture = actual;
    for (int y = 0; y < actual.height; ++y) {
        for (int x = 0; x < actual.width; ++x) {
            const bool isWrong = actual.at(x, y) != expected.at(x, y);
            found.picture.at(x, y) = isWrong ? WRONG : ostrel::mixed(expected.at(x, y), 0xFFFF, 192);
            if (!isWrong)
                continue;
            if (found.count++ == 0) {
                found.firstX = x;
                found.firstY = y;
            }
            found.box = united(found.box, ostrel::rectAt(x, y, 1, 1));
        }
    }
    return found;
}

// Where the pictures of a failure go, as the beginning of their paths.
std::string failurePath(const std::string& name) {
    std::error_code ignored;
    std::filesystem::create_directories(OSTREL_PIXEL_FAILURES, ignored);
    return std::string(OSTREL_PIXEL_FAILURES) + '/' + name;
}

} // namespace

testing::AssertionResult matchesPicture(const Picture& actual, const Picture& expected, const std::string& name) {
    if (actual == expected)
        return testing::AssertionSuccess();
    const std::string saved = failurePath(name);
    writePicture(expected, saved + ".expected.png");
    writePicture(actual, saved + ".actual.png");
    if (actual.width != expected.width || actual.height != expected.height)
        return testing::AssertionFailure() << name << " is " << actual.width << 'x' << actual.height << ", not "
                                           << expected.width << 'x' << expected.height << "; see " << saved << ".*";
    const Differences found = differencesOf(actual, expected);
    writePicture(found.picture, saved + ".difference.png");
    return testing::AssertionFailure() << name << ": " << found.count << " wrong pixels, the first at (" << found.firstX
                                       << ", " << found.firstY << "): " << hex(actual.at(found.firstX, found.firstY))
                                       << " instead of " << hex(expected.at(found.firstX, found.firstY))
                                       << "; all lie within x " << found.box.left << ".." << found.box.right - 1
                                       << ", y " << found.box.top << ".." << found.box.bottom - 1 << "; see " << saved
                                       << ".*";
}

testing::AssertionResult matchesGolden(const Picture& actual, const std::string& name) {
    const std::string path = std::string(OSTREL_GOLDEN_PICTURES) + '/' + name + ".png";
    const char* const update = std::getenv("OSTREL_UPDATE_GOLDEN");
    if (update != nullptr && *update == '1') {
        if (readPicture(path) == actual)
            return testing::AssertionSuccess();
        if (!writePicture(actual, path))
            return testing::AssertionFailure() << "cannot write " << path;
        return testing::AssertionSuccess();
    }
    if (!std::filesystem::exists(path)) {
        const std::string saved = failurePath(name) + ".actual.png";
        writePicture(actual, saved);
        return testing::AssertionFailure() << "there is no golden picture " << path << "; this one is " << saved;
    }
    return matchesPicture(actual, readPicture(path), name);
}
