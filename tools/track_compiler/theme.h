#pragma once

// How a place looks, as data: one text file a theme, one colour or number a line.

#include "track_compiler/course.h"
#include "track_compiler/fault.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

// Red, green and blue, 0..1.
struct Colour {
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
};

// Things that belong to the theme and stand in every course of it.
struct ThemeScatter {
    SceneryKind kind = SceneryKind::tree; // a round one
    double density = 0.0;                 // things on a square of 1000 by 1000 cells
    double min_size = 0.0;
    double max_size = 0.0;
    double near = 0.0; // cells from the road's edge, at least
    double far = 0.0;  // and at most; from 80 on there is no limit
};

// Things in a row on both sides of the road.
struct ThemeRow {
    SceneryKind kind = SceneryKind::lamp; // a round one
    double spacing = 0.0;                 // cells of road from one to the next on its side
    double size = 0.0;
    double away = 0.0; // cells from the road's edge to its middle
};

struct Theme {
    // The road and its rim.
    Colour road;      // the surface as laid
    Colour road_worn; // along the racing line
    Colour road_edge; // towards its edges: dust, moss, snow
    Colour line;      // paint on the road
    Colour kerb_red;  // the two stripes of a kerb
    Colour kerb_white;
    Colour rim_light; // what bounds the road: top
    Colour rim_dark;  // and side
    // The land: ground is a mixture of two colours, verge lies along the road.
    Colour ground_light;
    Colour ground_dark;
    Colour verge;
    Colour water_shallow;
    Colour water_deep;
    Colour shore;
    Colour sand;
    Colour gravel;
    Colour field;
    Colour plaza;
    Colour ice;
    Colour woods;
    Colour rocks;
    // Things.
    Colour leaf_light;
    Colour leaf_dark;
    Colour stone;
    Colour roof;
    Colour wall;
    Colour lamp;
    Colour ink;   // lettering
    Colour bloom; // flowers, and whatever else may be gay
    // Numbers.
    double rim_width = 5.0;   // cells; solid, also in the grid
    double grain = 0.5;       // strength of the ground's texture, 0..1
    double road_grain = 0.5;  // strength of the road's texture, 0..1
    double shadow = 0.45;     // darkness of shadows, 0..1
    double shadow_angle = 45; // degrees, where shadows fall, clockwise from +x
    double shadow_length = 1; // of a thing's shadow by its height
    double dark = 0.0;        // night: how much of the light is gone, 0..1
    double paper = 0.0;       // 1: drawn on graph paper
    double edge_line = 0.0;   // strength of the painted lines along the road's edges, 0..1
    double rim_block = 0.0;   // cells from joint to joint of the rim, 0 for no joints
    double rim_rough = 0.3;   // unevenness of the rim: a wall 0, a hedge 1
    double mow = 0.0;         // strength of mown stripes, 0..1
    double ripples = 0.0;     // of ripples in sand or snow
    double cracks = 0.0;      // of the joints in dried mud
    double tufts = 0.0;       // of tufts of grass
    double snow = 0.0;        // how much snow lies on things
    double flowers = 0.0;     // of drifts of flowers
    double groves = 0.0;      // how much plants keep together, 0 evenly spread, 1 in groves only
    double repairs = 0.0;     // of a made road's patches and cracks
    double quay = 0.0;        // 1: shores are walls of stone
    std::vector<ThemeScatter> scatters;
    std::vector<ThemeRow> rows;
};

// The theme that `text` describes; every colour must be given. Nothing if there are faults.
std::optional<Theme> parse_theme(std::string_view text, Faults& faults);
