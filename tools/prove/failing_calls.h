#pragma once

// What may fail, in the order of the names that the command line and the counts give to it.
enum class Kind {
    open,
    read,
    write,
    close,
    rename,
    sync,
    malloc,
    texture,
    surface,
    font,
    screen,
    device
};

// Counts a call of that kind; whether it is the chosen one.
bool fails(Kind kind);
