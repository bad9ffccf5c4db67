# libOstrel.so: every folder of the toolkit adds its own sources.
add_library(Ostrel SHARED)
add_library(Ostrel::Ostrel ALIAS Ostrel)
set_target_properties(Ostrel PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION 0)
target_link_libraries(Ostrel PUBLIC Ostrel::Gui PRIVATE ostrel_options ostrel_exports)
target_include_directories(Ostrel INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/ostrel>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Several constructors leave members as storage holds them and then read them: gcc must not treat what was in
  # storage before the constructor as dead.
  target_compile_options(Ostrel PRIVATE -fno-lifetime-dse)
endif()
foreach(folder util lang settings gui keyboard lock)
  add_subdirectory(${folder})
endforeach()
