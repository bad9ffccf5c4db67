#include "tests/support/keyboard_desk.h"

#include "gui/modal.h"
#include "lang/languages.h"
#include "util/bounded_copy.h"

#include <cstdio>
#include <cstring>
#include <new>
#include <unistd.h>

namespace {

struct ScriptIsOver {};

int* returnCount = nullptr;

void noteReturn() {
    display().calls.emplace_back("returnHandler()");
    ++*returnCount;
}

// A language file with every message of the keyboard, written once a process.
const char* languageFile() {
    static const std::string path = [] {
        std::string name = "/tmp/ostrel-keyboard-test-" + std::to_string(getpid()) + ".xml";
        std::FILE* const file = std::fopen(name.c_str(), "w");
        std::fputs("<modal>\n", file);
        for (const char* key :
             {"less_than_6_l1", "less_than_6_l2", "less_than_6_l3", "more_than_2_l1", "more_than_2_l2",
              "more_than_2_l3", "valid_ip_l1", "valid_ip_l2", "valid_ip_l3", "savingl1", "savingl2", "savingl3"})
            std::fprintf(file, "<%s>[%s]</%s>\n", key, key, key);
        std::fputs("</modal>\n", file);
        std::fclose(file);
        std::atexit([] { std::remove(languageFile()); });
        return name;
    }();
    return path.c_str();
}

} // namespace

// The keyboard starts from zeros, as one in static storage does.
KeyboardDesk::KeyboardDesk() : keyboard(*reinterpret_cast<Keyboard*>(storage)) {
    isIPAddrMode = 0;
    saveMode = true;
    keyboardValidation = nullptr;
    leftShift = 0;
    modalImagesLoaded = 1;
    ostrel::copyText(lang.file, languageFile());
    std::memset(storage, 0, sizeof storage);
    unsigned char* bytes = storage;
    asm volatile("" : "+r"(bytes) : : "memory"); // the zeros count
    new (bytes) Keyboard;
    returnCount = &returns;
    keyboard.returnHandler = noteReturn;
    display().calls.clear();
}

KeyboardDesk::~KeyboardDesk() {
    display().beforeCall = nullptr;
    keyboard.~Keyboard();
}

void KeyboardDesk::begin(int mode, const char* initial) {
    keyboard.keyboardMode(mode);
    keyboard.drawText(initial, out);
    display().calls.clear();
}

KeyboardDesk::After KeyboardDesk::touch(int x, int y) {
    return play({{x, y}});
}

KeyboardDesk::After KeyboardDesk::play(std::vector<std::pair<int, int>> points) {
    const std::pair<int, int> first = points.front();
    points.erase(points.begin());
    display().pen = std::move(points);
    display().penRead = 0;
    fakeSleep().duringSleep = [](uint64_t us) {
        if (us == 20000 && display().penRead > display().pen.size())
            throw ScriptIsOver{};
    };
    After after = After::Returned;
    try {
        keyboard.getTouch(first.first, first.second);
        if (keyboard.active == 0)
            after = After::LooksAgain;
    } catch (const ScriptIsOver&) {
        after = After::LooksAgain;
    }
    fakeSleep().duringSleep = nullptr;
    return after;
}

void KeyboardDesk::type(const wchar_t* characters) {
    for (; *characters != 0; ++characters)
        keyboard.appendChar(*characters);
    display().calls.clear();
}
