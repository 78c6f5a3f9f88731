# shellcheck shell=bash disable=SC2034,SC2154 # scripts/libs, which reads this, sets and takes the rest
# How scripts/libs builds the libraries that go with the portable archive.
#
# SDL2 is built to look for X11, Wayland and sound when it starts, where Debian's own is linked
# against all of them and does not even start where one is missing. Of what SDL2_image and SDL2_ttf
# need, they get static copies that nobody else sees: were these shared, the drivers of the player's
# OpenGL would be given them in place of their own, younger ones.

libraries=(zlib libpng1.6 libjpeg-turbo freetype harfbuzz libsdl2 libsdl2-image libsdl2-ttf)

hardening=(-O2 -fPIC -fstack-protector-strong -Wp,-D_FORTIFY_SOURCE=2)

# Configures and installs with CMake what lies in the folder.
common() { # FOLDER OPTIONS...
    PKG_CONFIG_PATH=$prefix/lib/pkgconfig \
        cmake -S "$1" -B . -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" \
        -DCMAKE_INSTALL_LIBDIR=lib -DCMAKE_PREFIX_PATH="$prefix" "-DCMAKE_INSTALL_RPATH=\$ORIGIN" \
        -DCMAKE_C_FLAGS="${hardening[*]}" -DCMAKE_C_FLAGS_RELEASE=-DNDEBUG \
        -DCMAKE_SHARED_LINKER_FLAGS=-Wl,--exclude-libs,ALL,-z,relro,-z,now,-z,defs "${@:2}"
    ninja -j "$jobs" install
}

# archive NAME COMPILER... -- SOURCE...: compiles what is not configured into a library.
archive() {
    local name=$1 compiler=()
    shift
    while [[ $1 != -- ]]; do compiler+=("$1") && shift; done
    shift
    printf '%s\n' "$@" | xargs -P "$jobs" -n 4 ${CMAKE_C_COMPILER_LAUNCHER:-} "${compiler[@]}" \
        "${hardening[@]}" -fvisibility=hidden -I"$prefix/include" -c
    ar crs "$prefix/lib/$name" ./*.o
}

build_zlib() {
    cp "$src"/*.[ch] .
    mkdir -p "$prefix/include"
    cp zlib.h zconf.h "$prefix/include"
    archive libz.a cc -DHAVE_UNISTD_H -- ./*.c
    write_pc zlib 1.2.13 "" -lz
}

# Its configuration as the authors ship it.
build_libpng1_6() {
    cp "$src"/*.[ch] .
    cp -r "$src/intel" .
    cp "$src/scripts/pnglibconf.h.prebuilt" pnglibconf.h
    rm pngtest.c example.c
    cp png.h pngconf.h pnglibconf.h "$prefix/include"
    archive libpng16.a cc -DPNG_INTEL_SSE -- png*.c intel/*.c
    write_pc libpng 1.6 zlib "-lpng16 -lm"
}

build_libjpeg_turbo() {
    common "$src" -DENABLE_SHARED=OFF -DWITH_TURBOJPEG=OFF -DWITH_SIMD=OFF \
        -DCMAKE_INSTALL_LIBDIR="$prefix/lib" # it reads a mere "lib" as one of the folder it is built in
}

build_freetype() {
    common "$src" -DBUILD_SHARED_LIBS=OFF -DFT_REQUIRE_ZLIB=ON \
        -DFT_DISABLE_{BZIP2,PNG,HARFBUZZ,BROTLI}=ON
}

# All of it is one source; without exceptions it needs no C++ library.
build_harfbuzz() {
    mkdir -p "$prefix/include/harfbuzz"
    cp "$src"/src/hb*.h "$prefix/include/harfbuzz"
    archive libharfbuzz.a c++ -fno-exceptions -fno-rtti -fno-threadsafe-statics \
        -DHAVE_FREETYPE -DHAVE_PTHREAD -I"$prefix/include/freetype2" -- "$src/src/harfbuzz.cc"
    write_pc harfbuzz 6.0.0 freetype2 -lharfbuzz -I"$prefix/include/harfbuzz"
}

build_libsdl2() {
    common "$src" -DSDL_SHARED=ON -DSDL_STATIC=OFF -DSDL_TEST=OFF \
        -DSDL_{X11,WAYLAND,WAYLAND_LIBDECOR,ALSA,PULSEAUDIO,PIPEWIRE}_SHARED=ON \
        -DSDL_RPATH=OFF -DSDL_{SNDIO,JACK,ESD,NAS,ARTS,LIBSAMPLERATE,KMSDRM,VULKAN}=OFF
}

build_libsdl2_image() {
    common "$src" -DBUILD_SHARED_LIBS=ON -DSDL2IMAGE_BACKEND_STB=OFF -DSDL2IMAGE_VENDORED=OFF \
        -DSDL2IMAGE_DEPS_SHARED=OFF -DSDL2IMAGE_SAMPLES=OFF -DSDL2IMAGE_{AVIF,TIF,WEBP,JXL}=OFF \
        -DSDL2IMAGE_{PNG,JPG}_SAVE=ON
}

build_libsdl2_ttf() {
    common "$src" -DBUILD_SHARED_LIBS=ON -DSDL2TTF_VENDORED=OFF -DSDL2TTF_HARFBUZZ=ON \
        -DSDL2TTF_SAMPLES=OFF -DCMAKE_C_STANDARD_LIBRARIES="$prefix/lib/libz.a -lm"
}
