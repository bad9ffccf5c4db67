#include "apps/nvram/nvram_tool.h"

#include <iostream>

int main(int count, char** words) {
    return runNvramTool({words + (count > 0 ? 1 : 0), words + count}, {std::cin, std::cout, std::cerr});
}
