// One chosen call fails, as it may on any machine: a disk that breaks, a table of files that is
// full, a card without memory for one more texture. Calls are counted from the program's main on.
//
// Memory is in failing_memory.cpp; under a sanitizer it is the sanitizer's own, and "malloc" counts
// nothing.

#include "prove/failing_calls.h"

#include "prove/stage.h"

#include <SDL.h>
#include <SDL_image.h>
#include <SDL_ttf.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <set>
#include <string>
#include <sys/uio.h>
#include <unistd.h>

namespace {

constexpr std::array NAMES{"open",   "read",    "write",   "close", "rename", "sync",
                           "malloc", "texture", "surface", "font",  "screen", "device"};

struct Ledger {
    std::array<std::atomic<long>, NAMES.size()> calls{};
    int kind = -1; // which one fails, and which call of it
    long number = 0;
    bool counting = false;
};
Ledger ledger;

// What the screen said, for who looks for a word about a loss there.
std::set<std::string>& shown_texts() {
    static std::set<std::string> texts;
    return texts;
}

void tell_calls() {
    Backstage const backstage;
    char const* const path = std::getenv("BRINDLE_CALLS");
    std::FILE* const file = path != nullptr ? std::fopen(path, "w") : nullptr;
    if (file == nullptr) return;
    for (std::size_t i = 0; i < NAMES.size(); ++i) {
        std::fprintf(file, "%s %ld\n", NAMES.at(i), ledger.calls.at(i).load());
    }
    for (std::string const& text : shown_texts()) std::fprintf(file, "shown %s\n", text.c_str());
    std::fclose(file);
}

void note_shown(char const* text) {
    Backstage const backstage;
    if (ledger.counting && std::strstr(text, " not saved: ") != nullptr) shown_texts().insert(text);
}

// A stream's own sign that an operation on it has failed.
void spoil(std::FILE* stream) {
    stream->_flags |= _IO_ERR_SEEN;
    errno = EIO;
}

// The system's call, or its failure with the system's word for why.
template <class Function, class... Arguments>
auto system_call(Kind kind, char const* name, Arguments... arguments) {
    using Result = decltype(original<Function>(name)(arguments...));
    if (!fails(kind)) return original<Function>(name)(arguments...);
    errno = kind == Kind::open ? EMFILE : EIO;
    if constexpr (std::is_pointer_v<Result>) {
        return static_cast<Result>(nullptr);
    } else {
        return static_cast<Result>(-1);
    }
}

// SDL's call, or nothing.
template <class Function, class... Arguments>
auto sdl_call(Kind kind, char const* name, Arguments... arguments) {
    using Result = decltype(original<Function>(name)(arguments...));
    if (!fails(kind)) return original<Function>(name)(arguments...);
    SDL_SetError("out of everything");
    return Result{};
}

int mode_of(int flags, std::va_list arguments) {
    return (flags & O_CREAT) != 0 ? va_arg(arguments, int) : 0;
}

} // namespace

bool fails(Kind kind) {
    if (!ledger.counting || Backstage::entered()) return false;
    auto const index = static_cast<std::size_t>(kind);
    long const number = ++ledger.calls[index];
    bool const chosen = static_cast<int>(kind) == ledger.kind && number == ledger.number;
    if (chosen && std::getenv("BRINDLE_STOP") != nullptr) raise(SIGTRAP);
    return chosen;
}

void start_counting_calls() {
    std::array<char, 16> kind{};
    char const* const text = std::getenv("BRINDLE_FAIL");
    if (text != nullptr) std::sscanf(text, "%15s %ld", kind.data(), &ledger.number);
    for (std::size_t i = 0; i < NAMES.size(); ++i) {
        if (std::strcmp(NAMES.at(i), kind.data()) == 0) ledger.kind = static_cast<int>(i);
    }
    shown_texts(); // outlives what is told at the end
    std::atexit(tell_calls);
    ledger.counting = true;
}

