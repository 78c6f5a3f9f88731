#pragma once

// The real program on a stage (LD_PRELOAD): time passes by frames instead of by the clock, so that
// a run is the same each time and as fast as the machine; somebody is at the keys; and what the
// program asks of the system may fail.
//
//   BRINDLE_SCRIPT=TEXT          plays a part, see actor.h
//   BRINDLE_MONKEY="SEED FRAMES" presses whatever it finds, then closes the window
//   BRINDLE_FAIL="KIND K"        the K-th call of KIND fails, see failing_calls.h
//   BRINDLE_STOP=1               a debugger gets to see that call
//   BRINDLE_CALLS=FILE           at the end the file tells how often each kind was called, and what
//                                the screen said was not saved
//   BRINDLE_SIZE="W H"           the window's size, whatever the program asks for

#include <SDL.h>

#include <dlfcn.h>

// The function that a wrapper of the same name stands before.
template <class Function>
Function* original(char const* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// While one of these lives, calls are the stage's own: none is counted and none fails.
class Backstage {
public:
    Backstage() { ++depth; }
    ~Backstage() { --depth; }
    Backstage(Backstage const&) = delete;
    Backstage& operator=(Backstage const&) = delete;
    static bool entered() { return depth > 0; }

private:
    static inline thread_local int depth = 0;
};

void start_counting_calls();

SDL_Point forced_size(SDL_Point size);
