# shellcheck shell=bash disable=SC2034,SC2154 # scripts/libs, which reads this, sets and takes the rest
# How scripts/libs builds each library for Windows, with MinGW-w64.

# A Debian package has zlib ready, and only its static library is to be found.
cp /usr/x86_64-w64-mingw32/lib/libz.a "$prefix/lib/"
write_pc zlib 1.2.13 "" -lz

libraries=(libpng1.6 freetype libsdl2 libsdl2-image libsdl2-ttf mpg123)

# Configures and installs with CMake what lies in the folder.
common() { # FOLDER OPTIONS...
    cmake -S "$1" -B . -G Ninja --toolchain "$root/cmake/windows.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF -DCMAKE_C_COMPILER_LAUNCHER= \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib "${@:2}"
    ninja -j "$jobs" install
}

# Its configuration as the authors ship it.
build_libpng1_6() {
    common "$src" -DPNG_SHARED=OFF -DPNG_STATIC=ON -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF
}

build_freetype() {
    common "$src" -DFT_REQUIRE_ZLIB=ON -DFT_DISABLE_{BZIP2,PNG,HARFBUZZ,BROTLI}=ON
}

# Which programs have windows, and whose main is SDL's, is said by each program itself.
build_libsdl2() {
    common "$src" -DSDL_SHARED=OFF -DSDL_TEST=OFF
    sed -i -e 's/ -mwindows//g' -e 's/ -Dmain=SDL_main//' "$prefix/lib/pkgconfig/sdl2.pc"
}

# Its own decoders read PNG, JPEG and SVG, on every Windows alike.
build_libsdl2_image() {
    common "$src" -DSDL2IMAGE_BACKEND_STB=ON -DSDL2IMAGE_BACKEND_WIC=OFF -DSDL2IMAGE_VENDORED=OFF \
        -DSDL2IMAGE_DEPS_SHARED=OFF -DSDL2IMAGE_SAMPLES=OFF \
        -DSDL2IMAGE_{AVIF,TIF,WEBP,JXL}=OFF -DSDL2IMAGE_{PNG,JPG}_SAVE=ON
    write_pc SDL2_image 2.6 sdl2 -lSDL2_image -I"$prefix/include/SDL2"
}

build_libsdl2_ttf() {
    common "$src" -DSDL2TTF_VENDORED=OFF -DSDL2TTF_HARFBUZZ=OFF -DSDL2TTF_SAMPLES=OFF
    write_pc SDL2_ttf 2.20 "sdl2 freetype2" -lSDL2_ttf -I"$prefix/include/SDL2"
}

build_mpg123() {
    common "$src/ports/cmake" -DBUILD_PROGRAMS=OFF -DBUILD_LIBOUT123=OFF
    sed -i 's/^Libs.private:/& -lshlwapi/' "$prefix/lib/pkgconfig/libmpg123.pc"
}
