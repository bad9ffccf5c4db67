# Warnings are errors for everything that is written here; sanitizers reach every target at once.
add_library(ostrel_options INTERFACE)
target_compile_options(ostrel_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # The psabi note tells of an ABI change in gcc 7 that concerns nobody who builds with one compiler.
  target_compile_options(ostrel_options INTERFACE -Wshadow=local -Wno-psabi)
endif()
# Sources include each other by folder: "gui/display.h".
target_include_directories(ostrel_options INTERFACE ${PROJECT_SOURCE_DIR})

if(OSTREL_SANITIZE)
  add_compile_options(-fsanitize=${OSTREL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${OSTREL_SANITIZE})
endif()

# For the shared libraries: what the standard library's templates leave behind in them is not theirs to export.
add_library(ostrel_exports INTERFACE)
target_link_options(ostrel_exports INTERFACE -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
