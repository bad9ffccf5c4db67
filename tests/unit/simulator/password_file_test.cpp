#include "simulator/web/password_file.h"

#include "simulator/failure.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace ostrel;

namespace {

class PasswordFile : public testing::Test {
  protected:
    PasswordFile() : path(directory.file("secret")) {}

    void write(const std::string& content, mode_t mode = 0600) const {
        std::ofstream(path, std::ios::binary) << content;
        chmod(path.c_str(), mode);
    }

    std::string refusal() const {
        bool others = false;
        try {
            readPassword(path, others);
            return "accepted";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.status, exit_status::SIMULATOR_FAILED);
            return failure.what();
        }
    }

    TemporaryDirectory directory;
    std::string path;
};

TEST_F(PasswordFile, GivesItsFirstLine) {
    const struct {
        const char* content;
        const char* password;
    } cases[] = {
        {"router", "router"},       {"router\n", "router"},     {"router\r\nmore", "router"}, {"a\nanother one", "a"},
        {" two w  \n", " two w  "}, {"12345678\n", "12345678"}, {"~!\"\\'$`\n", "~!\"\\'$`"},
    };
    for (const auto& row : cases) {
        write(row.content);
        bool others = true;
        EXPECT_EQ(readPassword(path, others), row.password);
        EXPECT_FALSE(others);
    }
}

TEST_F(PasswordFile, TellsWhoElseCanReadIt) {
    for (const mode_t mode : {0640U, 0604U, 0444U}) {
        write("router", mode);
        bool others = false;
        readPassword(path, others);
        EXPECT_TRUE(others) << std::oct << mode;
        chmod(path.c_str(), 0600);
    }
}

TEST_F(PasswordFile, SaysWhatIsWrongAndNotWhatItSays) {
    EXPECT_EQ(refusal(), "cannot read the password in " + path + ": No such file or directory");
    write("");
    EXPECT_EQ(refusal(), "there is no password in " + path + "; write one into its first line");
    write("\nrouter\n");
    EXPECT_EQ(refusal(), "there is no password in " + path + "; write one into its first line");
    for (const std::string& longer : {std::string("123456789"), std::string(100000, 'x')}) {
        write(longer);
        EXPECT_EQ(
            refusal(),
            "the password in " + path + " is too long: VNC knows 8 characters and no more; shorten its first line");
    }
    for (const std::string& odd : {std::string("caf\xC3\xA9"), std::string("a\tb"), std::string("a\0b", 3)}) {
        write(odd);
        EXPECT_EQ(
            refusal(), "the password in " + path +
                           " has characters that VNC viewers send differently; choose from the letters a to z, digits "
                           "and signs of ASCII");
    }
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(refusal(), "cannot read the password in " + path + ": Is a directory");
}

} // namespace
