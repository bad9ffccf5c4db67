// Every copy into a fixed buffer goes through these: cut at the buffer's end, always terminated.
#ifndef OSTREL_UTIL_BOUNDED_COPY_H
#define OSTREL_UTIL_BOUNDED_COPY_H

#include <cstddef>

namespace ostrel {

// Copies `text` and its terminator, nothing behind it. A null text is an empty one. Text and buffer may overlap only
// when they are the same.
template<typename Char>
void copyText(Char* buffer, size_t size, const Char* text) {
    size_t length = 0;
    if (text != nullptr)
        for (; length + 1 < size && text[length] != 0; ++length)
            buffer[length] = text[length];
    buffer[length] = 0;
}

template<typename Char, size_t SIZE>
void copyText(Char (&buffer)[SIZE], const Char* text) {
    copyText(buffer, SIZE, text);
}

// Copies `text` behind the one that the buffer holds already.
template<typename Char>
void appendText(Char* buffer, size_t size, const Char* text) {
    size_t length = 0;
    while (buffer[length] != 0)
        ++length;
    copyText(buffer + length, size - length, text);
}

template<typename Char, size_t SIZE>
void appendText(Char (&buffer)[SIZE], const Char* text) {
    appendText(buffer, SIZE, text);
}

} // namespace ostrel

#endif
