// A walk through all pages of the settings program and of the language picker, in this process: everything around
// them is taken over, and a finger touches whatever can be touched.
#ifndef OSTREL_TESTS_PIXELS_PAGE_WALK_H
#define OSTREL_TESTS_PIXELS_PAGE_WALK_H

#include <ostrel.h>

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

class PageWalk : public testing::Test {
  protected:
    PageWalk();
    ~PageWalk() override;

    // Calls `look` with each page as it shows, and where the walk is: after its opening, after each touch of one of its
    // widgets, after leaving it from there by its back button, and after the yes of a question. All of it twice, with
    // other settings the second time.
    using Look = std::function<void(const Screen& page, const std::string& where)>;
    void walk(const std::string& language, const Look& look);

    // What a user has made up: a name and a password as long as may be.
    static const std::string NAME;
    static const std::string PASSWORD;

    // How often a message waited to be tapped away, and how many of them filled the whole panel.
    int messages = 0;
    int fullMessages = 0;

  private:
    enum class World { ByHand, Automatic };
    void make(World world);
    void walkPage(World world, size_t number, const std::string& where, const Look& look);
    void walkPicker(const std::string& language, const Look& look);
    void touch(int x, int y);
    void speakEverywhere();
    std::string spokenLanguage;
    std::string spoken; // its file
    void duringSleep(uint64_t us);
    void copy(const std::string& from, const std::string& to);
    std::map<std::string, std::string> flash; // by path
    bool isPenDown = false;
};

// The widgets of a page's list, from its head.
std::vector<const Widget*> widgetsOf(const Screen& page);

// The names of all languages in assets/languages.
std::vector<std::string> allLanguages();

// The texts of assets/languages/NAME.xml from now on.
void speak(const std::string& language);

#endif
