// PNG files of every colour type and depth are decoded to the panel's colours.
#include "display/png_image.h"
#include "tests/support/guarded_canvas.h"
#include "tests/support/png_writer.h"

#include <gtest/gtest.h>

using namespace ostrel;

namespace {

struct Rgba {
    unsigned red, green, blue, alpha;
};

struct Kind {
    const char* name;
    int colourType;
    int bitDepth;
    bool isTransparent; // by a tRNS chunk
};

constexpr Kind KINDS[] = {
    {"grey 1", 0, 1, false},
    {"grey 2", 0, 2, false},
    {"grey 4", 0, 4, false},
    {"grey 8", 0, 8, false},
    {"grey 16", 0, 16, false},
    {"grey 1 with tRNS", 0, 1, true},
    {"grey 2 with tRNS", 0, 2, true},
    {"grey 8 with tRNS", 0, 8, true},
    {"grey 16 with tRNS", 0, 16, true},
    {"RGB 8", 2, 8, false},
    {"RGB 16", 2, 16, false},
    {"RGB 8 with tRNS", 2, 8, true},
    {"RGB 16 with tRNS", 2, 16, true},
    {"palette 1", 3, 1, false},
    {"palette 2", 3, 2, false},
    {"palette 4", 3, 4, false},
    {"palette 8", 3, 8, false},
    {"palette 1 with tRNS", 3, 1, true},
    {"palette 4 with tRNS", 3, 4, true},
    {"palette 8 with tRNS", 3, 8, true},
    {"grey and alpha 8", 4, 8, false},
    {"grey and alpha 16", 4, 16, false},
    {"RGBA 8", 6, 8, false},
    {"RGBA 16", 6, 16, false},
};

PngPicture randomPicture(const Kind& kind, std::mt19937& random) {
    PngPicture picture;
    picture.width = pick(random, 1, 19);
    picture.height = pick(random, 1, 13);
    picture.colourType = kind.colourType;
    picture.bitDepth = kind.bitDepth;
    picture.samples.resize(picture.rowBytes() * static_cast<size_t>(picture.height));
    // 16-bit samples of two equal bytes stand for exactly one 8-bit sample.
    const size_t step = kind.bitDepth == 16 ? 2 : 1;
    for (size_t i = 0; i < picture.samples.size(); i += step)
        std::fill_n(&picture.samples[i], step, static_cast<uint8_t>(random()));
    const auto entries = static_cast<size_t>(1) << kind.bitDepth;
    if (kind.colourType == 3) {
        for (size_t i = 0; i < 3 * entries; ++i)
            picture.palette.push_back(static_cast<uint8_t>(random()));
        // Fewer alphas than colours: the rest is opaque.
        for (size_t i = 0; kind.isTransparent && i < (entries + 1) / 2; ++i)
            picture.transparency.push_back(static_cast<uint8_t>(random()));
    } else if (kind.isTransparent) {
        for (int channel = 0; channel < picture.channels(); ++channel) {
            const unsigned sample = picture.sample(0, 0, channel);
            picture.transparency.push_back(static_cast<uint8_t>(sample >> 8));
            picture.transparency.push_back(static_cast<uint8_t>(sample));
        }
    }
    return picture;
}

bool isTheTransparentColour(const PngPicture& picture, int x, int y) {
    for (int channel = 0; channel < picture.channels(); ++channel) {
        const auto i = static_cast<size_t>(channel) * 2;
        const unsigned value = picture.transparency[i] * 256U + picture.transparency[i + 1];
        if (picture.sample(x, y, channel) != value)
            return false;
    }
    return true;
}

Rgba pixelOf(const PngPicture& picture, int x, int y) {
    if (picture.colourType == 3) {
        const size_t index = picture.sample(x, y, 0);
        const uint8_t* const colour = &picture.palette[3 * index];
        const unsigned alpha = index < picture.transparency.size() ? picture.transparency[index] : 255;
        return {colour[0], colour[1], colour[2], alpha};
    }
    const unsigned largest = (1U << picture.bitDepth) - 1;
    const auto channel = [&](int index) { return picture.sample(x, y, index) * 255 / largest; };
    const bool isKeyed = !picture.transparency.empty() && isTheTransparentColour(picture, x, y);
    switch (picture.colourType) {
    case 0:
        return {channel(0), channel(0), channel(0), isKeyed ? 0U : 255U};
    case 2:
        return {channel(0), channel(1), channel(2), isKeyed ? 0U : 255U};
    case 4:
        return {channel(0), channel(0), channel(0), channel(1)};
    default:
        return {channel(0), channel(1), channel(2), channel(3)};
    }
}

// The nearest of `steps` + 1 levels.
unsigned nearest(unsigned value, unsigned steps) {
    return (value * steps * 2 + 255) / 510;
}

uint16_t panelColour(const Rgba& pixel) {
    return static_cast<uint16_t>(
        nearest(pixel.red, 31) << 11 | nearest(pixel.green, 63) << 5 | nearest(pixel.blue, 31));
}

void expectDecoded(const PngPicture& picture) {
    const Bytes file = encodePng(picture);
    Image image;
    Reason why;
    ASSERT_TRUE(decodePng(file.data(), file.size(), image, why)) << why.text;
    ASSERT_EQ(image.width, picture.width);
    ASSERT_EQ(image.height, picture.height);
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const size_t i = static_cast<size_t>(y) * static_cast<size_t>(picture.width) + static_cast<size_t>(x);
            const Rgba wanted = pixelOf(picture, x, y);
            const unsigned alpha = image.alpha != nullptr ? image.alpha[i] : 255U;
            ASSERT_EQ(alpha, wanted.alpha) << "at " << x << ", " << y;
            // A colour that nobody sees may be any.
            const uint16_t colour = wanted.alpha != 0 ? image.colours[i] : panelColour(wanted);
            ASSERT_EQ(colour, panelColour(wanted)) << "at " << x << ", " << y;
        }
    }
}

} // namespace

