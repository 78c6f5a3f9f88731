#include "track_compiler/ground_painter.h"
#include "track_compiler/picture.h"
#include "track_compiler/scenery.h"
#include "track_compiler/texture.h"
#include "track_compiler/things.h"

#include <numbers>

namespace {

constexpr double TURN = 2.0 * std::numbers::pi;

// Foliage at a brightness of 0..1, in a tone of the plant's own.
Colour leaf(Theme const& theme, SceneryItem const& item, double light) {
    Colour const colour = mix(theme.leaf_dark, theme.leaf_light, light);
    Colour const lit = mix(colour, shade(theme.leaf_light, 1.3), light - 0.85);
    bool const gay = theme.flowers > 0.0 && item.kind != SceneryKind::pine &&
                     item.kind != SceneryKind::palm && item.kind != SceneryKind::cactus &&
                     whim(item, 91) < 0.14 * theme.flowers; // in bloom, or the first to turn
    if (gay) return shade(mix(lit, theme.bloom, 0.72), 0.62 + 0.5 * light);
    double const warm = whim(item, 90) - 0.5;
    auto const tint = static_cast<float>(1.0 + 0.5 * warm);
    return {lit.r * tint, lit.g * (1.0F + 0.12F * static_cast<float>(warm)), lit.b};
}

// A crown of round tufts, each lit like a ball; the ones in front cover those behind.
Dab crown(Theme const& theme, SceneryItem const& item, Point offset, std::uint32_t tufts) {
    Point const light = towards_light(theme);
    double const radius = item.length / 2.0;
    double const ragged = 0.16 * radius * (clouds().at(item.at + offset, 13.0) - 0.5);
    Dab dab;
    for (std::uint32_t tuft = 0; tuft <= tufts; ++tuft) {
        bool const top = tuft == tufts; // the last tuft is the middle one
        double const angle = TURN * (tuft + 0.6 * whim(item, tuft)) / tufts;
        double const away = top ? 0.10 : 0.52 + 0.1 * whim(item, tuft + 20);
        double const size = radius * (top ? 0.52 : 0.38 + 0.1 * whim(item, tuft + 40));
        Point const middle = away * radius * direction(angle) + (top ? 0.1 * radius : 0.0) * light;
        Point const from = offset - middle;
        double const alpha = coverage(length(from) + ragged - size);
        if (alpha <= 0.0) continue;
        double const ball = dot(from, light) / size;      // -1..1 across the tuft
        double const whole = dot(offset, light) / radius; // and across the crown
        double const hem = length(from) / size > 0.86 ? -0.12 : 0.0;
        double const level = 0.45 + 0.28 * ball + 0.22 * whole + (top ? 0.1 : 0.0) + hem;
        double const speck = 0.30 * (clouds().at(item.at + offset, 9.0) - 0.5);
        Colour const colour = leaf(theme, item, std::floor(8.0 * (level + speck)) / 7.0);
        dab.colour = mix(dab.colour, colour, dab.alpha > 0.0 ? alpha : 1.0);
        dab.alpha = std::max(dab.alpha, alpha);
    }
    return dab;
}

// Whorls of branches, each narrower than the one below; snow lies on the tips.
Dab pine(Theme const& theme, SceneryItem const& item, Point offset) {
    constexpr int WHORLS = 5;
    Point const light = towards_light(theme);
    double const radius = item.length / 2.0;
    double const away = length(offset);
    double const angle = std::atan2(offset.y, offset.x);
    Dab dab;
    for (int whorl = 0; whorl < WHORLS; ++whorl) {
        double const reach = radius * (1.0 - 0.19 * whorl);
        double const branches = 11.0 - whorl;
        double const phase = whim(item, static_cast<std::uint32_t>(whorl)) * TURN;
        double const fringe = 0.5 + 0.5 * std::cos(angle * branches + phase);
        double const edge = reach * (0.80 + 0.20 * fringe);
        double const alpha = coverage(away - edge);
        if (alpha <= 0.0) continue;
        double const facing = away > 0.5 ? dot(offset, light) / away : 0.0;
        double const tip = smoothstep(0.55, 1.0, away / edge);
        double const level = 0.22 + 0.09 * whorl + 0.3 * facing + 0.22 * (tip - 0.5);
        Colour colour = leaf(theme, item, std::floor(8.0 * level) / 7.0);
        double const flakes = clouds().at(item.at + offset, 8.0) + 0.10 * facing + 0.16 * tip;
        Colour const snow = mix(Colour{0.74F, 0.82F, 0.92F}, WHITE, 0.5 + 0.7 * facing);
        colour = mix(colour, snow, theme.snow * smoothstep(0.50, 0.66, flakes));
        dab.colour = mix(dab.colour, colour, dab.alpha > 0.0 ? alpha : 1.0);
        dab.alpha = std::max(dab.alpha, alpha);
    }
    return dab;
}

Dab palm(Theme const& theme, SceneryItem const& item, Point offset) {
    constexpr std::uint32_t FRONDS = 9;
    Point const light = towards_light(theme);
    double const radius = item.length / 2.0;
    Dab dab;
    for (std::uint32_t frond = 0; frond < FRONDS; ++frond) {
        Point const along = direction(TURN * (frond + 0.5 * whim(item, frond)) / FRONDS);
        double const reach = radius * (0.85 + 0.15 * whim(item, frond + 20));
        double const out = dot(offset, along) / reach;
        double const beside = cross(along, offset);
        double const half = 0.19 * radius * std::sqrt(std::max(0.0, out)) * (1.15 - out);
        double const teeth = 0.5 * std::fabs(std::remainder(out * reach, 3.0));
        double const alpha =
            out > 1.0 || out < 0.0 ? 0.0 : coverage(std::fabs(beside) + 0.6 * teeth - half);
        if (alpha <= 0.0) continue;
        double const rib = std::fabs(beside) < 0.5 ? 0.25 : 0.0;
        double const level = 0.45 + 0.35 * dot(along, light) +
                             0.2 * dot(light, side_of(along)) * (beside > 0.0 ? 1.0 : -1.0) + rib;
        dab.colour = mix(dab.colour, leaf(theme, item, level), dab.alpha > 0.0 ? alpha : 1.0);
        dab.alpha = std::max(dab.alpha, alpha);
    }
    if (length(offset) < 0.09 * radius + 0.8) dab = {shade(theme.shore, 0.6), 1.0};
    return dab;
}

// A ribbed barrel with pale spines and, now and then, a flower.
Dab cactus(Theme const& theme, SceneryItem const& item, Point offset) {
    double const radius = item.length / 2.0;
    double const away = length(offset);
    double const angle = std::atan2(offset.y, offset.x) + whim(item, 0);
    double const rib = std::cos(angle * 9.0);
    double const light = dot(offset, towards_light(theme)) / radius;
    Colour colour = leaf(theme, item, 0.45 + 0.4 * light + 0.22 * rib);
    if (rib < -0.9) colour = mix(colour, WHITE, 0.35);
    if (away < 0.28 * radius && whim(item, 1) < 0.4) colour = {0.93F, 0.36F, 0.55F};
    return {colour, coverage(away - radius * (0.92 + 0.08 * rib))};
}

// Flat faces around a flat top; every face has the light of its own slope.
Dab rock(Theme const& theme, SceneryItem const& item, Point offset) {
    constexpr std::uint32_t FACES = 8;
    double const radius = item.length / 2.0;
    double highest = 0.0;
    Point slope{};
    for (std::uint32_t face = 0; face < FACES; ++face) {
        Point const out = direction(TURN * (face + 0.7 * whim(item, face)) / FACES);
        double const reach = radius * (0.72 + 0.28 * whim(item, face + 20));
        double const here = dot(offset, out) / reach;
        if (here <= highest) continue;
        highest = here;
        slope = out;
    }
    double const top = 0.42 + 0.2 * whim(item, 50);
    double const facing = highest < top ? 0.25 : dot(slope, towards_light(theme));
    double const rough = 0.2 * (clouds().at(item.at + offset, 10.0) - 0.5);
    Colour colour = shade(theme.stone, 0.86 + 0.32 * facing + 0.08 * std::floor(rough * 8.0));
    double const drift = 0.3 * facing + clouds().at(item.at + offset, 30.0);
    colour = mix(colour, WHITE, theme.snow * smoothstep(0.5, 0.6, drift));
    return {colour, coverage((highest - 1.0) * radius)};
}

} // namespace

double whim(SceneryItem const& item, std::uint32_t what) {
    return chance(static_cast<std::uint32_t>(item.at.x * 8.0 + 65536.0),
                  static_cast<std::uint32_t>(item.at.y * 8.0 + 65536.0), what);
}

bool is_natural(SceneryKind kind) {
    return kind == SceneryKind::tree || kind == SceneryKind::pine || kind == SceneryKind::palm ||
           kind == SceneryKind::bush || kind == SceneryKind::cactus || kind == SceneryKind::rock;
}

Dab natural_thing(Theme const& theme, SceneryItem const& item, Point offset) {
    switch (item.kind) {
    case SceneryKind::pine:
        return pine(theme, item, offset);
    case SceneryKind::palm:
        return palm(theme, item, offset);
    case SceneryKind::cactus:
        return cactus(theme, item, offset);
    case SceneryKind::rock:
        return rock(theme, item, offset);
    case SceneryKind::bush:
        return crown(theme, item, offset, 5);
    default:
        return crown(theme, item, offset, 9);
    }
}
