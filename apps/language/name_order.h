// The order of languages' names as a person looks for them in a list.
#ifndef OSTREL_APPS_LANGUAGE_NAME_ORDER_H
#define OSTREL_APPS_LANGUAGE_NAME_ORDER_H

#include <string>

// Whether `left` stands before `right`: Latin names before Greek and Cyrillic ones, small letters like capitals, and
// letters with accents among those without. Names that differ in nothing else keep the order of their characters.
bool comesBefore(const std::wstring& left, const std::wstring& right);

#endif
