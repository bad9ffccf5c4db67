#include "simulator/web/password_tries.h"

#include <algorithm>

namespace ostrel {
namespace {

constexpr int FREE_TRIES = 3;
constexpr int64_t HELD_BACK_MS[] = {1000, 2000, 4000};
constexpr int64_t FORGOTTEN_MS = 300'000;
constexpr size_t MAX_ADDRESSES = 1000;

} // namespace

int64_t PasswordTries::holdBack(const std::string& address, bool isRight, int64_t nowMs) {
    forget(nowMs);
    const auto found = wrong.find(address);
    const int before = found == wrong.end() ? 0 : found->second.count;
    if (!isRight) {
        if (found == wrong.end())
            makeRoom();
        Wrong& tries = wrong[address];
        tries.lastMs = nowMs;
        tries.count = std::min(before + 1, FREE_TRIES + static_cast<int>(std::size(HELD_BACK_MS)));
    }
    const int beyond = std::min(before - FREE_TRIES, static_cast<int>(std::size(HELD_BACK_MS)) - 1);
    return beyond < 0 ? 0 : HELD_BACK_MS[beyond];
}

void PasswordTries::forget(int64_t nowMs) {
    for (auto entry = wrong.begin(); entry != wrong.end();)
        entry = nowMs - entry->second.lastMs >= FORGOTTEN_MS ? wrong.erase(entry) : std::next(entry);
}

void PasswordTries::makeRoom() {
    if (wrong.size() >= MAX_ADDRESSES)
        wrong.erase(std::min_element(wrong.begin(), wrong.end(), [](const auto& one, const auto& other) {
            return one.second.lastMs < other.second.lastMs;
        }));
}

} // namespace ostrel
