// Painting the element kinds. Each paints all of its element's rectangle.
#ifndef OSTREL_DISPLAY_WIDGET_PAINT_H
#define OSTREL_DISPLAY_WIDGET_PAINT_H

#include "display/widget_look.h"

namespace ostrel {

void paintButton(const Canvas& canvas, const Element& element, const WidgetLook& look);
void paintListRow(const Canvas& canvas, const Element& element, const WidgetLook& look);
void paintField(const Canvas& canvas, const Element& element, const WidgetLook& look);
void paintChoice(const Canvas& canvas, const Element& element, const WidgetLook& look);
void paintSwitch(const Canvas& canvas, const Element& element, const WidgetLook& look);
void paintCheckRow(const Canvas& canvas, const Element& element, const WidgetLook& look);
void paintTab(const Canvas& canvas, const Element& element, const WidgetLook& look);
void paintCaption(const Canvas& canvas, const Element& element, const WidgetLook& look);

} // namespace ostrel

#endif
