// Every function with texts takes literals, arrays, pointers of both kinds and the texts of strings, in any mixture, as
// C++11 and without a warning. Compiled only: nothing here is ever called.
#include <ostrel.h>

#include <string>

void mixTexts();
void mixWideTexts();

// clang-format off
#define EACH_BESIDE(use, first) use(first, "text") use(first, array) use(first, pointer) \
    use(first, constant) use(first, constantArray) use(first, string.c_str())
#define EACH_PAIR(use) EACH_BESIDE(use, "text") EACH_BESIDE(use, array) EACH_BESIDE(use, pointer) \
    EACH_BESIDE(use, constant) EACH_BESIDE(use, constantArray) EACH_BESIDE(use, string.c_str())
// clang-format on

void mixTexts() {
    char array[180] = "";
    char* pointer = array;
    const char* constant = array;
    const char constantArray[] = "text";
    const std::string string = "text";
    wchar_t out[180] = L"";
    Memory memory;
    Keyboard keyboard;
    ImagePNG image;
    Widget widget(1, 0, 0, 0, 0, 0, L"");

#define USE(text)                                                                                                      \
    nvram_get(0, text);                                                                                                \
    nvram_getRtdev(0, text);                                                                                           \
    memory.getSetting(text, array);                                                                                    \
    memory.getNoSaveSetting(text, pointer);                                                                            \
    memory.getSettingRtdev(text, array);                                                                               \
    keyboard.draw(text);                                                                                               \
    keyboard.drawRtdev(text);                                                                                          \
    keyboard.drawText(text, out);                                                                                      \
    image.loadPNG(text);                                                                                               \
    widget.useKeyboard(true, text);                                                                                    \
    textLen(text);                                                                                                     \
    aswprintf(out, 179, L"%s", text);
    USE("text")
    USE(array)
    USE(pointer)
    USE(constant)
    USE(constantArray)
    USE(string.c_str())

#define USE_PAIR(first, second)                                                                                        \
    nvram_set(0, first, second);                                                                                       \
    nvram_setRtdev(0, first, second);                                                                                  \
    memory.addValue(first, second);                                                                                    \
    memory.addValueRtdev(first, second);                                                                               \
    memory.saveSetting(first, second);                                                                                 \
    memory.saveSettingRtdev(first, second);                                                                            \
    Persistence(first, second).persist(first, second);                                                                 \
    Persistence(first, second).copyFile(first, second);                                                                \
    Persistence(first, second).depersist(first);                                                                       \
    lang.get(first, second);                                                                                           \
    lang.getvalue("file", first, second);                                                                              \
    lang.getvalue(array, first, second);                                                                               \
    getLangvalue(constant, first, second);                                                                             \
    getLangvalue(pointer, first, second);
    EACH_PAIR(USE_PAIR)
}
#undef USE

void mixWideTexts() {
    wchar_t array[180] = L"";
    wchar_t* pointer = array;
    const wchar_t* constant = array;
    const wchar_t constantArray[] = L"text";
    const std::wstring string = L"text";
    Modal modal;
    Screen screen(L"title");

#define USE(text)                                                                                                      \
    Widget(1, 0, 0, 0, 0, 0, 0, 0, 20, 0, text).setText(text);                                                         \
    Widget(1, 0, 0, 0, 0, 0, text).setText(text);                                                                      \
    Widget(0, 0, 0, 0, 0, 20, 0, 0, text).setText(text);                                                               \
    Screen(text).setTitle(text);                                                                                       \
    modal.setLine1(text);                                                                                              \
    modal.setLine2(text);                                                                                              \
    modal.setLine3(text);                                                                                              \
    modal.setLine4(text);                                                                                              \
    modal.setLine5(text);                                                                                              \
    drawText(text, 0, 0, 0, 0, 0, 20, 0, 0);                                                                           \
    drawFontBigWhiteString(text, 0, 0);                                                                                \
    unDrawTitle(text);                                                                                                 \
    textWidth(text, 20);                                                                                               \
    textTouchPosition(text, 0, 20);                                                                                    \
    drawTextKey(text, 0, 0, 0, 0, 0, 20, 0, 0);                                                                        \
    textLen(text);                                                                                                     \
    aswprintf(array, 179, text);                                                                                       \
    aswprintf(pointer, 179, text, text, 1, 2U, 1.5);
    USE(L"text")
    USE(array)
    USE(pointer)
    USE(constant)
    USE(constantArray)
    USE(string.c_str())
}
