// What a user who mistyped a word may have meant.
#ifndef OSTREL_SIMULATOR_NEAREST_H
#define OSTREL_SIMULATOR_NEAREST_H

#include <string>
#include <vector>

namespace ostrel {

// " (did you mean --headless?)" with the known word that `word` begins, or that differs from it in a letter or two;
// empty when none does. Of several that are equally near it is the shortest, and then the first.
std::string didYouMean(const std::string& word, const std::vector<std::string>& known);

} // namespace ostrel

#endif
