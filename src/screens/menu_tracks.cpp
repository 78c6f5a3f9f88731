#include "screens/menu_tracks.h"

#include <algorithm>

namespace {

constexpr float GLIDE_MS = 350.0F;

float share_since(std::uint32_t start, unsigned now) {
    return static_cast<float>(now - start) / GLIDE_MS;
}

void end_slide(MenuTracks& tracks) {
    tracks.slide_at = tracks.swap_at = 0;
    tracks.swapping = false;
}

void withdraw_extra(MenuTracks& tracks, unsigned now) {
    if (tracks.extra_slot == 0) return;
    tracks.extra_slot = 0;
    tracks.slide_at = now;
}

void pick_row_slot(MenuTracks& tracks, int slot, unsigned now) {
    auto const at = std::find_if(tracks.thumbs.begin(), tracks.thumbs.end(),
                                 [slot](TrackThumb const& thumb) { return thumb.slot == slot; });
    if (at != tracks.thumbs.end()) {
        pick_row(tracks, static_cast<std::size_t>(at - tracks.thumbs.begin()), now);
    }
}

// Notes where the row stands, so that it glides on from there when the extra thumbnail changes.
void start_swap(MenuTracks& tracks, SDL_Rect const& view, unsigned now) {
    std::vector<SDL_Rect> const rects = track_rects(tracks, view, now);
    std::size_t const count = std::min(rects.size(), tracks.from_rects.size());
    // An extra thumbnail without a picture had no place of its own: the next comes from the end.
    tracks.from_rects.fill(rects.empty() ? view : rects.back());
    std::copy_n(rects.begin(), count, tracks.from_rects.begin());
    tracks.swapping = true;
    tracks.swap_at = now;
}

void start_entry(MenuTracks& tracks, unsigned now) {
    tracks.slide_at = tracks.swap_at = now;
    tracks.swapping = false;
}

void show_extra(MenuTracks& tracks, int digit, SDL_Rect const& view, ThumbMaker const& maker,
                unsigned now) {
    if (!tracks.has_track[static_cast<std::size_t>(digit)]) return;
    std::string const picture = discover_track_pngs()[static_cast<std::size_t>(digit)];
    if (picture.empty()) return;
    bool const same = tracks.extra_slot == digit;
    if (tracks.extra_slot == 0) {
        start_entry(tracks, now);
    } else if (!same) {
        start_swap(tracks, view, now);
    }
    tracks.extra_slot = digit;
    pick_extra(tracks);
    if (same && tracks.extra_thumb.tex) return;
    build_track_thumb(maker, digit, picture, tracks.extra_thumb);
}

// slide of TrackFactors. An extra thumbnail that has left is released.
float slide_factor(MenuTracks& tracks, unsigned now) {
    if (tracks.slide_at == 0) return tracks.extra_slot != 0 ? 1.0F : 0.0F;
    float const t = std::min(1.0F, share_since(tracks.slide_at, now));
    if (tracks.extra_slot != 0) return t;
    if (t < 1.0F) return 2.0F - t;
    tracks.extra_thumb = {};
    end_slide(tracks);
    return 0.0F;
}

} // namespace

void pick_row(MenuTracks& tracks, std::size_t row, unsigned now) {
    tracks.selected_row = static_cast<int>(row);
    tracks.selected_track = tracks.thumbs[row].slot;
    withdraw_extra(tracks, now);
}

void pick_extra(MenuTracks& tracks) {
    tracks.selected_row = -1;
    tracks.selected_track = tracks.extra_slot;
}

void pick_digit(MenuTracks& tracks, int digit, SDL_Rect const& view, ThumbMaker const& maker,
                unsigned now) {
    if (digit <= ROW_SLOTS) {
        pick_row_slot(tracks, digit, now);
    } else {
        show_extra(tracks, digit, view, maker, now);
    }
}

TrackFactors track_factors(MenuTracks& tracks, unsigned now) {
    TrackFactors factors;
    if (tracks.extra_thumb.tex) {
        factors.slide = slide_factor(tracks, now);
        if (factors.slide > 0.0F || tracks.extra_slot != 0) factors.extra = &tracks.extra_thumb;
    }
    float const a = tracks.swap_at == 0 ? 1.0F : std::min(1.0F, share_since(tracks.swap_at, now));
    if (a >= 1.0F) tracks.swapping = false;
    if (factors.extra != nullptr) {
        factors.extra_alpha = tracks.swap_at == 0 && tracks.extra_slot == 0 ? 0.0F : a;
    }
    if (tracks.swapping) {
        factors.swap_t = a;
        factors.from_rects = tracks.from_rects.data();
    }
    return factors;
}

bool is_at_rest(TrackFactors const& factors) {
    return factors.extra == nullptr || !factors.extra->tex || factors.slide <= 0.0F;
}

std::vector<SDL_Rect> row_rects(std::vector<TrackThumb> const& thumbs, TrackFactors const& factors,
                                SDL_Rect const& view) {
    std::vector<SDL_Rect> rects;
    track_row_layout(thumbs, view, rects);
    if (!is_at_rest(factors)) {
        bool const leaving = factors.slide > 1.0F;
        float const share = leaving ? factors.slide - 1.0F : factors.slide;
        std::vector<SDL_Rect> wider;
        track_row_layout(thumbs, *factors.extra, view, wider);
        for (std::size_t i = 0; i < rects.size(); ++i) glide(rects[i], rects[i], wider[i], share);
        if (!leaving) rects.push_back(wider.back());
    }
    if (factors.swap_t > 0.0F && factors.from_rects != nullptr) {
        std::size_t const count = std::min<std::size_t>(rects.size(), ROW_SLOTS);
        for (std::size_t i = 0; i < count; ++i) {
            glide(rects[i], factors.from_rects[i], rects[i], factors.swap_t);
        }
    }
    return rects;
}

std::vector<SDL_Rect> track_rects(MenuTracks& tracks, SDL_Rect const& view, unsigned now) {
    return row_rects(tracks.thumbs, track_factors(tracks, now), view);
}
