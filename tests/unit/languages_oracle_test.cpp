// The lookup against its rules spelled out, over random files made of what the rules are about.
#include "lang/languages.h"
#include "tests/support/language_file.h"
#include "tests/support/language_oracle.h"
#include "tests/support/scale.h"

#include <gtest/gtest.h>

#include <cstring>
#include <iterator>
#include <random>

namespace {

std::string randomFile(std::mt19937& random) {
    static const std::string PIECES[] = {
        "<s>",
        "</s>",
        "<s>\n",
        "</s>\n",
        "<k>",
        "</k>",
        "<k>text</k>\n",
        "<j>",
        "</j>",
        "\n",
        "\n",
        "word ",
        "\r\n",
        "<",
        ">",
        std::string(1, '\0'),
        "\xC3\xA9",
        "\x80",
        std::string(200, '-'),
        std::string(240, 'x'),
        std::string(1000, 'y')};
    std::string file;
    const size_t pieces = random() % 24;
    for (size_t i = 0; i < pieces; ++i) {
        // The long ones are rare.
        const size_t choices = random() % 8 == 0 ? std::size(PIECES) : std::size(PIECES) - 3;
        file += PIECES[random() % choices];
    }
    return file;
}

TEST(LookupRules, HoldInRandomFiles) {
    constexpr uint32_t SEED = 4711;
    const long files = scaled(200'000);
    std::mt19937 random(SEED);
    LanguageTextFile file("");
    std::memset(ret, 0, sizeof ret);
    for (long i = 0; i < files; ++i) {
        const std::string contents = (random() % 2 != 0 ? "<s>\n" : "") + randomFile(random);
        ASSERT_TRUE(file.write(contents));
        const std::string key = random() % 4 != 0 ? "k" : "j";
        if (random() % 4 == 0)
            ret[0] = 0;
        const bool isFree = random() % 2 != 0;
        const std::string expected = oracle::LanguageLookup(contents, isFree ? 1024 : 255).find(key, "s", ret);
        if (isFree)
            getLangvalue(file.path().c_str(), key.c_str(), "s");
        else
            lang.getvalue(file.path().c_str(), key.c_str(), "s");
        ASSERT_EQ(ret, expected) << "seed " << SEED << ", file " << i << ":\n" << contents;
    }
}

} // namespace
