#pragma once

// A course as its description gives it: what a person wrote, checked for form but not yet for
// whether it can be raced. All lengths are in cells of the track's grid.

#include "track_compiler/geometry.h"

#include <string>
#include <vector>

// A corner of the road's centre line. The line runs straight from point to point and every corner
// is rounded to an arc.
struct CoursePoint {
    Point at = {};
    double width = 0.0;        // of the road here; it changes smoothly from point to point
    double radius = 0.0;       // of the arc
    bool radius_given = false; // otherwise `radius` is a wish and shrinks to what fits
    bool plain = false;        // no kerbs in this corner
    int line = 0;
};

// A second way for the cars: it leaves the road at its first place and comes back to it at its
// last.
struct Fork {
    double width = 0.0;
    double kerb_depth = 0.0;     // on both sides, 0 for none
    std::vector<Point> way = {}; // at least 3; its corners are rounded
    int line = 0;
};

enum class SceneryKind {
    tree,
    pine,
    palm,
    bush,
    cactus,
    rock,
    lamp,
    fountain,
    lighthouse,
    tyres,
    house,
    shed,
    stand,
    container,
    boat,
    hay,
    car,
    tent,
    crane,
    pier,
    digger,
    logs,
    board,
    flag,  // at an end of the goal line
    banner // beside the goal line, with the course's name
};

// One solid thing beside the road. Round kinds have length = width = diameter and no angle.
struct SceneryItem {
    SceneryKind kind = SceneryKind::tree;
    Point at = {};
    double length = 0.0; // along `angle`
    double width = 0.0;  // across it
    double angle = 0.0;  // radians, clockwise from +x
    int line = 0;
    std::string text = {}; // of a banner
};

enum class GroundKind { water, sand, gravel, field, plaza, ice, woods, rocks };

// A patch of other ground, a closed polygon. The road lies on top of it.
struct GroundArea {
    GroundKind kind = GroundKind::water;
    std::vector<Point> corners = {}; // at least 3
    int line = 0;
};

enum class LaneKind { track, paved, rails, stream };

// A way beside the road that nobody races on; flat, and the road lies on top of it.
struct Lane {
    LaneKind kind = LaneKind::track;
    double width = 0.0;
    std::vector<Point> way = {}; // at least 2; its corners are rounded
    int line = 0;
};

// Round things at equal distances along a way.
struct SceneryRow {
    SceneryKind kind = SceneryKind::tree;
    double spacing = 0.0;
    double size = 0.0;
    std::vector<Point> way = {}; // at least 2
    int line = 0;
};

// Many things of one kind, placed by chance but the same at every build.
struct SceneryScatter {
    SceneryKind kind = SceneryKind::tree;
    int count = 0;
    double min_size = 0.0;
    double max_size = 0.0;
    Point low = {}; // the box that they lie in
    Point high = {};
    int line = 0;
};

// Words painted on the ground, upright for the camera; flat, so they may lie on the road.
struct Lettering {
    Point at = {};       // their middle
    double height = 0.0; // of a capital
    std::string text = {};
    int line = 0;
};

struct Course {
    std::string name;
    std::string place;
    std::string theme;
    int theme_line = 0;
    int width = 0; // of the grid
    int height = 0;
    double road_width = 80.0;
    double corner_radius = 200.0;
    double kerb_depth = 0.0;  // 0 for no kerbs at all
    double kerb_radius = 0.0; // corners tighter than this get kerbs
    Point start;
    int start_line = 0; // 0 if the course has no start
    Point goal_a;
    Point goal_b;
    int goal_line = 0;               // 0 if the course has no goal line
    std::vector<CoursePoint> points; // at least 3
    std::vector<Fork> forks;
    std::vector<SceneryItem> items;
    std::vector<GroundArea> areas;
    std::vector<Lane> lanes;
    std::vector<SceneryRow> rows;
    std::vector<SceneryScatter> scatters;
    std::vector<Lettering> letterings;
};
