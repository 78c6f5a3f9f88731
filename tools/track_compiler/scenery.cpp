#include "track_compiler/scenery.h"

#include "track_compiler/stencil.h"
#include "track_compiler/texture.h"
#include "track_compiler/things.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

namespace {

constexpr int TRIES = 12; // places that a scattered thing is offered

bool on_water(Course const& course, Point place) {
    return std::any_of(course.areas.begin(), course.areas.end(), [&](GroundArea const& area) {
        return area.kind == GroundKind::water && inside(area, place);
    });
}

// Nothing grows on lettering, lanes, gravel and paving or among a field's crop.
bool kept_free(Course const& course, Point place) {
    auto const on_text = [&](Lettering const& lettering) {
        double const wide = lettering.height * stencil_width(lettering.text);
        Point const offset = place - lettering.at;
        return std::fabs(offset.x) < wide / 2.0 + 26.0 &&
               std::fabs(offset.y) < lettering.height / 2.0 + 26.0;
    };
    auto const on_lane = [&](Lane const& lane) {
        for (std::size_t i = 0; i + 1 < lane.way.size(); ++i) {
            Point const leg = lane.way[i + 1] - lane.way[i];
            Point const offset = place - lane.way[i];
            double const t = std::clamp(dot(offset, leg) / std::max(dot(leg, leg), 1e-9), 0.0, 1.0);
            if (length(offset - t * leg) < lane.width / 2.0 + 6.0) return true;
        }
        return false;
    };
    return std::any_of(course.letterings.begin(), course.letterings.end(), on_text) ||
           std::any_of(course.lanes.begin(), course.lanes.end(), on_lane) ||
           std::any_of(course.areas.begin(), course.areas.end(), [&](GroundArea const& area) {
               bool const used = area.kind == GroundKind::field || area.kind == GroundKind::plaza ||
                                 area.kind == GroundKind::gravel;
               return used && inside(area, place);
           });
}

// Round things may grow into each other a little, but not into what is built.
bool crowded(std::vector<SceneryItem> const& items, SceneryItem const& wanted) {
    return std::any_of(items.begin(), items.end(), [&](SceneryItem const& item) {
        Point const offset = wanted.at - item.at;
        double const room = 0.4 * (item.length + wanted.length);
        if (is_round(item.kind)) return length(offset) < room;
        Point const along = direction(item.angle);
        double const beside = std::max(std::fabs(dot(offset, along)) - item.length / 2.0,
                                       std::fabs(cross(along, offset)) - item.width / 2.0);
        return beside < wanted.length / 2.0 + 2.0;
    });
}

// Where scattered things may stand, by their distance from the road's edge in cells.
struct Belt {
    double near = 0.0;
    double far = 1e9;
    double groves = 0.0; // of the theme
};

void scatter_items(Course const& course, SceneryScatter const& scatter, std::uint32_t seed,
                   RoadField const& field, Belt belt, std::vector<SceneryItem>& items) {
    Point const span = scatter.high - scatter.low;
    for (int n = 0; n < scatter.count; ++n) {
        for (int attempt = 0; attempt < TRIES; ++attempt) {
            auto const draw = [&](std::uint32_t what) {
                return chance(seed, static_cast<std::uint32_t>(n * TRIES + attempt), what);
            };
            SceneryItem item{.kind = scatter.kind, .line = scatter.line};
            item.at = scatter.low + Point{span.x * draw(0), span.y * draw(1)};
            item.length = item.width =
                scatter.min_size + (scatter.max_size - scatter.min_size) * draw(2);
            if (touches_road(item, field, belt.near) || on_water(course, item.at)) continue;
            if (kept_free(course, item.at)) continue;
            bool const social = is_natural(item.kind) && item.kind != SceneryKind::rock;
            if (social && draw(3) < belt.groves * (1.0 - grove(item.at))) continue;
            if (road_at(field, item.at).edge > belt.far || crowded(items, item)) continue;
            items.push_back(item);
            break;
        }
    }
}

// Along both sides, staggered, wherever there is room.
void place_row(Course const& course, Centreline const& line, ThemeRow const& row,
               RoadField const& field, double clear, std::vector<SceneryItem>& items) {
    double side = 1.0;
    for (double along = 0.0; along < line.length; along += row.spacing / 2.0) {
        RoadSample const& here = line.at(along);
        side = -side;
        SceneryItem item{.kind = row.kind};
        item.at = here.at + side * (here.half_width + row.away) * side_of(direction(here.heading));
        item.length = item.width = row.size;
        if (touches_road(item, field, clear) || on_water(course, item.at)) continue;
        if (!crowded(items, item)) items.push_back(item);
    }
}

// A hedge, an avenue or an orchard's row: hand-planted, so nearly straight.
void place_way(Course const& course, SceneryRow const& row, RoadField const& field, double clear,
               std::vector<SceneryItem>& items) {
    double ahead = 0.0; // from the leg's beginning to the next thing
    for (std::size_t i = 0; i + 1 < row.way.size(); ++i) {
        Point const leg = row.way[i + 1] - row.way[i];
        double const reach = length(leg);
        for (; ahead <= reach; ahead += row.spacing) {
            SceneryItem item{.kind = row.kind, .line = row.line};
            item.at = row.way[i] + (ahead / std::max(reach, 1e-9)) * leg;
            item.at = item.at + 0.12 * row.size * direction(6.28 * whim(item, 1));
            item.length = item.width = row.size * (0.85 + 0.3 * whim(item, 2));
            if (!touches_road(item, field, clear) && !on_water(course, item.at)) {
                items.push_back(item);
            }
        }
        ahead -= reach;
    }
}

// The theme's rule for a course of this size.
SceneryScatter scatter_of(ThemeScatter const& rule, Course const& course) {
    double const squares = 1e-6 * course.width * course.height;
    return {.kind = rule.kind,
            .count = static_cast<int>(rule.density * squares),
            .min_size = rule.min_size,
            .max_size = rule.max_size,
            .low = {0.0, 0.0},
            .high = {static_cast<double>(course.width), static_cast<double>(course.height)}};
}

} // namespace

