#pragma once

// What the menu says where tracks are missing that a player looks for.

#include <SDL.h>

#include <string>

struct MenuScreen;

// Where tracks belong, in place of a row without any; else nothing. Made for the output's size.
void make_no_tracks_label(MenuScreen& menu);
void draw_no_tracks_label(MenuScreen const& menu, SDL_Rect const& view);

// Names what failed to load, for a while: `track`, which should have been raced on, or else the
// track whose `picture` failed. Either may be empty.
void note_failed_track(MenuScreen& menu, std::string const& track, std::string const& picture,
                       unsigned now);
