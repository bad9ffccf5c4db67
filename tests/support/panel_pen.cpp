#include "tests/support/panel_pen.h"

#include "display/touch_device.h"
#include "gui/display.h"

#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using namespace ostrel;

PanelPen::PanelPen() {
    char folder[] = "/tmp/ostrel-pen-XXXXXX";
    if (mkdtemp(folder) == nullptr)
        throw std::runtime_error("no folder for the pen");
    const std::string path = std::string(folder) + "/pen";
    if (mkfifo(path.c_str(), 0600) != 0)
        throw std::runtime_error("no touch stream");
    setenv("OSTREL_TOUCH", path.c_str(), 1);
    stream = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
    readX(); // the library opens it
    unlink(path.c_str());
    rmdir(folder);
}

void PanelPen::send(int down, int x, int y) const {
    const TouchEvent events[] = {{EV_ABS, ABS_X, x}, {EV_ABS, ABS_Y, y}, {EV_KEY, BTN_TOUCH, down}, {EV_SYN, 0, 0}};
    for (const TouchEvent& event : events) {
        input_event record{};
        record.type = event.type;
        record.code = event.code;
        record.value = event.value;
        if (write(stream, &record, sizeof record) != sizeof record)
            throw std::runtime_error("the touch stream is full");
    }
}
