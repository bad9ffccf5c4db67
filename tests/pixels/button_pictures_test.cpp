// The exported pictures of the back and exit buttons beside the header's images.
#include "gui/button_pictures.h"
#include "gui/display.h"
#include "tests/support/golden.h"
#include "tests/support/panel_file.h"

#include <algorithm>

using namespace ostrel;

namespace {

struct ButtonPicture {
    const char* image;
    const uint32_t* words;
};

constexpr ButtonPicture BUTTON_PICTURES[] = {
    {"back_35", backimage},
    {"backimagePressed_35", backimagePressed},
    {"cross_35", exitimage},
    {"exitimagePressed_35", exitimagePressed},
};

Picture pictureOf(const uint32_t* words) {
    Picture picture = blankPicture(35, 35, 0);
    std::transform(words, words + 1225, picture.pixels.begin(), [](uint32_t word) { return uint16_t(word & 0xFFFFU); });
    return picture;
}

} // namespace

TEST(ButtonPictures, ShowWhatAPageShowsOverBlack) {
    const PanelFile panel;
    ImagePNG images;
    for (const ButtonPicture& button : BUTTON_PICTURES) {
        const int index = images.loadPNG((std::string(OSTREL_STAGED) + "/" + button.image + ".png").c_str());
        lcd_clear(0);
        images.drawPNG(10, 5, 0, 0, index);
        EXPECT_TRUE(matchesPicture(pictureOf(button.words), panel.picture({10, 5, 45, 40}), button.image));
    }
}

TEST(ButtonPictures, AreInTheLowHalvesOfTheirWords) {
    for (const ButtonPicture& button : BUTTON_PICTURES)
        EXPECT_TRUE(std::all_of(button.words, button.words + 1225, [](uint32_t word) { return word <= 0xFFFF; }))
            << button.image;
}

TEST(ButtonPictures, DifferFromEachOther) {
    for (const ButtonPicture& one : BUTTON_PICTURES)
        for (const ButtonPicture& other : BUTTON_PICTURES)
            EXPECT_EQ(pictureOf(one.words) == pictureOf(other.words), &one == &other) << one.image << other.image;
}
