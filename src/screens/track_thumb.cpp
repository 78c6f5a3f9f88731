#include "screens/track_thumb.h"

#include "base/own_place.h"
#include "platform/files.h"
#include "render/colors.h"
#include "render/image.h"
#include "world/track_file.h"

#include <SDL_image.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr char const* CACHE_FOLDER = ".cache/thumbs"; // in the player's own place
constexpr double THUMB_HEIGHT = 130.0;                // logical pixels

bool at_least_as_new(fs::path const& file, fs::path const& source) {
    std::error_code source_failed;
    std::error_code file_failed;
    auto const source_time = fs::last_write_time(source, source_failed);
    auto const file_time = fs::last_write_time(file, file_failed);
    return !source_failed && !file_failed && file_time >= source_time;
}

// The cached picture, or null if it is stale, broken or made for another display.
SurfaceHandle load_cached(fs::path const& cache, fs::path const& source, int height) {
    if (!at_least_as_new(cache, source)) return nullptr;
    SurfaceHandle picture = load_picture(to_text(cache).c_str());
    if (picture && picture->h != height) picture.reset();
    return picture;
}

// The source's picture, reduced to `height` if it is higher; pictures are never enlarged.
SurfaceHandle load_source(std::string const& path, int height) {
    return load_reduced(path.c_str(), [height](SDL_Point size) {
        int const h = std::min(height, size.y);
        double const w_exact = static_cast<double>(h) * size.x / size.y;
        return SDL_Point{std::max(1, static_cast<int>(std::lround(w_exact))), h};
    });
}

// Where the thumbnail of this height lies that came with the picture, if one did: beside the folder
// that the picture really lies in.
fs::path shipped_thumb(fs::path const& picture, int height) {
    std::error_code ignored;
    fs::path const real = fs::canonical(picture, ignored);
    return real.parent_path().parent_path() / "thumbs" / std::to_string(height) / real.filename();
}

// That, put into the cache.
SurfaceHandle take_shipped(fs::path const& source, int height, fs::path const& cache) {
    fs::path const shipped = shipped_thumb(source, height);
    SurfaceHandle picture = load_cached(shipped, source, height);
    if (!picture) return picture;
    std::error_code ignored;
    fs::create_directories(cache.parent_path(), ignored);
    fs::copy_file(shipped, cache, fs::copy_options::overwrite_existing, ignored);
    return picture;
}

// A cache that cannot be written costs only time at the next visit.
void save_to_cache(SDL_Surface* picture, fs::path const& cache) {
    std::error_code ignored;
    fs::create_directories(cache.parent_path(), ignored);
    IMG_SavePNG(picture, to_text(cache).c_str());
}

int logical_size(int pixels, double scale) {
    return std::max(1, static_cast<int>(std::lround(pixels / (scale > 0.0 ? scale : 1.0))));
}

} // namespace

std::array<std::string, 10> discover_track_pngs() {
    std::array<std::string, 10> pictures;
    for (TrackFile const& file : find_track_files()) {
        std::string& taken = pictures[file.slot];
        std::string const picture = picture_of_track(to_text(file.path));
        std::error_code ignored;
        if (taken.empty() && fs::exists(to_path(picture), ignored)) taken = picture;
    }
    return pictures;
}

int thumb_height(double menu_scale) {
    return std::max(1, static_cast<int>(std::lround(THUMB_HEIGHT * menu_scale)));
}

bool save_track_thumb(std::string const& path, int height, std::string const& to) {
    SurfaceHandle const picture = load_source(path, height);
    return picture && picture->h == height && IMG_SavePNG(picture.get(), to.c_str()) == 0;
}

bool load_track_thumb(SDL_Renderer* renderer, std::string const& path, int height, double scale,
                      TextureHandle& out, int* w, int* h) {
    out.reset();
    *w = *h = 0;
    int const wanted = std::max(1, height);
    fs::path const cache = to_path(OWN_PLACE + CACHE_FOLDER) / to_path(path).filename();
    SurfaceHandle picture = load_cached(cache, to_path(path), wanted);
    if (!picture) picture = take_shipped(to_path(path), wanted, cache);
    if (!picture) {
        picture = load_source(path, wanted);
        if (!picture) return false;
        save_to_cache(picture.get(), cache);
    }
    out.reset(SDL_CreateTextureFromSurface(renderer, picture.get()));
    if (!out) return false;
    SDL_SetTextureScaleMode(out.get(), SDL_ScaleModeLinear);
    SDL_SetTextureBlendMode(out.get(), SDL_BLENDMODE_BLEND);
    *w = logical_size(picture->w, scale);
    *h = logical_size(picture->h, scale);
    return true;
}

bool build_track_thumb(ThumbMaker const& maker, int slot, std::string const& path,
                       TrackThumb& thumb) {
    thumb = {};
    bool const loaded = load_track_thumb(maker.renderer, path, thumb_height(maker.menu_scale),
                                         maker.menu_scale, thumb.tex, &thumb.w, &thumb.h);
    thumb.slot = slot;
    auto const label = [&maker](char const* text) {
        return make_label(maker.renderer, maker.menu_scale, maker.small_font, text, WHITE);
    };
    std::string name = to_text(to_path(path).stem());
    if (name.size() > 2) name.erase(0, 2); // the slot's digit and its "_"
    thumb.name = label(name.c_str());
    if (maker.best == nullptr) return loaded;
    auto const best = maker.best->find(slot);
    if (best == maker.best->end()) return loaded;
    std::array<char, 32> time{};
    std::snprintf(time.data(), time.size(), "%.2f", best->second.seconds);
    thumb.holder = label(best->second.holder.c_str());
    thumb.time = label(time.data());
    return loaded;
}
