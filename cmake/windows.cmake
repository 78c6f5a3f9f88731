# Debian's MinGW-w64 as the compiler, and the libraries that scripts/libs has built for Windows.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triplet x86_64-w64-mingw32)
# The variant whose std::thread and std::mutex are there.
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

get_filename_component(libs "${CMAKE_CURRENT_LIST_DIR}/../build/libs-windows" ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH "${libs}" /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} "${libs}/lib/pkgconfig:/usr/${triplet}/lib/pkgconfig")
set(PKG_CONFIG_ARGN --static)

# One file to a program: no library of the compiler's or of ours lies beside it.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
