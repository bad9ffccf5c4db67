// What a language file has to say, and how it may say it.
#ifndef OSTREL_ASSETS_CHECK_LANGUAGE_RULES_H
#define OSTREL_ASSETS_CHECK_LANGUAGE_RULES_H

#include "assets/check/language_file.h"

#include <string>
#include <utility>
#include <vector>

namespace ostrel {

// A section and a key in it.
using TextName = std::pair<std::string, std::string>;

// What the toolkit itself says, and the language's name for itself.
std::vector<TextName> toolkitTexts();

// Everything to put right in the file at `path`, by line: its form, and with `reference` (toolkitTexts and what a file
// in the language that the others are translated from has) what is missing, unknown, doubled, too long, too wide for
// its place, without glyphs, or found by the router as something else. `bytes` is what the file holds.
std::vector<Finding>
checkLanguageFile(const std::string& path, const std::string& bytes, const std::vector<TextName>& reference);

} // namespace ostrel

#endif
