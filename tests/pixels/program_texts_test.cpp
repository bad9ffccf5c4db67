// Every text of the router's programs in every language: in its place, whole, at its size, and easy to read.
#include "tests/pixels/page_walk.h"
#include "tests/pixels/text_ink.h"

#include <fstream>
#include <set>

namespace {

constexpr float MESSAGE_SIZE = 17;
constexpr int WHITE = 0xFFFF;
constexpr double LEAST_CONTRAST = 4.5;

std::string narrow(const std::wstring& text) {
    std::string bytes(text.size() * 4 + 1, '\0');
    bytes.resize(wchar_to_utf8(text.data(), text.size(), bytes.data(), bytes.size(), UTF8_DROP_INVALID));
    return bytes;
}

std::string describe(const WidgetRecord& record) {
    return "kind " + std::to_string(record.type) + " at " + std::to_string(record.x) + "," + std::to_string(record.y) +
           (record.selected != 0 ? " selected" : "") + (record.touchable == -1 ? " untouchable" : "") + " \"" +
           narrow(record.text) + "\"";
}

// True once for each different thing.
class FirstTime {
  public:
    bool operator()(const std::string& thing) { return seen.insert(thing).second; }

  private:
    std::set<std::string> seen;
};

class ProgramTexts : public PageWalk {
  protected:
    // Cut with an ellipsis where it must be.
    static bool isUsersOwn(const std::wstring& text) { return narrow(text) == NAME || narrow(text) == PASSWORD; }
};

// Keys of the section that have a place on a page: all but the lines of messages.
std::vector<std::string> keysOfPages() {
    std::ifstream file(std::string(OSTREL_LANGUAGES) + "/english.xml");
    std::vector<std::string> keys;
    bool isInside = false;
    for (std::string line; std::getline(file, line);) {
        if (line == "<settings>" || line == "</settings>")
            isInside = line == "<settings>";
        else if (
            isInside && line.find("_l1>") == std::string::npos && line.find("_l2>") == std::string::npos &&
            line.find("_l3>") == std::string::npos)
            keys.push_back(line.substr(1, line.find('>') - 1));
    }
    return keys;
}

// Or what the other tests find says nothing about it.
TEST_F(ProgramTexts, AreAllComeAcrossOnTheWalk) {
    std::set<std::wstring> seen;
    const auto look = [&](const Screen& page, const std::string&) {
        seen.insert(page.title);
        for (const Widget* const widget : widgetsOf(page)) {
            const ElementText text(widget->record);
            seen.insert({text.label, text.value});
        }
    };
    walk("english", look);
    for (const std::string& key : keysOfPages()) {
        const std::wstring text = lang.get(key.c_str(), "settings");
        EXPECT_EQ(seen.count(text), 1U) << key << ": " << narrow(text);
    }
    EXPECT_GT(messages, 0);
}

// Pages draw behind touches: what stands in the list is what shows.
TEST_F(ProgramTexts, FitTheirPlacesInEveryLanguage) {
    ASSERT_EQ(NAME.size(), 32U);
    FirstTime isNew;
    for (const std::string& language : allLanguages())
        walk(language, [&](const Screen& page, const std::string& where) {
            if (isNew(language + narrow(page.title))) {
                EXPECT_EQ(misfitOfTitle(page.title), "") << where << ": title \"" << narrow(page.title) << '"';
            }
            for (const Widget* const widget : widgetsOf(page)) {
                const WidgetRecord& record = widget->record;
                if (!isNew(language + describe(record)))
                    continue;
                const ElementText text(record);
                if (!isUsersOwn(text.label)) {
                    EXPECT_EQ(misfitOf(record, isUsersOwn(text.value)), "") << where << ": " << describe(record);
                }
            }
        });
    EXPECT_GE(allLanguages().size(), 10U);
}

TEST_F(ProgramTexts, StandBesideOneAnotherOnThePanel) {
    FirstTime isNew;
    for (const std::string& language : allLanguages())
        walk(language, [&](const Screen& page, const std::string& where) {
            std::string all;
            for (const Widget* const widget : widgetsOf(page))
                all += describe(widget->record);
            if (!isNew(all))
                return;
            const std::vector<const Widget*> widgets = widgetsOf(page);
            for (size_t i = 0; i < widgets.size(); ++i) {
                const TouchArea area = getTouchArea(widgets[i]->record);
                const std::string whose = where + ": " + describe(widgets[i]->record);
                EXPECT_GE(area.left, -1) << whose;
                EXPECT_LE(area.right, 320) << whose;
                EXPECT_GE(area.top, 40) << whose << " reaches into the header";
                EXPECT_LE(area.bottom, 240) << whose;
                for (size_t j = 0; j < i; ++j) {
                    const TouchArea other = getTouchArea(widgets[j]->record);
                    const bool isApart = area.left + 1 >= other.right || other.left + 1 >= area.right ||
                                         area.top + 1 >= other.bottom || other.top + 1 >= area.bottom;
                    EXPECT_TRUE(isApart) << whose << " lies over " << describe(widgets[j]->record);
                }
            }
        });
}

// As they show, pressed or chosen, and not to be touched: by colour a text is the same in every language.
TEST_F(ProgramTexts, StandOutFromTheirGround) {
    FirstTime isNew;
    double least = 21;
    walk("english", [&](const Screen& page, const std::string& where) {
        for (const Widget* const widget : widgetsOf(page))
            for (const int selected : {0, 1}) {
                WidgetRecord record = widget->record;
                record.selected = selected;
                if (!isNew(describe(record)))
                    continue;
                const double contrast = contrastOf(record);
                EXPECT_GE(contrast, LEAST_CONTRAST) << where << ": " << describe(record);
                least = std::min(least, contrast);
            }
    });
    RecordProperty("least", std::to_string(least));
    EXPECT_EQ(fullMessages, 0) << "white on the blue and red of messages that fill the panel reads too badly";
}

// The messages that the pages use: in a box, to tap away or with a bar.
TEST_F(ProgramTexts, StandOutFromTheBoxesOfMessages) {
    Modal message;
    message.onClose = doNothing;
    const auto put = [&](const wchar_t* text) {
        message.setLine1(text);
        message.setLine2(text);
        message.setLine3(text);
    };
    for (const int type : {1, 2}) {
        const auto boxed = [&](const wchar_t* text) {
            return [&put, &message, type, text] {
                put(text);
                message.draw(type, 0);
            };
        };
        EXPECT_GE(contrastOf(inkOf(boxed(L"Message"), boxed(L""))), LEAST_CONTRAST) << type;
        const auto timed = [&](const wchar_t* text) {
            return [&put, &message, type, text] {
                put(text);
                message.drawTimed(type);
            };
        };
        EXPECT_GE(contrastOf(inkOf(timed(L"Message"), timed(L""))), LEAST_CONTRAST) << type << " with a bar";
    }
}

// Lines of messages have no widget: their keys end in _l1 to _l3, and their place is the toolkit's box.
TEST_F(ProgramTexts, FitTheBoxesOfMessages) {
    int lines = 0;
    for (const std::string& language : allLanguages()) {
        std::ifstream file(std::string(OSTREL_LANGUAGES) + "/" + language + ".xml");
        std::string section;
        for (std::string line; std::getline(file, line);) {
            const size_t end = line.find('>');
            const std::string key = end != std::string::npos && line[0] == '<' ? line.substr(1, end - 1) : "";
            if (key == "settings" || key == "picker" || key == "modal")
                section = key;
            const bool isLine = key.size() > 3 && key.compare(key.size() - 3, 2, "_l") == 0;
            if (!isLine || section == "modal")
                continue;
            ++lines;
            const std::string path = std::string(OSTREL_LANGUAGES) + "/" + language + ".xml";
            ret[0] = 0;
            const std::wstring text = lang.getvalue(path.c_str(), key.c_str(), section.c_str());
            const std::string whose = std::string(language).append(" ").append(key).append(": ").append(narrow(text));
            EXPECT_LE(textWidth(text.c_str(), MESSAGE_SIZE), 124) << whose;
            const auto nothing = [] {};
            const int width = textWidth(text.c_str(), MESSAGE_SIZE);
            const Ink shown =
                inkOf([&] { drawText(text.c_str(), 130, 80, 130, 1, 0, MESSAGE_SIZE, WHITE, 1); }, nothing);
            const Ink whole = inkOf(
                [&] { drawText(text.c_str(), 130 + (130 - width) / 2, 80, 0, 1, 0, MESSAGE_SIZE, WHITE, 0); }, nothing);
            EXPECT_EQ(shown.size(), whole.size()) << whose << " is made smaller or cut";
        }
    }
    EXPECT_GT(lines, 0);
}

} // namespace
