// An X server of a test's own, without a window manager, and what a person does at it: sees windows, points, clicks and
// types. Coordinates are pixels of the window.
#ifndef OSTREL_TESTS_E2E_X_DESKTOP_H
#define OSTREL_TESTS_E2E_X_DESKTOP_H

#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

// X's own names, without the macros of its headers.
struct _XDisplay;
namespace key {
constexpr unsigned long NONE = 0;
constexpr unsigned long F12 = 0xFFC9;
constexpr unsigned long CONTROL = 0xFFE3;
constexpr unsigned long R = 'r';
} // namespace key

// What a window shows, row by row as 0x00RRGGBB.
struct Seen {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;

    uint32_t at(int x, int y) const {
        return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
    }
};

class XDesktop {
  public:
    // `screen` as Xvfb wants it: "1280x1024x24". Has no name when the server could not be started.
    explicit XDesktop(const std::string& screen = "1280x1024x24");
    ~XDesktop();
    XDesktop(const XDesktop&) = delete;
    XDesktop& operator=(const XDesktop&) = delete;

    // ":5"
    const std::string& name() const { return displayName; }

    // The titles of all windows that can be seen.
    std::vector<std::string> titles() const;

    // The one window that has a title; 0 when there is none.
    unsigned long window() const;
    std::string title() const;

    // Empty when there is no window.
    Seen look() const;

    // 0x00RRGGBB, or a colour that there is not when there is no window.
    uint32_t pixel(int x, int y) const { return pixel(window(), x, y); }

    // Of a window that was found before: one question to the server.
    uint32_t pixel(unsigned long shown, int x, int y) const;

    void pointAt(int x, int y) const;
    void button(bool isPressed, unsigned number = 1) const;
    void click(int x, int y) const;
    void type(unsigned long symbol, unsigned long held = key::NONE) const;
    void resize(int width, int height) const;

    // As a window manager's button does.
    void closeWindow() const;

    // The server is gone, and with it every window.
    void stop();

  private:
    pid_t server = 0;
    std::string displayName;
    _XDisplay* display = nullptr;
};

#endif
