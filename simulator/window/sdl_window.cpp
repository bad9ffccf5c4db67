#include "simulator/window/sdl_window.h"

#include "simulator/failure.h"
#include "simulator/panel_watch.h"
#include "simulator/simulator.h"
#include "simulator/window/picture_file.h"
#include "simulator/window/sdl_display.h"
#include "simulator/window/window_pen.h"
#include "simulator/window/window_picture.h"

#include <cmath>
#include <poll.h>
#include <utility>

namespace ostrel {
namespace {

constexpr int BITS_PER_PIXEL = 32;

struct DestroySdl {
    void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};

using WindowHandle = std::unique_ptr<SDL_Window, DestroySdl>;

WindowHandle openWindow(const std::string& title) {
    const int zoom = zoomFor(SdlDisplay::usableScreen());
    WindowHandle window(SDL_CreateWindow(
        title.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, zoom * PANEL_WIDTH, zoom * PANEL_HEIGHT,
        SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI));
    if (!window)
        throw Failure(std::string("cannot open a window: ") + SDL_GetError() + "; use --web or --headless");
    if (SDL_GetWindowSurface(window.get()) == nullptr)
        throw Failure("cannot draw in a window on the display " + SdlDisplay::names() + "; use --web or --headless");
    SDL_SetWindowMinimumSize(window.get(), PANEL_WIDTH, PANEL_HEIGHT);
    return window;
}

// Ctrl and the key that types R, or on keyboards without Latin letters the one in its place.
bool isRestart(const SDL_Keysym& key) {
    constexpr int LAST_ASCII = 127;
    const bool isR = key.sym == SDLK_r || (key.sym > LAST_ASCII && key.scancode == SDL_SCANCODE_R);
    return isR && (key.mod & KMOD_CTRL) != 0;
}

} // namespace

struct SdlWindow::Desktop {
    Desktop(const std::string& program, EventLoop& loop, Panel& panel, TouchStream& stream, WindowRequests requests);
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    void takeEvents();
    void take(const SDL_Event& event);
    void takeWindowEvent(const SDL_WindowEvent& event);
    void takeKey(const SDL_KeyboardEvent& event);
    void takeMotion(const SDL_MouseMotionEvent& event);
    void takeButton(const SDL_MouseButtonEvent& event);
    void takeFinger(const SDL_TouchFingerEvent& event);
    Position pixelOf(int x, int y) const;
    void touched(bool isTouched);
    void looked(bool changed);
    void draw();
    void showTitle();
    void savePicture() const;

    std::string program;
    EventLoop& loop;
    Panel& panel;
    WindowRequests requests;
    SdlDisplay display;
    WindowHandle window;
    int descriptor;
    WindowPicture picture;
    WindowPen pen;
    PanelWatch watch;
    std::string state = "starting";
    std::string title;
};

SdlWindow::Desktop::Desktop(
    const std::string& program, EventLoop& loop, Panel& panel, TouchStream& stream, WindowRequests requests)
    : program(program), loop(loop), panel(panel), requests(std::move(requests)), window(openWindow(program)),
      descriptor(SdlDisplay::descriptor(window.get())), pen(stream),
      watch(loop, panel, [this](bool changed) { looked(changed); }) {
    if (descriptor >= 0)
        loop.watch(descriptor, POLLIN, [this](short /*events*/) { takeEvents(); });
    watch.setSeen(true);
    showTitle();
    takeEvents();
    draw();
}

SdlWindow::Desktop::~Desktop() {
    loop.unwatch(descriptor);
}

// Until SDL has none left: what it has read already does not make the descriptor readable again.
void SdlWindow::Desktop::takeEvents() {
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0)
        take(event);
}

void SdlWindow::Desktop::take(const SDL_Event& event) {
    switch (event.type) {
    case SDL_QUIT:
        requests.close();
        break;
    case SDL_WINDOWEVENT:
        takeWindowEvent(event.window);
        break;
    case SDL_KEYDOWN:
        takeKey(event.key);
        break;
    case SDL_MOUSEMOTION:
        takeMotion(event.motion);
        break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        takeButton(event.button);
        break;
    case SDL_FINGERDOWN:
    case SDL_FINGERMOTION:
    case SDL_FINGERUP:
        takeFinger(event.tfinger);
        break;
    default:
        break;
    }
}

void SdlWindow::Desktop::takeWindowEvent(const SDL_WindowEvent& event) {
    switch (event.event) {
    case SDL_WINDOWEVENT_EXPOSED:
        SDL_UpdateWindowSurface(window.get());
        break;
    case SDL_WINDOWEVENT_SIZE_CHANGED:
        draw();
        break;
    case SDL_WINDOWEVENT_SHOWN:
    case SDL_WINDOWEVENT_RESTORED:
    case SDL_WINDOWEVENT_MAXIMIZED:
        watch.setSeen(true);
        break;
    case SDL_WINDOWEVENT_HIDDEN:
    case SDL_WINDOWEVENT_MINIMIZED:
        watch.setSeen(false);
        break;
    default:
        break;
    }
}

