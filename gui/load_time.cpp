// The objects that exist from load on. One file owns them, so that they are constructed in this order wherever the
// linker puts the others.
#include "gui/modal.h"
#include "gui/screen.h"
#include "gui/widget.h"
#include "lang/languages.h"

WidgetType wType;
ImagePNG baseImages;
Languages lang;
ImagePNG modalImages;
