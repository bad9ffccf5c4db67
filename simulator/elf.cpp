#include "simulator/elf.h"

#include <algorithm>
#include <cstring>
#include <elf.h>
#include <fstream>
#include <iterator>

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

// "qemu-arm", "qemu-arm-static": its arguments name the program that it runs. The machines' emulators are not meant.
bool isEmulator(const std::string& path) {
    const std::string name = path.substr(path.rfind('/') + 1);
    return name.rfind("qemu-", 0) == 0 && name.rfind("qemu-system-", 0) != 0;
}

// The first argument that is neither an option nor an option's value; empty when there is none.
std::string emulatedProgram(const std::vector<std::string>& words) {
    constexpr const char* LONE_OPTIONS[] = {"-h", "-help", "-version", "-strace", "-singlestep", "-one-insn-per-tb"};
    for (size_t i = 1; i < words.size(); ++i) {
        const std::string option = words[i].compare(0, 2, "--") == 0 ? words[i].substr(1) : words[i];
        if (option.empty() || option[0] != '-')
            return words[i];
        const bool isLone =
            std::find(std::begin(LONE_OPTIONS), std::end(LONE_OPTIONS), option) != std::end(LONE_OPTIONS);
        if (!isLone)
            ++i;
    }
    return "";
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

std::string scriptInterpreter(const std::string& path) {
    return interpreterOf(firstBytes(path));
}

ElfKind commandKind(const std::vector<std::string>& words) {
    const std::string emulated = isEmulator(words.front()) ? emulatedProgram(words) : "";
    return programKind(emulated.empty() ? words.front() : emulated);
}

std::string machineName(uint16_t machine) {
    for (const MachineName& row : MACHINE_NAMES)
        if (row.machine == machine)
            return row.name;
    return "another machine";
}

} // namespace ostrel
