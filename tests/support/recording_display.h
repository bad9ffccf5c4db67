// A display library that draws nothing and remembers every call as a line of text, in order, with a pen that follows
// a script. Tests compare the whole log, so that a difference shows the one wrong call.
#ifndef OSTREL_TESTS_SUPPORT_RECORDING_DISPLAY_H
#define OSTREL_TESTS_SUPPORT_RECORDING_DISPLAY_H

#include "gui/display.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

struct RecordingDisplay {
    std::vector<std::string> calls;

    // What readX/readY tell, one entry a readX; when they are used up, the pen is up (-1, -1). Reads are logged only
    // when logPen is set.
    std::vector<std::pair<int, int>> pen;
    size_t penRead = 0;
    bool logPen = false;

    // What getTouchArea answers; the record's own rectangle when unset.
    std::function<TouchArea(const WidgetRecord&)> touchArea;

    // Advance of every character at any size, and of those that differ.
    int characterWidth = 10;
    std::map<wchar_t, int> characterWidths;
    bool namesNoCharacter = false; // textTouchPosition finds none

    // Called before each operation is logged, with its name; may throw.
    std::function<void(const std::string&)> beforeCall;

    void (*idleHandler)() = nullptr;

    // The calls since the last take, one a line.
    std::string take();
};

// The one display of the process. `display() = {}` is a fresh start.
RecordingDisplay& display();

// Readable form of a wide text in a log line: UTF-8.
std::string narrow(const wchar_t* text);

#endif
