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

# archive NAME OPTIONS SOURCE...: compiles plain C into a library.
archive() {
    # shellcheck disable=SC2086 # several options
    printf '%s\n' "${@:3}" | xargs -P "$jobs" -n 4 emcc -O2 $2 -I. -I"$prefix/include" -c
    emar crs "$prefix/lib/$1" ./*.o
}

build_zlib() {
    cp "$src"/*.[ch] .
    mkdir -p "$prefix/include"
    cp zlib.h zconf.h "$prefix/include"
    archive libz.a -DHAVE_UNISTD_H ./*.c
    write_pc zlib 1.2.13 "" -lz
}

# Its configuration as the authors ship it.
build_libpng1_6() {
    cp "$src"/*.[ch] .
    cp "$src/scripts/pnglibconf.h.prebuilt" pnglibconf.h
    rm pngtest.c example.c
    cp png.h pngconf.h pnglibconf.h "$prefix/include"
    archive libpng16.a "" png*.c
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

# By hand: its own configuration asks the slow compiler a hundred questions.
build_mpg123() {
    local part parts=(parse frame format dct64 equalizer id3 optimize readers tabinit libmpg123 index
        layer1 layer2 layer3 ntom synth synth_8bit synth_real synth_s32 stringbuf feature icy
        icy2utf8)
    cp "$src"/src/*.h "$src"/src/libmpg123/*.h "$src"/src/compat/*.[ch] .
    for part in "${parts[@]}"; do cp "$src/src/libmpg123/$part.c" .; done
    cat >config.h <<END
#define ACCURATE_ROUNDING 1
#define FRAME_INDEX 1
#define GAPLESS 1
#define IEEE_FLOAT 1
#define INDEX_SIZE 1000
#define USE_NEW_HUFFTABLE 1
#define SIZEOF_LONG 4
#define SIZEOF_OFF_T 8
#define PACKAGE_NAME "mpg123"
#define PACKAGE_VERSION "1.31"
$(printf '#define HAVE_%s 1\n' ATOLL DIRENT_H INTTYPES_H LIMITS_H LOCALE_H RANDOM SETLOCALE \
        STDINT_H STDIO_H STDLIB_H STRERROR STRING_H STRINGS_H SYS_STAT_H SYS_TIME_H SYS_TYPES_H \
        UNISTD_H)
END
    sed -e 's/@API_VERSION@/47/' -e 's/@BUILD_NO_LARGENAME@/1/' \
        -e 's/@INCLUDE_STDLIB_H@/#include <stdlib.h>/' \
        -e 's/@INCLUDE_SYS_TYPE_H@/#include <sys\/types.h>/' \
        "$src/src/libmpg123/mpg123.h.in" >mpg123.h
    cp mpg123.h fmt123.h "$prefix/include"
    archive libmpg123.a "-DOPT_GENERIC -DREAL_IS_FLOAT" ./*.c
    write_pc libmpg123 1.31 "" -lmpg123
}
