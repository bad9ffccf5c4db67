// A program for the simulator's own tests: it knows the panel and the touch stream and nothing else, and does what its
// arguments say.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/input.h>
#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int WIDTH = 320;
constexpr int HEIGHT = 240;
constexpr uint16_t WHITE = 0xFFFF;

uint16_t* mapPanel() {
    const int fd = open("/dev/fb0", O_RDWR);
    void* panel = mmap(nullptr, WIDTH * HEIGHT * 2, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    if (panel == MAP_FAILED) {
        perror("/dev/fb0");
        exit(1);
    }
    close(fd);
    return static_cast<uint16_t*>(panel);
}

// Every value of each channel somewhere.
void paint(uint16_t* panel) {
    for (int y = 0; y < HEIGHT; ++y)
        for (int x = 0; x < WIDTH; ++x)
            panel[y * WIDTH + x] = static_cast<uint16_t>((x / 10) << 11 | (y * 63 / 239) << 5 | ((x + y) & 31));
}

void mark(uint16_t* panel, int x, int y) {
    for (int dy = -2; dy <= 2; ++dy)
        for (int dx = -2; dx <= 2; ++dx)
            if (x + dx >= 0 && x + dx < WIDTH && y + dy >= 0 && y + dy < HEIGHT)
                panel[(y + dy) * WIDTH + x + dx] = WHITE;
}

struct Pen {
    int x = 0;
    int y = 0;
    bool down = false;
};

// One event a line: "down 10 20", "move 11 20", "up".
void report(Pen& pen, bool wasDown, uint16_t* panel) {
    if (pen.down)
        mark(panel, pen.x, pen.y);
    if (pen.down)
        printf("%s %d %d\n", wasDown ? "move" : "down", pen.x, pen.y);
    else if (wasDown)
        printf("up\n");
    fflush(stdout);
}

// Reads what there is; true when a stroke has ended.
bool readPen(int fd, Pen& pen, bool& reported, uint16_t* panel) {
    bool ended = false;
    for (input_event event = {}; read(fd, &event, sizeof event) == sizeof event;) {
        if (event.type == EV_ABS && event.code == ABS_X)
            pen.x = event.value;
        else if (event.type == EV_ABS && event.code == ABS_Y)
            pen.y = event.value;
        else if (event.type == EV_KEY && event.code == BTN_TOUCH)
            pen.down = event.value != 0;
        else if (event.type == EV_SYN && event.code == SYN_REPORT) {
            report(pen, reported, panel);
            ended = ended || (reported && !pen.down);
            reported = pen.down;
        }
    }
    return ended;
}

// Shows touches until `strokes` have ended. Waits for the pen (pollMs 0) or looks for it every `pollMs`; after each
// stroke it is busy for `busyMs`.
int followPen(int strokes, int pollMs, int busyMs) {
    uint16_t* panel = mapPanel();
    paint(panel);
    const int fd = open("/dev/input/event0", O_RDONLY | O_NONBLOCK);
    Pen pen;
    bool reported = false;
    while (strokes > 0) {
        if (pollMs > 0)
            usleep(static_cast<useconds_t>(pollMs) * 1000);
        else {
            pollfd stream = {fd, POLLIN, 0};
            poll(&stream, 1, -1);
        }
        if (readPen(fd, pen, reported, panel)) {
            --strokes;
            usleep(static_cast<useconds_t>(busyMs) * 1000);
            mark(panel, 4, 4 + strokes % 100);
        }
    }
    return 0;
}

// Paints a box anew every `everyMs`, each time in another colour.
[[noreturn]] void animate(int everyMs) {
    constexpr int SIDE = 120;
    uint16_t* panel = mapPanel();
    for (uint16_t colour = 1;; ++colour) {
        for (int y = 0; y < SIDE; ++y)
            for (int x = 0; x < SIDE; ++x)
                panel[y * WIDTH + x] = static_cast<uint16_t>(colour * 2081);
        usleep(static_cast<useconds_t>(everyMs) * 1000);
    }
}

int crash() {
    abort();
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<const char*> arguments(argv + 1, argv + argc);
    const auto number = [&](size_t index) {
        return index < arguments.size() ? static_cast<int>(strtol(arguments[index], nullptr, 10)) : 0;
    };
    if (arguments.empty())
        return 2;
    if (strcmp(arguments[0], "follow") == 0)
        return followPen(number(1), number(2), number(3));
    if (strcmp(arguments[0], "animate") == 0)
        animate(number(1));
    if (strcmp(arguments[0], "crash") == 0)
        return crash();
    return 2;
}