extern "C" {

int open(char const* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    int const mode = mode_of(flags, arguments);
    va_end(arguments);
    return system_call<int(char const*, int, ...)>(Kind::open, "open", path, flags, mode);
}
int openat(int folder, char const* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    int const mode = mode_of(flags, arguments);
    va_end(arguments);
    return system_call<int(int, char const*, int, ...)>(Kind::open, "openat", folder, path, flags,
                                                        mode);
}
std::FILE* fopen(char const* path, char const* mode) {
    return system_call<decltype(fopen)>(Kind::open, "fopen", path, mode);
}
std::FILE* fopen64(char const* path, char const* mode) {
    return system_call<decltype(fopen)>(Kind::open, "fopen64", path, mode);
}
DIR* opendir(char const* path) {
    return system_call<decltype(opendir)>(Kind::open, "opendir", path);
}
ssize_t read(int file, void* bytes, std::size_t size) {
    return system_call<decltype(read)>(Kind::read, "read", file, bytes, size);
}
ssize_t write(int file, void const* bytes, std::size_t size) {
    return system_call<decltype(write)>(Kind::write, "write", file, bytes, size);
}
ssize_t writev(int file, iovec const* pieces, int count) {
    return system_call<decltype(writev)>(Kind::write, "writev", file, pieces, count);
}
std::size_t fread(void* bytes, std::size_t size, std::size_t count, std::FILE* stream) {
    if (!fails(Kind::read)) return original<decltype(fread)>("fread")(bytes, size, count, stream);
    spoil(stream);
    return 0;
}
std::size_t fwrite(void const* bytes, std::size_t size, std::size_t count, std::FILE* stream) {
    bool const console = stream == stdout || stream == stderr;
    if (console || !fails(Kind::write)) {
        return original<decltype(fwrite)>("fwrite")(bytes, size, count, stream);
    }
    spoil(stream);
    return 0;
}
int close(int file) {
    int const result = original<decltype(close)>("close")(file);
    if (!fails(Kind::close)) return result;
    errno = EIO;
    return -1;
}
int fclose(std::FILE* stream) {
    int const result = original<decltype(fclose)>("fclose")(stream);
    if (!fails(Kind::close)) return result;
    errno = EIO;
    return EOF;
}
int rename(char const* from, char const* to) noexcept {
    return system_call<decltype(rename)>(Kind::rename, "rename", from, to);
}
int renameat2(int from_dir, char const* from, int to_dir, char const* to, unsigned flags) noexcept {
    return system_call<decltype(renameat2)>(Kind::rename, "renameat2", from_dir, from, to_dir, to,
                                            flags);
}
int fsync(int /*file*/) {
    if (fails(Kind::sync)) {
        errno = EIO;
        return -1;
    }
    return 0; // nobody pulls the plug here: no need to wait for the disk
}

SDL_Texture* SDL_CreateTexture(SDL_Renderer* renderer, Uint32 format, int access, int w, int h) {
    return sdl_call<decltype(SDL_CreateTexture)>(Kind::texture, "SDL_CreateTexture", renderer,
                                                 format, access, w, h);
}
SDL_Texture* SDL_CreateTextureFromSurface(SDL_Renderer* renderer, SDL_Surface* surface) {
    return sdl_call<decltype(SDL_CreateTextureFromSurface)>(
        Kind::texture, "SDL_CreateTextureFromSurface", renderer, surface);
}
SDL_Surface* SDL_CreateRGBSurfaceWithFormat(Uint32 flags, int w, int h, int depth, Uint32 format) {
    return sdl_call<decltype(SDL_CreateRGBSurfaceWithFormat)>(
        Kind::surface, "SDL_CreateRGBSurfaceWithFormat", flags, w, h, depth, format);
}
SDL_Surface* SDL_ConvertSurfaceFormat(SDL_Surface* surface, Uint32 format, Uint32 flags) {
    return sdl_call<decltype(SDL_ConvertSurfaceFormat)>(Kind::surface, "SDL_ConvertSurfaceFormat",
                                                        surface, format, flags);
}
SDL_Surface* IMG_Load(char const* path) {
    return sdl_call<decltype(IMG_Load)>(Kind::surface, "IMG_Load", path);
}
SDL_Surface* TTF_RenderUTF8_Blended(TTF_Font* font, char const* text, SDL_Color color) {
    note_shown(text);
    return sdl_call<decltype(TTF_RenderUTF8_Blended)>(Kind::surface, "TTF_RenderUTF8_Blended", font,
                                                      text, color);
}
TTF_Font* TTF_OpenFont(char const* path, int size) {
    return sdl_call<decltype(TTF_OpenFont)>(Kind::font, "TTF_OpenFont", path, size);
}
SDL_Renderer* SDL_CreateRenderer(SDL_Window* window, int index, Uint32 flags) {
    return sdl_call<decltype(SDL_CreateRenderer)>(Kind::screen, "SDL_CreateRenderer", window, index,
                                                  flags);
}
SDL_Window* SDL_CreateWindow(char const* title, int x, int y, int w, int h, Uint32 flags) {
    SDL_Point const size = forced_size({w, h});
    if (std::getenv("BRINDLE_SIZE") != nullptr) flags &= ~Uint32{SDL_WINDOW_FULLSCREEN_DESKTOP};
    return sdl_call<decltype(SDL_CreateWindow)>(Kind::screen, "SDL_CreateWindow", title, x, y,
                                                size.x, size.y, flags);
}
SDL_AudioDeviceID SDL_OpenAudioDevice(char const* name, int capture, SDL_AudioSpec const* wanted,
                                      SDL_AudioSpec* obtained, int changes) {
    return sdl_call<decltype(SDL_OpenAudioDevice)>(Kind::device, "SDL_OpenAudioDevice", name,
                                                   capture, wanted, obtained, changes);
}
int SDL_AudioInit(char const* driver) {
    if (!fails(Kind::device)) return original<decltype(SDL_AudioInit)>("SDL_AudioInit")(driver);
    return SDL_SetError("out of everything");
}
}