TEST(PngImage, DecodesEveryColourTypeAndDepthStraightAndInterlaced) {
    constexpr unsigned SEED = 31;
    std::mt19937 random(SEED);
    for (const Kind& kind : KINDS) {
        for (int round = 0; round < 12; ++round) {
            PngPicture picture = randomPicture(kind, random);
            picture.isInterlaced = round % 2 != 0;
            SCOPED_TRACE(
                std::string(kind.name) + (picture.isInterlaced ? ", interlaced" : "") + ", round " +
                std::to_string(round) + ", seed " + std::to_string(SEED));
            expectDecoded(picture);
            if (HasFatalFailure())
                return;
        }
    }
}

TEST(PngImage, KeepsNoAlphaOfAnOpaqueFile) {
    const Bytes file = encodePng({1, 1, 6, 8, false, {10, 20, 30, 255}, {}, {}});
    Image image;
    Reason why;
    ASSERT_TRUE(decodePng(file.data(), file.size(), image, why)) << why.text;
    EXPECT_EQ(image.alpha, nullptr);
}

TEST(PngImage, TakesTheLargestSizeAndRefusesOnePixelMore) {
    Image image;
    Reason why;
    PngPicture largest{1024, 2, 0, 1, false, Bytes(256), {}, {}};
    const Bytes fits = encodePng(largest);
    EXPECT_TRUE(decodePng(fits.data(), fits.size(), image, why)) << why.text;
    const Bytes wide = encodePng({1025, 1, 0, 1, false, Bytes(129), {}, {}});
    EXPECT_FALSE(decodePng(wide.data(), wide.size(), image, why));
    EXPECT_STREQ(why.text, "its 1025x1 pixels are more than 1024x1024");
    const Bytes high = encodePng({1, 1025, 0, 1, false, Bytes(1025), {}, {}});
    EXPECT_FALSE(decodePng(high.data(), high.size(), image, why));
    EXPECT_EQ(image.width, 1024) << "a refused file leaves the image alone";
}

TEST(PngImage, RefusesSizesThatNoImageHas) {
    Image image;
    Reason why;
    for (const auto& [width, height] : {std::pair{0U, 0U}, {0U, 5U}, {5U, 0U}, {10000U, 10000U}, {0xFFFFFFFFU, 1U}}) {
        SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height));
        const Bytes file = pngWithSize(width, height);
        EXPECT_FALSE(decodePng(file.data(), file.size(), image, why));
        EXPECT_STRNE(why.text, "");
    }
}

TEST(PngImage, RefusesWhatIsCutOffAnywhere) {
    const Bytes file = encodePng({5, 4, 6, 8, false, Bytes(80, 0x7F), {}, {}});
    for (size_t length = 0; length < file.size(); ++length) {
        Image image;
        Reason why;
        EXPECT_FALSE(decodePng(file.data(), length, image, why)) << "cut at " << length << " of " << file.size();
    }
}
