// Marks what the two libraries export. Everything without it stays hidden.
#ifndef OSTREL_UTIL_API_H
#define OSTREL_UTIL_API_H

#define OSTREL_API __attribute__((visibility("default")))

#endif