void SdlWindow::Desktop::takeKey(const SDL_KeyboardEvent& event) {
    if (event.repeat != 0)
        return;
    if (event.keysym.sym == SDLK_F12)
        savePicture();
    else if (isRestart(event.keysym))
        requests.restart();
}

// Mouse positions come in units of the window's size, which on fine screens are more than a pixel.
Position SdlWindow::Desktop::pixelOf(int x, int y) const {
    Extent units;
    SDL_GetWindowSize(window.get(), &units.width, &units.height);
    const Extent pixels = picture.size();
    if (units.width <= 0 || units.height <= 0)
        return {x, y};
    const auto scaled = [](int value, int size, int unitSize) {
        return static_cast<int>(std::floor((value + 0.5) * size / unitSize));
    };
    return {scaled(x, pixels.width, units.width), scaled(y, pixels.height, units.height)};
}

// A button that is found up was released where nobody told: in the desktop's own menus, on a locked screen.
void SdlWindow::Desktop::takeMotion(const SDL_MouseMotionEvent& event) {
    if (event.which == SDL_TOUCH_MOUSEID)
        return;
    const bool isDown = (event.state & SDL_BUTTON_LMASK) != 0;
    const Position position = pixelOf(event.x, event.y);
    touched(isDown ? pen.move(WindowPen::MOUSE, picture.pictureArea(), position) : pen.release(WindowPen::MOUSE));
}

void SdlWindow::Desktop::takeButton(const SDL_MouseButtonEvent& event) {
    if (event.which == SDL_TOUCH_MOUSEID || event.button != SDL_BUTTON_LEFT)
        return;
    const Position position = pixelOf(event.x, event.y);
    touched(
        event.state == SDL_PRESSED ? pen.press(WindowPen::MOUSE, picture.pictureArea(), position)
                                   : pen.release(WindowPen::MOUSE));
}

// Fingers come in shares of the window.
void SdlWindow::Desktop::takeFinger(const SDL_TouchFingerEvent& event) {
    const Extent pixels = picture.size();
    const Position position = {
        static_cast<int>(std::floor(event.x * static_cast<float>(pixels.width))),
        static_cast<int>(std::floor(event.y * static_cast<float>(pixels.height)))};
    if (event.type == SDL_FINGERDOWN)
        touched(pen.press(event.fingerId, picture.pictureArea(), position));
    else if (event.type == SDL_FINGERMOTION)
        touched(pen.move(event.fingerId, picture.pictureArea(), position));
    else
        touched(pen.release(event.fingerId));
}

void SdlWindow::Desktop::touched(bool isTouched) {
    if (isTouched)
        watch.lookClosely();
}

void SdlWindow::Desktop::looked(bool changed) {
    if (changed)
        draw();
    showTitle();
    takeEvents();
}

void SdlWindow::Desktop::draw() {
    SDL_Surface* surface = SDL_GetWindowSurface(window.get());
    if (surface == nullptr || surface->w <= 0 || surface->h <= 0)
        return;
    if (picture.size().width != surface->w || picture.size().height != surface->h)
        picture.fit({surface->w, surface->h});
    const Area area = picture.draw(panel.picture());
    if (area.width == 0)
        return;
    // SDL only reads from it, but has no word for that.
    auto* pixels = const_cast<uint32_t*>(picture.pixels().data());
    const std::unique_ptr<SDL_Surface, DestroySdl> image(SDL_CreateRGBSurfaceWithFormatFrom(
        pixels, surface->w, surface->h, BITS_PER_PIXEL, surface->w * static_cast<int>(sizeof *pixels),
        SDL_PIXELFORMAT_RGB888));
    const SDL_Rect changed = {area.left, area.top, area.width, area.height};
    SDL_Rect target = changed;
    SDL_BlitSurface(image.get(), &changed, surface, &target);
    SDL_UpdateWindowSurfaceRects(window.get(), &changed, 1);
}

void SdlWindow::Desktop::showTitle() {
    const std::string now = program + " (" + state + (panel.isDark() ? ", panel dark" : "") + ") - ostrel-sim";
    if (now == title)
        return;
    title = now;
    SDL_SetWindowTitle(window.get(), title.c_str());
}

void SdlWindow::Desktop::savePicture() const {
    try {
        panel.look();
        say("saved " + ostrel::savePicture(program, panel.picture()));
    } catch (const Failure& failure) {
        say(failure.what());
    }
}

SdlWindow::SdlWindow(
    const std::string& program, EventLoop& loop, Panel& panel, TouchStream& stream, const WindowRequests& requests)
    : desktop(std::make_unique<Desktop>(program, loop, panel, stream, requests)) {}

SdlWindow::~SdlWindow() = default;

void SdlWindow::setState(const std::string& state) {
    desktop->state = state;
    desktop->showTitle();
}

} // namespace ostrel
