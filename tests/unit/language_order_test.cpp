#include "apps/language/name_order.h"

#include <gtest/gtest.h>

namespace {

TEST(NameOrder, IsThatOfAPersonWhoLooksForANameInAList) {
    const std::wstring order[] = {
        L"Čeština", L"Dansk",    L"Deutsch",  L"Eesti",    L"english",   L"English (UK)",
        L"Español", L"Français", L"Íslenska", L"Italiano", L"Łacina",    L"Latviešu",
        L"Polski",  L"Română",   L"Türkçe",   L"Ελληνικά", L"Български", L"Українська",
    };
    for (const std::wstring& left : order)
        for (const std::wstring& right : order)
            EXPECT_EQ(comesBefore(left, right), &left < &right && left != right)
                << &left - order << " and " << &right - order;
}

TEST(NameOrder, PutsSmallLettersBesideCapitalsInEveryScript) {
    EXPECT_TRUE(comesBefore(L"alpha", L"Beta"));
    EXPECT_TRUE(comesBefore(L"Alpha", L"beta"));
    EXPECT_TRUE(comesBefore(L"άλφα", L"Βήτα"));
    EXPECT_TRUE(comesBefore(L"Άλφα", L"βήτα"));
    EXPECT_TRUE(comesBefore(L"аз", L"Буки"));
    EXPECT_TRUE(comesBefore(L"Аз", L"буки"));
}

TEST(NameOrder, TellsNamesApartThatDifferInCaseOrAccentsOnly) {
    EXPECT_TRUE(comesBefore(L"Dari", L"dari"));
    EXPECT_FALSE(comesBefore(L"dari", L"Dari"));
    EXPECT_FALSE(comesBefore(L"dari", L"dari"));
    EXPECT_TRUE(comesBefore(L"", L"a"));
}

} // namespace
