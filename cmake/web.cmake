# Toolchain of the browser's build: Debian's emscripten, with the libraries of `scripts/libs web`.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)

cmake_path(ABSOLUTE_PATH CMAKE_CURRENT_LIST_DIR OUTPUT_VARIABLE brindle_web_libs)
cmake_path(REPLACE_FILENAME brindle_web_libs build/libs-web)
list(APPEND CMAKE_FIND_ROOT_PATH "${brindle_web_libs}")
set(ENV{PKG_CONFIG_LIBDIR} "${brindle_web_libs}/lib/pkgconfig")

# brindle_web_page(TARGET FACTORY): a program that a page loads. FACTORY is what JavaScript calls to
# get one that runs.
function(brindle_web_page target factory)
  target_link_options(
    ${target}
    PRIVATE
    -sMODULARIZE
    -sEXPORT_NAME=${factory}
    -sENVIRONMENT=web
    -sALLOW_MEMORY_GROWTH
    -sFORCE_FILESYSTEM
    -sEXIT_RUNTIME
    -sEXPORTED_RUNTIME_METHODS=FS,ENV,callMain)
endfunction()

# brindle_web_game(TARGET): such a program that shows frames and waits for the page, for the next
# frame or a file. Its call stack is put aside then (ASYNCIFY); none of those goes through a function
# pointer, which spares most functions the code for it.
function(brindle_web_game target)
  brindle_web_page(${target} createBrindleRun)
  # What SDL's sound calls from its JavaScript; a file, as no quoting gets a "$" through.
  set(called "${CMAKE_CURRENT_BINARY_DIR}/called_by_sdl.json")
  file(WRITE "${called}" "[\"$autoResumeAudioContext\", \"$dynCall\"]")
  target_link_options(
    ${target}
    PRIVATE
    -sASYNCIFY
    -sASYNCIFY_IGNORE_INDIRECT
    -sASYNCIFY_STACK_SIZE=65536
    -sINITIAL_MEMORY=128MB
    -lidbfs.js
    -sEXPORTED_RUNTIME_METHODS=FS,ENV,callMain,Asyncify,JSEvents
    "-sDEFAULT_LIBRARY_FUNCS_TO_INCLUDE=@${called}")
endfunction()

# brindle_web_console(TARGET): a program for Node, with the files of the machine.
function(brindle_web_console target)
  target_link_options(${target} PRIVATE -sENVIRONMENT=node -sNODERAWFS -sALLOW_MEMORY_GROWTH
                      -sEXIT_RUNTIME -sINITIAL_MEMORY=64MB)
endfunction()
