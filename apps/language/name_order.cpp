#include "apps/language/name_order.h"

#include <algorithm>
#include <cwchar>

namespace {

// The letter to sort by, then the forms that sort like it. The router has no locales that could tell.
constexpr const wchar_t* LETTERS[] = {
    L"aAàÀáÁâÂãÃäÄåÅāĀăĂąĄæÆ",
    L"bB",
    L"cCçÇćĆĉĈċĊčČ",
    L"dDďĎđĐðÐ",
    L"eEèÈéÉêÊëËēĒĕĔėĖęĘěĚəƏ",
    L"fF",
    L"gGĝĜğĞġĠģĢ",
    L"hHĥĤħĦ",
    L"iIìÌíÍîÎïÏĩĨīĪĭĬįĮıİ",
    L"jJĵĴ",
    L"kKķĶ",
    L"lLĺĹļĻľĽłŁ",
    L"mM",
    L"nNñÑńŃņŅňŇ",
    L"oOòÒóÓôÔõÕöÖøØōŌőŐœŒ",
    L"pP",
    L"qQ",
    L"rRŕŔřŘ",
    L"sSśŚŝŜşŞšŠșȘß",
    L"tTţŢťŤțȚþÞ",
    L"uUùÙúÚûÛüÜũŨūŪŭŬůŮűŰųŲ",
    L"vV",
    L"wWŵŴ",
    L"xX",
    L"yYýÝÿŶŷŸ",
    L"zZźŹżŻžŽ",
    L"αΑάΆ",
    L"βΒ",
    L"γΓ",
    L"δΔ",
    L"εΕέΈ",
    L"ζΖ",
    L"ηΗήΉ",
    L"θΘ",
    L"ιΙίΊϊΪΐ",
    L"κΚ",
    L"λΛ",
    L"μΜ",
    L"νΝ",
    L"ξΞ",
    L"οΟόΌ",
    L"πΠ",
    L"ρΡ",
    L"σΣς",
    L"τΤ",
    L"υΥύΎϋΫΰ",
    L"φΦ",
    L"χΧ",
    L"ψΨ",
    L"ωΩώΏ",
};

// Cyrillic small letters follow one another in their order, but for a row of further ones behind them.
constexpr wchar_t CYRILLIC_CAPITAL_A = 0x410;
constexpr wchar_t CYRILLIC_CAPITAL_LAST = 0x42F;
constexpr wchar_t CYRILLIC_FURTHER_FIRST = 0x400;

wchar_t sortedLike(wchar_t character) {
    for (const wchar_t* const letter : LETTERS)
        if (std::wcschr(letter, character) != nullptr)
            return *letter;
    if (character >= CYRILLIC_CAPITAL_A && character <= CYRILLIC_CAPITAL_LAST)
        return character + 0x20;
    if (character >= CYRILLIC_FURTHER_FIRST && character < CYRILLIC_CAPITAL_A)
        return character + 0x50;
    return character;
}

std::wstring sortKey(std::wstring name) {
    std::transform(name.begin(), name.end(), name.begin(), sortedLike);
    return name;
}

} // namespace

bool comesBefore(const std::wstring& left, const std::wstring& right) {
    const std::wstring leftKey = sortKey(left);
    const std::wstring rightKey = sortKey(right);
    return leftKey != rightKey ? leftKey < rightKey : left < right;
}
