// What a program file is: its architecture decides the size of a touch record.
#ifndef OSTREL_SIMULATOR_ELF_H
#define OSTREL_SIMULATOR_ELF_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ostrel {

enum class Bits { Unknown, ThirtyTwo, SixtyFour };

struct ElfKind {
    Bits bits = Bits::Unknown; // Unknown: not an ELF file
    uint16_t machine = 0;      // EM_X86_64, EM_ARM, ...
};

// Reads the kind from the first bytes of a file.
ElfKind elfKind(const unsigned char* bytes, size_t size);

// Of the file at `path`; of its interpreter where it is a script. Unknown when nothing can be read.
ElfKind programKind(const std::string& path);

// "/bin/sh" of a file that begins with "#! /bin/sh -e"; empty when it does not begin so.
std::string scriptInterpreter(const std::string& path);

// Of the program that a command line of at least one word runs: of the emulated one where the first word is a user-mode
// emulator such as qemu-arm.
ElfKind commandKind(const std::vector<std::string>& words);

// "ARM", "x86-64", ... or "another machine".
std::string machineName(uint16_t machine);

} // namespace ostrel

#endif
