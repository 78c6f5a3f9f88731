# shellcheck shell=bash disable=SC2034,SC2154 # scripts/libs, which reads this, sets and takes the rest
# How scripts/libs builds each library for the browser, with emscripten.

libraries=(zlib libpng1.6 freetype libsdl2 libsdl2-image libsdl2-ttf mpg123)

source scripts/web-environment

# Configures and installs with CMake what lies in the folder.
common() { # FOLDER OPTIONS...
    PKG_CONFIG_LIBDIR=$prefix/lib/pkgconfig \
        emcmake cmake -S "$1" -B . -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF \
        -DCMAKE_C_COMPILER_LAUNCHER= -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib \
        -DCMAKE_FIND_ROOT_PATH="$prefix" -DCMAKE_PREFIX_PATH="$prefix" "${@:2}"
    ninja -j "$jobs" install
}

# archive NAME SOURCE...: compiles plain C into a library.
archive() {
    printf '%s\n' "${@:2}" | xargs -P "$jobs" -n 4 emcc -O2 -DHAVE_UNISTD_H -I"$prefix/include" -c
    emar crs "$prefix/lib/$1" ./*.o
}

build_zlib() {
    cp "$src"/*.[ch] .
    mkdir -p "$prefix/include"
    cp zlib.h zconf.h "$prefix/include"
    archive libz.a ./*.c
    write_pc zlib 1.2.13 "" -lz
}

# Its configuration as the authors ship it.
build_libpng1_6() {
    cp "$src"/*.[ch] .
    cp "$src/scripts/pnglibconf.h.prebuilt" pnglibconf.h
    rm pngtest.c example.c
    cp png.h pngconf.h pnglibconf.h "$prefix/include"
    archive libpng16.a png*.c
    write_pc libpng 1.6 zlib -lpng16
}

build_freetype() {
    common "$src" -DFT_REQUIRE_ZLIB=ON -DFT_DISABLE_{BZIP2,PNG,HARFBUZZ,BROTLI}=ON
}

build_libsdl2() {
    common "$src" -DSDL_SHARED=OFF -DSDL_TEST=OFF
}

# Its own decoders read PNG, JPEG and SVG.
build_libsdl2_image() {
    common "$src" -DSDL2IMAGE_BACKEND_STB=ON -DSDL2IMAGE_VENDORED=OFF -DSDL2IMAGE_DEPS_SHARED=OFF \
        -DSDL2IMAGE_SAMPLES=OFF -DSDL2IMAGE_{AVIF,TIF,WEBP,JXL}=OFF -DSDL2IMAGE_{PNG,JPG}_SAVE=ON
    write_pc SDL2_image 2.6 sdl2 -lSDL2_image -I"$prefix/include/SDL2"
}

build_libsdl2_ttf() {
    common "$src" -DSDL2TTF_VENDORED=OFF -DSDL2TTF_HARFBUZZ=OFF -DSDL2TTF_SAMPLES=OFF
    write_pc SDL2_ttf 2.20 "sdl2 freetype2" -lSDL2_ttf -I"$prefix/include/SDL2"
}

build_mpg123() {
    common "$src/ports/cmake" -DBUILD_PROGRAMS=OFF -DBUILD_LIBOUT123=OFF
}
