// The back and exit buttons of a page's header as plain pixels, for programs that draw them themselves. The library
// reads none of these tables. Each holds 35 rows of 35 pixels from the top left, one RGB565 colour in the low half of
// each word, and shows the button over black exactly as a page does.
#ifndef OSTREL_GUI_BUTTON_PICTURES_H
#define OSTREL_GUI_BUTTON_PICTURES_H

#include "util/api.h"

#include <cstdint>

// Pixels along a side, and words of a table.
enum : int { HEADER_BUTTON_SIDE = 35, HEADER_BUTTON_WORDS = 1225 };

extern OSTREL_API uint32_t backimage[HEADER_BUTTON_WORDS];
extern OSTREL_API uint32_t backimagePressed[HEADER_BUTTON_WORDS];
extern OSTREL_API uint32_t exitimage[HEADER_BUTTON_WORDS];
extern OSTREL_API uint32_t exitimagePressed[HEADER_BUTTON_WORDS];

#endif
