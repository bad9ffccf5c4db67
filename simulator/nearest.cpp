#include "simulator/nearest.h"

#include <algorithm>
#include <numeric>

namespace ostrel {
namespace {

// Without the dashes: "-headless" is as near as it gets.
std::string bare(const std::string& word) {
    return word.substr(std::min(word.find_first_not_of('-'), word.size()));
}

// How many letters have to be inserted, deleted, replaced or swapped with their neighbour.
size_t distance(const std::string& a, const std::string& b) {
    std::vector<size_t> beforeLast(b.size() + 1);
    std::vector<size_t> last(b.size() + 1);
    std::iota(last.begin(), last.end(), size_t{0});
    for (size_t i = 1; i <= a.size(); ++i) {
        std::vector<size_t> row(b.size() + 1, i);
        for (size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] != b[j - 1] ? 1 : 0)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast.swap(last);
        last.swap(row);
    }
    return last[b.size()];
}

} // namespace

std::string didYouMean(const std::string& word, const std::vector<std::string>& known) {
    const std::string wanted = bare(word);
    // A third of the letters may be wrong, so that short words are not mistaken for one another.
    size_t least = std::min<size_t>(wanted.size() / 3, 2) + 1;
    const std::string* nearest = nullptr;
    for (const std::string& candidate : known) {
        const bool isBegun = !wanted.empty() && bare(candidate).compare(0, wanted.size(), wanted) == 0;
        const size_t far = isBegun ? 0 : distance(wanted, bare(candidate));
        const bool isNearer = far < least || (nearest != nullptr && far == least && candidate.size() < nearest->size());
        if (!isNearer)
            continue;
        least = far;
        nearest = &candidate;
    }
    return nearest == nullptr ? "" : " (did you mean " + *nearest + "?)";
}

} // namespace ostrel
