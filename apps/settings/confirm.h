// A page that asks: a title, up to three lines of 290 pixels at 20 pixels, and two buttons.
#ifndef OSTREL_APPS_SETTINGS_CONFIRM_H
#define OSTREL_APPS_SETTINGS_CONFIRM_H

#include <string>

struct Question {
    const char* title; // keys of texts
    const char* text;  // its lines are the texts TEXT_q1, TEXT_q2, ...
    int lines;         // how many: 1 to 3
    const char* yes;
    const char* no;
    bool isDangerous; // yes does what cannot be undone
};

// Shows the question. Yes calls `onYes`, which shows a page or begins an entry; no and the back button lead back to the
// page that is showing now, as it is. `question` must last. `value` (UTF-8) stands at the right end of the last line.
void ask(const Question& question, void (*onYes)(), const std::string& value = "");

#endif
