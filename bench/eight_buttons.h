// A page with all that a page has: four header images, a title and eight buttons.
#ifndef OSTREL_BENCH_EIGHT_BUTTONS_H
#define OSTREL_BENCH_EIGHT_BUTTONS_H

#include "gui/screen.h"

#include <cwchar>
#include <string>

// The images that the first page loads from /ostrel, from where the build has them.
inline void loadStagedHeaderImages() {
    const auto load = [](const char* name) {
        return baseImages.loadPNG((std::string(OSTREL_STAGED) + "/" + name + ".png").c_str());
    };
    notLoaded = 0;
    for (const char* name :
         {"back_grayed_35", "home_35", "home_grayed_35", "homepressed_35", "language_35", "languagepressed_35"})
        load(name);
    backImagePng = load("back_35");
    backImagePressedPng = load("backimagePressed_35");
    exitImagePng = load("cross_35");
    exitImagePressedPng = load("exitimagePressed_35");
}

inline Widget* newButton(int x, int y, const wchar_t* text) {
    auto* const button = new Widget(wType.kind0, x, y, 0, 0, 0, 145, 42, 20.0F, 1, text);
    button->record.password = 0;
    button->record.touchable = 1;
    button->callback = [] {};
    button->next = nullptr;
    button->prev = nullptr;
    return button;
}

// Never destroyed: a page draws once more when it is.
inline Screen& eightButtons() {
    loadStagedHeaderImages();
    auto* const page = new Screen(L"Network");
    page->onBack = [] {};
    page->showLanguage = 1;
    page->showHome = 1; // under the exit button: as many images as a page can draw
    for (int i = 0; i < 8; ++i) {
        wchar_t text[16];
        swprintf(text, 16, L"Button %d", i + 1);
        Widget* const button = newButton(10 + 155 * (i % 2), 46 + 48 * (i / 2), text);
        button->prev = page->widgets;
        if (page->widgets != nullptr)
            page->widgets->next = button;
        page->widgets = button;
    }
    return *page;
}

#endif
