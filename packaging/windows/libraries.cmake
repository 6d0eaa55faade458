# What packaging/windows/libraries has made, under the name by which the other systems' library goes.
find_package(Threads REQUIRED)
find_package(SDL2 REQUIRED COMPONENTS SDL2-static)
add_library(PkgConfig::SDL2 ALIAS SDL2::SDL2-static)

# Libraries of headers alone are the same for every system.
include(packaging/web/libraries.cmake)

# localtime_r and its like; strings of wide characters; whatever Windows has had since its tenth version.
target_compile_definitions(vorn_build_flags INTERFACE
  _POSIX_THREAD_SAFE_FUNCTIONS UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0A00)
# This compiler, when it optimises, takes many a string's assignment for one that overlaps itself.
target_compile_options(vorn_build_flags INTERFACE -Wno-restrict)
