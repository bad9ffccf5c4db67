// Everything that a program for the router may call. Include this header, link -lOstrel.
#ifndef OSTREL_H
#define OSTREL_H

#include "gui/button_pictures.h"
#include "gui/display.h"
#include "gui/modal.h"
#include "gui/program_globals.h"
#include "gui/screen.h"
#include "gui/widget.h"
#include "keyboard/keyboard.h"
#include "lang/languages.h"
#include "lock/backlight.h"
#include "lock/inactivity.h"
#include "lock/pin_pad.h"
#include "settings/memory.h"
#include "settings/nvram.h"
#include "settings/persistence.h"
#include "util/number.h"
#include "util/utf8.h"
#include "util/wide_format.h"

#endif
