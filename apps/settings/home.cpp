// The home page: a row for each of the others, and the language button.
#include "pages.h"
#include "texts.h"

#include <iterator>

namespace {

Widget rows[] = {
    {wType.kind1, 8, 48, 0, 0, 0, 149, 58, 20, 1, L""},  {wType.kind1, 163, 48, 0, 0, 0, 149, 58, 20, 1, L""},
    {wType.kind1, 8, 112, 0, 0, 0, 149, 58, 20, 1, L""}, {wType.kind1, 163, 112, 0, 0, 0, 149, 58, 20, 1, L""},
    {wType.kind1, 8, 176, 0, 0, 0, 149, 58, 20, 1, L""}, {wType.kind1, 163, 176, 0, 0, 0, 149, 58, 20, 1, L""},
};
Screen screen(L"");

struct Row {
    const char* title;
    const Page& page;
};

// Line by line.
constexpr Row ROWS[] = {
    {"wifi_title", wifiPage},     {"network_title", networkPage}, {"screen_title", screenPage},
    {"backup_title", backupPage}, {"about_title", aboutPage},     {"restart_title", restartPage},
};
static_assert(std::size(ROWS) == std::size(rows), "one widget a row");

template<int ROW>
void showRow() {
    showPage(ROWS[ROW].page);
}

void prepare() {
    constexpr void (*SHOWS[])() = {showRow<0>, showRow<1>, showRow<2>, showRow<3>, showRow<4>, showRow<5>};
    preparePage(screen, linked(rows));
    for (size_t i = 0; i < std::size(rows); ++i)
        rows[i].callback = SHOWS[i];
    screen.showBack = 0;
    screen.showHome = 0;
    screen.showHomeGrayed = 1;
    screen.showLanguage = 1;
    screen.onLanguage = changeLanguage;
}

void retext() {
    entitle(screen, "home_title");
    for (size_t i = 0; i < std::size(rows); ++i)
        label(rows[i], ROWS[i].title);
}

} // namespace

const Page homePage{&screen, prepare, retext, nullptr, nullptr, nullptr, nullptr};
