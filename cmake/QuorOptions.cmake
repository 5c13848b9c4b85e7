# Compiler options that every target of this tree shares (interface libraries, so that third-party code is spared).

add_library(quor_options INTERFACE)
target_compile_features(quor_options INTERFACE cxx_std_20)
target_include_directories(quor_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(quor_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wformat=2 -Wconditionally-supported -Wnon-virtual-dtor -Werror
    # GCC 12 sees faults in std::string's own concatenation at -O2.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds -Wno-restrict>)
if(WIN32)
    # ANSI calls; the newest names that the common controls of this toolchain know.
    target_compile_definitions(quor_options INTERFACE
        WINVER=0x0A00 _WIN32_WINNT=0x0A00 _WIN32_IE=0x0A00 NOMINMAX WIN32_LEAN_AND_MEAN STRICT
        __USE_MINGW_ANSI_STDIO=1)
    # What scripts/names-twice reads in the objects; the binaries go without. Nobody steps through optimised code here.
    target_compile_options(quor_options INTERFACE -g -gdwarf-4 -fno-var-tracking)
    target_link_options(quor_options INTERFACE -Wl,--strip-debug)
elseif(QUOR_SANITIZE)
    target_compile_options(quor_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer)
    target_link_options(quor_options INTERFACE -fsanitize=address,undefined)
endif()

# Windowless code: the conversions are checked.
add_library(quor_core_options INTERFACE)
target_link_libraries(quor_core_options INTERFACE quor_options)
target_compile_options(quor_core_options INTERFACE -Wconversion)
