#pragma once

// The logical surface that everything is drawn on, whatever the window's real size.

constexpr int SCREEN_W = 1280; // logical pixels
constexpr int SCREEN_H = 720;
constexpr int HALF_SCREEN_W = SCREEN_W / 2; // a view of the split screen
