#include "tests/e2e/x_desktop.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct XFreed {
    template<typename Data>
    void operator()(Data* data) const {
        XFree(data);
    }
};

// A window may go away between two requests.
int ignoreError(Display* /*display*/, XErrorEvent* /*error*/) {
    return 0;
}

// The server says its display's number when it is ready to serve.
std::string startServer(const std::string& screen, pid_t& server) {
    int ends[2] = {};
    if (pipe(ends) != 0)
        return "";
    server = fork();
    if (server == 0) {
        close(ends[0]);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const int silence = open("/dev/null", O_WRONLY);
        dup2(silence, STDOUT_FILENO);
        dup2(silence, STDERR_FILENO);
        const std::string number = std::to_string(ends[1]);
        execlp(
            "Xvfb", "Xvfb", "-displayfd", number.c_str(), "-screen", "0", screen.c_str(), "-noreset", "-nolisten",
            "tcp", nullptr);
        _exit(127);
    }
    close(ends[1]);
    std::string number;
    for (char c = 0; read(ends[0], &c, 1) == 1 && c != '\n';)
        number += c;
    close(ends[0]);
    return number.empty() ? "" : ":" + number;
}

std::string titleOf(Display* display, Window window) {
    const Atom name = XInternAtom(display, "_NET_WM_NAME", False);
    const Atom utf8 = XInternAtom(display, "UTF8_STRING", False);
    constexpr long MOST_WORDS = 256;
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* text = nullptr;
    if (XGetWindowProperty(display, window, name, 0, MOST_WORDS, False, utf8, &type, &format, &count, &rest, &text) !=
            Success ||
        text == nullptr)
        return "";
    const std::unique_ptr<unsigned char, XFreed> owner(text);
    return {reinterpret_cast<const char*>(text), count};
}

std::vector<Window> visibleWindows(Display* display) {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    std::vector<Window> windows;
    if (XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count) == 0 || children == nullptr)
        return windows;
    const std::unique_ptr<Window, XFreed> owner(children);
    for (unsigned i = 0; i < count; ++i) {
        XWindowAttributes attributes = {};
        if (XGetWindowAttributes(display, children[i], &attributes) != 0 && attributes.map_state == IsViewable)
            windows.push_back(children[i]);
    }
    return windows;
}

} // namespace

XDesktop::XDesktop(const std::string& screen) : displayName(startServer(screen, server)) {
    XSetErrorHandler(ignoreError);
    if (!displayName.empty())
        display = XOpenDisplay(displayName.c_str());
}

XDesktop::~XDesktop() {
    stop();
}

void XDesktop::stop() {
    if (display != nullptr)
        XCloseDisplay(display);
    display = nullptr;
    if (server > 0) {
        kill(server, SIGTERM);
        waitpid(server, nullptr, 0);
    }
    server = 0;
}

std::vector<std::string> XDesktop::titles() const {
    std::vector<std::string> all;
    for (const Window each : visibleWindows(display)) {
        std::string text = titleOf(display, each);
        if (!text.empty())
            all.push_back(text);
    }
    return all;
}

Window XDesktop::window() const {
    for (const Window each : visibleWindows(display))
        if (!titleOf(display, each).empty())
            return each;
    return 0;
}

std::string XDesktop::title() const {
    const Window shown = window();
    return shown != 0 ? titleOf(display, shown) : "";
}

Seen XDesktop::look() const {
    const Window shown = window();
    XWindowAttributes attributes = {};
    if (shown == 0 || XGetWindowAttributes(display, shown, &attributes) == 0)
        return {};
    XImage* image = XGetImage(
        display, shown, 0, 0, static_cast<unsigned>(attributes.width), static_cast<unsigned>(attributes.height),
        AllPlanes, ZPixmap);
    if (image == nullptr)
        return {};
    Seen seen = {attributes.width, attributes.height, {}};
    for (int y = 0; y < seen.height; ++y)
        for (int x = 0; x < seen.width; ++x)
            seen.pixels.push_back(static_cast<uint32_t>(XGetPixel(image, x, y) & 0xFFFFFFU));
    XDestroyImage(image);
    return seen;
}

uint32_t XDesktop::pixel(unsigned long shown, int x, int y) const {
    constexpr uint32_t NO_COLOUR = 0xFF000000;
    XImage* image = shown != 0 ? XGetImage(display, shown, x, y, 1, 1, AllPlanes, ZPixmap) : nullptr;
    if (image == nullptr)
        return NO_COLOUR;
    const auto colour = static_cast<uint32_t>(XGetPixel(image, 0, 0) & 0xFFFFFFU);
    XDestroyImage(image);
    return colour;
}

void XDesktop::pointAt(int x, int y) const {
    int rootX = 0;
    int rootY = 0;
    Window child = 0;
    XTranslateCoordinates(display, window(), DefaultRootWindow(display), x, y, &rootX, &rootY, &child);
    XTestFakeMotionEvent(display, -1, rootX, rootY, CurrentTime);
    XSync(display, False);
}

void XDesktop::button(bool isPressed, unsigned number) const {
    XTestFakeButtonEvent(display, number, isPressed ? True : False, CurrentTime);
    XSync(display, False);
}

void XDesktop::click(int x, int y) const {
    pointAt(x, y);
    button(true);
    button(false);
}

void XDesktop::type(unsigned long symbol, unsigned long held) const {
    const auto press = [&](KeySym each, Bool isPressed) {
        if (each != key::NONE)
            XTestFakeKeyEvent(display, XKeysymToKeycode(display, each), isPressed, CurrentTime);
    };
    press(held, True);
    press(symbol, True);
    press(symbol, False);
    press(held, False);
    XSync(display, False);
}

void XDesktop::resize(int width, int height) const {
    XResizeWindow(display, window(), static_cast<unsigned>(width), static_cast<unsigned>(height));
    XSync(display, False);
}

void XDesktop::closeWindow() const {
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window();
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(display, event.xclient.window, False, NoEventMask, &event);
    XSync(display, False);
}
