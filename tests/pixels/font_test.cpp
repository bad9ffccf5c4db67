// Fonts that are missing or broken: one clear line, and boxes in place of letters.
#include "display/glyph_cache.h"
#include "gui/display.h"
#include "tests/support/panel_file.h"
#include "tests/support/staged_fonts.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace {

std::string emptyFolder(const std::string& name) {
    std::string folder = testing::TempDir() + "ostrel-fonts-" + name;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

void write(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

std::string readAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Draws a line of plain text twice with the fonts of `folder`, and returns what was said.
std::string saidWhenDrawing(const std::string& folder, Picture& drawn) {
    const PanelFile panel;
    const FontFolder fonts(folder);
    testing::internal::CaptureStderr();
    for (int i = 0; i < 2; ++i)
        drawText(L"Wide", 10, 10, 0, 1, 0, 20, 0xFFFF, 0);
    drawn = panel.picture({0, 0, 100, 40});
    return testing::internal::GetCapturedStderr();
}

long linesOf(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

} // namespace

TEST(Fonts, ThatAreMissingGiveOneLineAndBoxes) {
    const std::string folder = emptyFolder("missing");
    Picture drawn;
    const std::string said = saidWhenDrawing(folder, drawn);
    EXPECT_EQ(
        said, "ostrel: no font at " + folder +
                  "/RobotoCondensed-Medium.ttf: No such file or directory. Texts are drawn as boxes or in another "
                  "font; run the program with 'ostrel-sim PROGRAM', or name the fonts' folder in OSTREL_FONT_DIR.\n");
    const std::string boxes = shapeOf(drawn, 0xFFFF);
    EXPECT_NE(boxes.find("########"), std::string::npos) << boxes;
}

TEST(Fonts, WithoutTheSymbolFontGiveALineAtTheFirstSymbol) {
    const std::string folder = emptyFolder("letters");
    write(folder + "/RobotoCondensed-Medium.ttf", readAll(std::string(stagedFonts()) + "/RobotoCondensed-Medium.ttf"));
    Picture drawn;
    EXPECT_EQ(saidWhenDrawing(folder, drawn), "");
    const FontFolder fonts(folder);
    testing::internal::CaptureStderr();
    textWidth(L"\u2713\u2713", 20);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "ostrel: no font at " + folder +
            "/DejaVuSansCondensed.ttf: No such file or directory. Some symbols are drawn as boxes; run the program "
            "with 'ostrel-sim PROGRAM', or name the fonts' folder in OSTREL_FONT_DIR.\n");
}

TEST(Fonts, ThatAreBrokenGiveOneLineAndBoxes) {
    const std::string whole = readAll(std::string(stagedFonts()) + "/RobotoCondensed-Medium.ttf");
    ASSERT_GT(whole.size(), 100'000U);
    for (const std::string& content : {std::string(), std::string("not a font"), whole.substr(0, 1000)}) {
        const std::string folder = emptyFolder("broken");
        write(folder + "/RobotoCondensed-Medium.ttf", content);
        std::filesystem::create_directory(folder + "/DejaVuSansCondensed.ttf");
        Picture drawn;
        const std::string said = saidWhenDrawing(folder, drawn);
        EXPECT_EQ(linesOf(said), 1) << said;
        EXPECT_NE(said.find("Medium.ttf: it is not a font, or a broken one."), std::string::npos) << said;
    }
}

TEST(Fonts, CutAnywhereNeverCrash) {
    const std::string whole = readAll(std::string(stagedFonts()) + "/RobotoCondensed-Medium.ttf");
    const std::string folder = emptyFolder("cut");
    Picture drawn;
    for (size_t length = 0; length < whole.size(); length += whole.size() / 29) {
        write(folder + "/RobotoCondensed-Medium.ttf", whole.substr(0, length));
        saidWhenDrawing(folder, drawn);
    }
}

TEST(Fonts, WithoutTheTextFontTheSymbolFontStandsIn) {
    const std::string folder = emptyFolder("symbols");
    write(folder + "/DejaVuSansCondensed.ttf", readAll(std::string(stagedFonts()) + "/DejaVuSansCondensed.ttf"));
    Picture drawn;
    Picture boxes;
    EXPECT_EQ(linesOf(saidWhenDrawing(folder, drawn)), 1);
    saidWhenDrawing(emptyFolder("none"), boxes);
    EXPECT_NE(drawn, boxes);
}
