// The page of the language picker: the installed languages to choose from, eight at a time.
#ifndef OSTREL_APPS_LANGUAGE_PICKER_H
#define OSTREL_APPS_LANGUAGE_PICKER_H

#include <ostrel.h>

#include <string>

// Looks for the languages in `directory` and marks the one of the setting "Language". Call it before the others here.
void preparePicker(const std::string& directory);

void drawPicker();
Screen& pickerPage();

// The user has left the page, by Done, which has stored the choice by then, or by back, which stores nothing.
bool isPickerOver();

#endif
