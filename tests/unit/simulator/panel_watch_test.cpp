#include "simulator/panel_watch.h"
#include "tests/unit/simulator/temporary_directory.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace ostrel;

namespace {

class PanelWatchTest : public testing::Test {
  protected:
    PanelWatchTest() : file(directory.file("fb0")), fd(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        EXPECT_EQ(ftruncate(fd.get(), 153600), 0);
    }

    void draw(uint16_t colour) const { EXPECT_EQ(pwrite(fd.get(), &colour, sizeof colour, 0), 2); }

    // Runs the loop up to the next look; what it tells.
    bool nextLook() {
        const size_t before = looks;
        while (looks == before)
            loop.runOnce(1000);
        return changed;
    }

    void looked(bool hasChanged) {
        ++looks;
        changed = hasChanged;
    }

    TemporaryDirectory directory;
    std::string file;
    Descriptor fd;
    SharedPage page = {};
    EventLoop loop;
    Panel panel{file, page};
    size_t looks = 0;
    bool changed = false;
};

TEST_F(PanelWatchTest, TellsOfEachChangeOnce) {
    PanelWatch watch(loop, panel, [this](bool hasChanged) { looked(hasChanged); });
    watch.setSeen(true);
    EXPECT_FALSE(nextLook());
    draw(1);
    EXPECT_TRUE(nextLook());
    EXPECT_EQ(panel.picture()[0], 1);
    EXPECT_FALSE(nextLook());
}

TEST_F(PanelWatchTest, TellsOfAChangeThatAScriptSawFirst) {
    PanelWatch watch(loop, panel, [this](bool hasChanged) { looked(hasChanged); });
    watch.setSeen(true);
    EXPECT_FALSE(nextLook());
    draw(1);
    EXPECT_TRUE(panel.look());
    EXPECT_TRUE(nextLook());
    EXPECT_FALSE(nextLook());
}

TEST_F(PanelWatchTest, TellsFirstOfWhatWasThereBefore) {
    draw(1);
    EXPECT_TRUE(panel.look());
    PanelWatch watch(loop, panel, [this](bool hasChanged) { looked(hasChanged); });
    EXPECT_TRUE(nextLook());
    EXPECT_FALSE(nextLook());
}

TEST_F(PanelWatchTest, LooksWhenThePenMovesAlthoughNobodySeesThePanel) {
    PanelWatch watch(loop, panel, [this](bool hasChanged) { looked(hasChanged); });
    EXPECT_FALSE(nextLook());
    draw(1);
    watch.lookClosely();
    EXPECT_TRUE(nextLook());
}

TEST_F(PanelWatchTest, StopsWithItsOwner) {
    {
        const PanelWatch watch(loop, panel, [this](bool hasChanged) { looked(hasChanged); });
    }
    loop.runOnce(0);
    EXPECT_EQ(looks, 0U);
}

} // namespace
