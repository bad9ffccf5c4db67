#include "gui/program_globals.h"

int32_t filed;
int32_t i;
int32_t CAP;
int32_t keyPress;
int32_t textCnt;
int32_t textChanged;
int32_t keyboardEnabled;
int32_t keyboardReturnFill;
int32_t kb_cap;
int32_t mode = 1;
void (*keyBoardReturnFunc)();
wchar_t keyboardText[KEYBOARD_TEXT_LENGTH];
WidgetRecord touchWidget;
