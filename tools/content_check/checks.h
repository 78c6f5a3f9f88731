#pragma once

// The checks of shipped content, each as the game itself loads it. All paths are relative to the
// working directory, which is the game folder.

class Report;

// Tracks of all nine slots: load, and two computer drivers finish three laps of each, bumping.
void check_tracks(Report& report);
// Track pictures: there, in the grid's proportions, small enough for any GPU and for the menu.
void check_track_pictures(Report& report);
// Cars, title, pointer, button, intro: sizes, transparent ground, margins.
void check_art(Report& report);
// The files open as fonts and know the letters that the game writes.
void check_fonts(Report& report);
// Music and sounds: decode, with the length and the loudness that their use wants.
void check_audio(Report& report);
// Engines and tyres, as the mixer makes them, stand out from the music of a race.
void check_engines(Report& report);