bool touches_road(SceneryItem const& item, RoadField const& field, double border) {
    if (item.length == item.width && item.angle == 0.0) {
        return road_at(field, item.at).edge < border + item.length / 2.0;
    }
    Point const along = direction(item.angle);
    Point const across = side_of(along);
    int const steps = static_cast<int>(std::ceil(std::max(item.length, item.width) / 4.0)) + 1;
    for (int i = 0; i <= steps; ++i) {
        for (int j = 0; j <= steps; ++j) {
            Point const place = item.at + item.length * (1.0 * i / steps - 0.5) * along +
                                item.width * (1.0 * j / steps - 0.5) * across;
            if (road_at(field, place).edge < border) return true;
        }
    }
    return false;
}

bool inside(GroundArea const& area, Point place) {
    bool in = false;
    for (std::size_t i = 0, j = area.corners.size() - 1; i < area.corners.size(); j = i++) {
        Point const a = area.corners[i];
        Point const b = area.corners[j];
        if ((a.y > place.y) == (b.y > place.y)) continue;
        if (place.x < a.x + (b.x - a.x) * (place.y - a.y) / (b.y - a.y)) in = !in;
    }
    return in;
}

double grove(Point place) {
    Point const turned{0.6 * place.x - 0.8 * place.y, 0.8 * place.x + 0.6 * place.y};
    double const sum = 0.6 * clouds().at(place, 430.0) + 0.4 * clouds().at(turned, 190.0);
    return smoothstep(0.46, 0.60, sum);
}

double area_whim(GroundArea const& area) {
    auto const number = [](double value) { return static_cast<std::uint32_t>(value + 8192.0); };
    return chance(number(area.corners[0].x), number(area.corners[0].y), 17);
}

double chance(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    std::uint32_t h = a * 0x9E3779B1U ^ b * 0x85EBCA77U ^ c * 0xC2B2AE3DU;
    h = (h ^ (h >> 15U)) * 0x2C1B3C6DU;
    h = (h ^ (h >> 12U)) * 0x297A2D39U;
    h ^= h >> 15U;
    return static_cast<double>(h) / 4294967296.0;
}

std::vector<SceneryItem> place_scenery(Course const& course, Theme const& theme,
                                       Centreline const& line, RoadField const& field,
                                       Faults& faults) {
    double const border = course.kerb_depth + theme.rim_width;
    double const clear = border + 2.0;
    std::vector<SceneryItem> items = course.items;
    for (SceneryItem const& item : items) {
        if (item.line == 0 || !touches_road(item, field, border)) continue;
        faults.push_back({item.line, "it stands on the road or its rim"});
    }
    for (ThemeRow const& row : theme.rows) place_row(course, line, row, field, clear, items);
    for (SceneryRow const& row : course.rows) place_way(course, row, field, clear, items);
    std::uint32_t seed = 1;
    for (SceneryScatter const& scatter : course.scatters) {
        scatter_items(course, scatter, seed++, field, {.near = clear, .groves = theme.groves},
                      items);
    }
    for (ThemeScatter const& rule : theme.scatters) {
        bool const limited = rule.far < 80.0;
        Belt const belt{std::max(clear, rule.near), limited ? rule.far : 1e9, theme.groves};
        scatter_items(course, scatter_of(rule, course), seed++, field, belt, items);
    }
    auto const towers = [](SceneryItem const& item) { return item.kind == SceneryKind::crane; };
    std::stable_sort(items.begin(), items.end(), [&](SceneryItem const& a, SceneryItem const& b) {
        return towers(a) != towers(b) ? towers(b) : a.at.y < b.at.y;
    });
    return items;
}
