// The fonts in tests: the ones that the build staged, and what golden pictures of text were made with.
#ifndef OSTREL_TESTS_SUPPORT_STAGED_FONTS_H
#define OSTREL_TESTS_SUPPORT_STAGED_FONTS_H

#include "tests/support/golden.h"

#include <cstdlib>
#include <string>

// The folder of the staged fonts. OSTREL_FONT_DIR names it from the start of every test that links this.
const char* stagedFonts();

// matchesGolden for pictures that show text. A failure also tells whether this machine's fonts and FreeType are those
// that the golden pictures were made with (tests/golden/fonts.txt).
testing::AssertionResult matchesTextGolden(const Picture& actual, const std::string& name);

// Lets the library look for its fonts in `folder`, as a fresh program would, for as long as it lives.
class FontFolder {
  public:
    explicit FontFolder(const std::string& folder);
    ~FontFolder();
    FontFolder(const FontFolder&) = delete;
    FontFolder& operator=(const FontFolder&) = delete;
};

#endif
