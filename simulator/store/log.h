// The simulator's log in the state directory: what programs asked devices and commands for, one line each.
#ifndef OSTREL_SIMULATOR_STORE_LOG_H
#define OSTREL_SIMULATOR_STORE_LOG_H

#include "simulator/store/store_text.h"

namespace ostrel {

// Appends "12:34:56.789 program[7] " (universal time, the calling process) and the text that printf would make of the
// rest, cut where the line would be longer than 400 bytes. Control characters become question marks. Says nothing when
// the log cannot be written: a router would not stop either. Past 8 MiB the log becomes "log.old" and a new one begins.
__attribute__((format(printf, 2, 3))) void logLine(const char* directory, const char* format, ...);

// Whether the value of a setting is nobody else's business: names that tell of a PIN, a password or a key.
bool isSecret(const char* name);

// A value as the log shows it: stars for a secret one, the beginning of a long one.
constexpr size_t SHOWN_SIZE = 64;
void showValue(char (&shown)[SHOWN_SIZE], const char* name, const char* value);

} // namespace ostrel

#endif
