# A compiler cache, where there is one, makes the second build of anything quick.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

# Compiler settings that every target of ours shares, as one interface target. What is loaded into a
# program under a sanitizer, beneath the sanitizer, takes the warnings alone.
add_library(brindle_warnings INTERFACE)
add_library(brindle_options INTERFACE)
target_link_libraries(brindle_options INTERFACE brindle_warnings)

target_compile_options(
  brindle_warnings
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wdouble-promotion
            -Wnon-virtual-dtor
            -Wold-style-cast
            -Werror
            # Fused multiply-add rounds differently from a multiply and an add: with contraction
            # on, the same race would give other lap times on another processor.
            -ffp-contract=off)

if(BRINDLE_SANITIZE)
  target_compile_options(brindle_options INTERFACE -fsanitize=${BRINDLE_SANITIZE}
                                                   -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=all)
  target_link_options(brindle_options INTERFACE -fsanitize=${BRINDLE_SANITIZE})
endif()

# The library counts its branches for the fuzzer; only a target of fuzz/ brings the fuzzer's main.
# Counters are looked through after each input, so those of functions that a target never calls go.
if(BRINDLE_FUZZ)
  target_compile_options(
    brindle_options
    INTERFACE -fsanitize=fuzzer-no-link
              -fsanitize-coverage-ignorelist=${PROJECT_SOURCE_DIR}/fuzz/uncounted.txt
              -ffunction-sections)
  target_link_options(brindle_options INTERFACE -fsanitize=fuzzer-no-link
                                                -Wl,--gc-sections,-z,start-stop-gc)
endif()

# Where the runnable game is put together: the program with art/, music/, sounds/, tracks/ beside it.
set(BRINDLE_GAME_DIR "${CMAKE_BINARY_DIR}/game")
