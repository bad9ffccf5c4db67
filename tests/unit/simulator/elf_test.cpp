#include "simulator/elf.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <elf.h>
#include <fstream>
#include <gtest/gtest.h>
#include <vector>

using namespace ostrel;

namespace {

std::vector<unsigned char> header(unsigned char elfClass, unsigned char data, unsigned char at18, unsigned char at19) {
    std::vector<unsigned char> bytes = {0x7f, 'E', 'L', 'F', elfClass, data};
    bytes.resize(20);
    bytes[18] = at18;
    bytes[19] = at19;
    return bytes;
}

void write(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

TEST(ElfKind, TellsTheRoutersProgramsFromTheDesks) {
    const auto arm = header(ELFCLASS32, ELFDATA2LSB, EM_ARM, 0);
    EXPECT_EQ(elfKind(arm.data(), arm.size()).bits, Bits::ThirtyTwo);
    EXPECT_EQ(machineName(elfKind(arm.data(), arm.size()).machine), "ARM");
    const auto desk = header(ELFCLASS64, ELFDATA2LSB, EM_X86_64, 0);
    EXPECT_EQ(elfKind(desk.data(), desk.size()).bits, Bits::SixtyFour);
    EXPECT_EQ(machineName(elfKind(desk.data(), desk.size()).machine), "x86-64");
}

TEST(ElfKind, ReadsBigEndianMachines) {
    const auto mips = header(ELFCLASS32, ELFDATA2MSB, 0, EM_MIPS);
    EXPECT_EQ(machineName(elfKind(mips.data(), mips.size()).machine), "MIPS");
}

TEST(ElfKind, IsUnknownForAnythingElse) {
    auto bytes = header(ELFCLASS64, ELFDATA2LSB, EM_X86_64, 0);
    EXPECT_EQ(elfKind(bytes.data(), 19).bits, Bits::Unknown); // cut short
    EXPECT_EQ(elfKind(bytes.data(), 0).bits, Bits::Unknown);
    bytes[1] = 'e';
    EXPECT_EQ(elfKind(bytes.data(), bytes.size()).bits, Bits::Unknown);
    EXPECT_EQ(machineName(0xFFFF), "another machine");
}

TEST(ProgramKind, OfAScriptIsItsInterpreters) {
    const TemporaryDirectory directory;
    const auto arm = header(ELFCLASS32, ELFDATA2LSB, EM_ARM, 0);
    write(directory.file("interpreter"), std::string(arm.begin(), arm.end()));
    write(directory.file("script"), "#! " + directory.file("interpreter") + " -e\necho\n");
    EXPECT_EQ(programKind(directory.file("script")).bits, Bits::ThirtyTwo);
    write(directory.file("text"), "#!\n");
    EXPECT_EQ(programKind(directory.file("text")).bits, Bits::Unknown);
    EXPECT_EQ(programKind(directory.file("missing")).bits, Bits::Unknown);
}

TEST(CommandKind, OfAnEmulatorIsTheEmulatedPrograms) {
    const TemporaryDirectory directory;
    const auto desk = header(ELFCLASS64, ELFDATA2LSB, EM_X86_64, 0);
    const auto arm = header(ELFCLASS32, ELFDATA2LSB, EM_ARM, 0);
    const std::string program = directory.file("program");
    const std::string other = directory.file("other");
    write(program, std::string(arm.begin(), arm.end()));
    write(other, std::string(desk.begin(), desk.end()));
    for (const char* name : {"qemu-arm", "qemu-arm-static"}) {
        const std::string emulator = directory.file(name);
        write(emulator, std::string(desk.begin(), desk.end()));
        const auto bitsOf = [&](std::vector<std::string> words) {
            words.insert(words.begin(), emulator);
            return commandKind(words).bits;
        };
        EXPECT_EQ(bitsOf({program}), Bits::ThirtyTwo);
        EXPECT_EQ(bitsOf({"-L", other, program, other}), Bits::ThirtyTwo);
        EXPECT_EQ(bitsOf({"-strace", "-E", "A=b", "--cpu", "max", program, "-L", other}), Bits::ThirtyTwo);
        EXPECT_EQ(bitsOf({other, program}), Bits::SixtyFour);
        EXPECT_EQ(bitsOf({}), Bits::SixtyFour) << "it tells how it is used, and asks for no pen";
        EXPECT_EQ(bitsOf({"-L"}), Bits::SixtyFour);
    }
    EXPECT_EQ(commandKind({other, program}).bits, Bits::SixtyFour) << "arguments of other programs are theirs";
}

} // namespace
