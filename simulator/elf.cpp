#include "simulator/elf.h"

#include <cstring>
#include <elf.h>
#include <fstream>
#include <vector>

namespace ostrel {
namespace {

struct MachineName {
    uint16_t machine;
    const char* name;
};
constexpr MachineName MACHINE_NAMES[] = {
    {EM_X86_64, "x86-64"}, {EM_386, "x86"},   {EM_ARM, "ARM"},      {EM_AARCH64, "ARM64"},
    {EM_MIPS, "MIPS"},     {EM_PPC, "Power"}, {EM_RISCV, "RISC-V"},
};

std::vector<unsigned char> firstBytes(const std::string& path) {
    std::vector<unsigned char> bytes(256);
    std::ifstream file(path, std::ios::binary);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<size_t>(file.gcount()));
    return bytes;
}

// "/bin/sh" of "#! /bin/sh -e"; empty when there is no such line.
std::string interpreterOf(const std::vector<unsigned char>& bytes) {
    const std::string text(bytes.begin(), bytes.end());
    if (text.compare(0, 2, "#!") != 0)
        return "";
    const size_t begin = text.find_first_not_of(" \t", 2);
    if (begin == std::string::npos)
        return "";
    return text.substr(begin, text.find_first_of(" \t\n", begin) - begin);
}

} // namespace

ElfKind elfKind(const unsigned char* bytes, size_t size) {
    constexpr size_t MACHINE_OFFSET = 18;
    if (size < MACHINE_OFFSET + 2 || memcmp(bytes, ELFMAG, SELFMAG) != 0)
        return {};
    ElfKind kind;
    if (bytes[EI_CLASS] == ELFCLASS32)
        kind.bits = Bits::ThirtyTwo;
    else if (bytes[EI_CLASS] == ELFCLASS64)
        kind.bits = Bits::SixtyFour;
    const bool bigEndian = bytes[EI_DATA] == ELFDATA2MSB;
    const unsigned low = bytes[MACHINE_OFFSET + (bigEndian ? 1 : 0)];
    const unsigned high = bytes[MACHINE_OFFSET + (bigEndian ? 0 : 1)];
    kind.machine = static_cast<uint16_t>(high << 8 | low);
    return kind;
}

ElfKind programKind(const std::string& path) {
    std::vector<unsigned char> bytes = firstBytes(path);
    const std::string interpreter = interpreterOf(bytes);
    if (!interpreter.empty())
        bytes = firstBytes(interpreter);
    return elfKind(bytes.data(), bytes.size());
}

std::string machineName(uint16_t machine) {
    for (const MachineName& row : MACHINE_NAMES)
        if (row.machine == machine)
            return row.name;
    return "another machine";
}

} // namespace ostrel
