// Variables that the library offers to programs and never reads or writes itself. All are zero at load but `mode`.
#ifndef OSTREL_GUI_PROGRAM_GLOBALS_H
#define OSTREL_GUI_PROGRAM_GLOBALS_H

#include "gui/display.h"
#include "keyboard/keyboard.h"

extern OSTREL_API int32_t filed;
extern OSTREL_API int32_t i;
extern OSTREL_API int32_t CAP;
extern OSTREL_API int32_t keyPress;
extern OSTREL_API int32_t textCnt;
extern OSTREL_API int32_t textChanged;
extern OSTREL_API int32_t keyboardEnabled;
extern OSTREL_API int32_t keyboardReturnFill;
extern OSTREL_API int32_t kb_cap;
extern OSTREL_API int32_t mode; // 1 at load
extern OSTREL_API void (*keyBoardReturnFunc)();
extern OSTREL_API wchar_t keyboardText[KEYBOARD_TEXT_LENGTH];
extern OSTREL_API WidgetRecord touchWidget;

#endif
