// Messages in a box that stand until they are tapped away: refusals and results. Their three lines are the texts
// KEY_l1, KEY_l2 and KEY_l3, none of them wider than 124 pixels at 17 pixels.
//
// The panel is clear afterwards: a page's callback draws the page again, a check of an entry just returns.
#ifndef OSTREL_APPS_SETTINGS_NOTICE_H
#define OSTREL_APPS_SETTINGS_NOTICE_H

void tell(const char* key);

// Always false, so that a check can end with `return isRight || refuse("page_what_is_wrong")`.
bool refuse(const char* key);

#endif
