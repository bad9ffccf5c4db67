// The store when the router is switched on, and its factory defaults.
#ifndef OSTREL_SIMULATOR_STORE_POWER_ON_H
#define OSTREL_SIMULATOR_STORE_POWER_ON_H

#include "simulator/store/store_text.h"

#include <string>
#include <vector>

namespace ostrel {

// Prepares the store in the state directory `directory` for a run: drops what was set but never committed, and gives a
// section that has never been written, or is damaged, the defaults of the file `factory`. A damaged file is kept beside
// the new one under another name, never overwritten. Only for the one simulator that runs in that directory, before
// its first program. Adds one sentence for everything a person should know to `messages`; false when the store cannot
// be used, of which the last message tells why.
bool powerOnStore(const std::string& directory, const std::string& factory, std::vector<std::string>& messages);

// Puts one section back to the defaults of the file `factory`, both copies, whatever state it is in; a damaged file is
// kept beside it. 0 or a negative errno.
int resetSection(
    const std::string& directory, Section section, const std::string& factory, std::vector<std::string>& messages);

// Reads a section's factory defaults: lines of "name=value" below "[main]" or "[rtdev]", with "#" comments and empty
// lines between them and the store's escapes in names and values. Writes the text of a section that holds them and
// returns its size; 0 with one message naming file and line when the file cannot be read or has an error.
size_t
readFactory(const std::string& factory, Section section, char (&text)[STORE_SIZE], std::vector<std::string>& messages);

// Why a section's file cannot be used: its path, the line and the reason. Empty when it can.
std::string describeDamage(const std::string& directory, Section section);

} // namespace ostrel

#endif
