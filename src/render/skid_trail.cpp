#include "render/skid_trail.h"

#include "render/car_sprite.h"
#include "render/track_view.h"
#include "render/view_settings.h"
#include "world/geometry.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace {

constexpr std::uint32_t LIFE_MS = 4000;
constexpr double SPACING = 0.15; // cells between two points
constexpr std::size_t QUEUE_LIMIT = 4096;
constexpr std::uint32_t STANDING_MS = 30; // between points of a car that skids on the spot
constexpr double STILLNESS = 1e-9;        // cells: less is no movement
constexpr double JOINING_LIMIT = 0.36;    // cells squared: further apart is another trail
// Of the car at zoom level 0, in pixels, before CAR_MAGNIFIER.
constexpr double WHEEL_OFFSET = 4.455; // from the centre line
constexpr double MARK_WIDTH = 2.2;
constexpr double THINNEST_HALF_WIDTH = 0.5; // pixels
constexpr double SHORTEST_QUAD = 1e-6;      // pixels
constexpr double STRAIGHTNESS = 1e-6;       // cells squared: what two steps of a straight line span
constexpr std::uint8_t MARK_SHADE = 25;
constexpr std::uint32_t START_ALPHA = 230;

void append(PlayerView& view, double x, double y, double heading, std::uint32_t now) {
    if (view.skid_points.size() >= QUEUE_LIMIT) view.skid_points.pop_front();
    view.skid_points.push_back({x, y, heading, now});
}

void expire(std::deque<SkidPoint>& points, std::uint32_t now) {
    while (!points.empty() && now - points.front().time_ms > LIFE_MS) points.pop_front();
}

void begin_trail(PlayerView& view, CarState const& car, std::uint32_t now) {
    view.skid_active = true;
    view.skid_last_x = car.x;
    view.skid_last_y = car.y;
    view.skid_carry = 0.0;
    view.skid_last_ms = now;
    append(view, car.x, car.y, car.heading, now);
}

// Evenly spaced points along the way since the last step; what is left over of the way is carried
// into the next.
void lay_along(PlayerView& view, CarState const& car, double dx, double dy, double distance,
               std::uint32_t now) {
    double along = SPACING - view.skid_carry;
    if (distance < along) {
        view.skid_carry += distance;
    } else {
        double last = along;
        for (; along <= distance; along += SPACING) {
            double const part = along / distance;
            append(view, view.skid_last_x + dx * part, view.skid_last_y + dy * part, car.heading,
                   now);
            last = along;
        }
        view.skid_last_ms = now;
        view.skid_carry = distance - last;
    }
    view.skid_last_x = car.x;
    view.skid_last_y = car.y;
}

// How the marks lie on the screen.
struct MarkView {
    SDL_Rect const& clip;
    int left; // the map pixel at the clip's corner
    int top;
    std::uint32_t now;
    double offset; // pixels from the car's centre line to each wheel
    double half_width;
};

// A point of the trail, ready for both wheels.
struct MarkPoint {
    double x; // pixels, the car's centre
    double y;
    double side_x; // from the centre to the right wheel
    double side_y;
    SDL_Color color;
    unsigned outside; // which edges of the clip the point lies beyond by more than a mark's reach
    bool joined;      // to the point before it
};

std::uint8_t alpha_at(std::uint32_t age) {
    if (age >= LIFE_MS) return 0;
    return static_cast<std::uint8_t>(START_ALPHA - age * START_ALPHA / LIFE_MS);
}

unsigned edges_beyond(double x, double y, SDL_Rect const& clip, double reach) {
    unsigned edges = 0;
    if (x < clip.x - reach) edges |= 1U;
    if (x > clip.x + clip.w + reach) edges |= 2U;
    if (y < clip.y - reach) edges |= 4U;
    if (y > clip.y + clip.h + reach) edges |= 8U;
    return edges;
}

bool close_enough(SkidPoint const& a, SkidPoint const& b) {
    double const dx = b.x - a.x;
    double const dy = b.y - a.y;
    return dx * dx + dy * dy <= JOINING_LIMIT;
}

// Whether `point` adds nothing to the mark between its neighbours: all three are of one age and
// heading and lie on a straight line, as the points of one step do. A fast car lays twenty of them,
// and a quad for each would be a fraction of a pixel long.
bool lies_between(SkidPoint const& a, SkidPoint const& point, SkidPoint const& b) {
    if (a.time_ms != point.time_ms || point.time_ms != b.time_ms) return false;
    if (a.heading != point.heading || point.heading != b.heading) return false;
    if (!close_enough(a, point) || !close_enough(point, b)) return false;
    Vec2 const before{point.x - a.x, point.y - a.y};
    Vec2 const after{b.x - point.x, b.y - point.y};
    return std::abs(cross(before, after)) < STRAIGHTNESS && dot(before, after) > 0.0;
}

// The quads of one draw call.
struct MarkBatch {
    std::vector<SDL_Vertex> vertices;
    std::vector<int> indices;
};

std::vector<MarkPoint> prepare_points(std::deque<SkidPoint> const& trail, MarkView const& view) {
    double const scale = world_scale();
    double const reach = view.offset + view.half_width + 1.0;
    std::vector<MarkPoint> points;
    points.reserve(trail.size());
    SkidPoint const* before = nullptr;
    double sine = 0.0;
    double cosine = 0.0;
    for (std::size_t i = 0; i < trail.size(); ++i) {
        SkidPoint const& point = trail[i];
        bool const inner = i > 0 && i + 1 < trail.size();
        if (inner && lies_between(trail[i - 1], point, trail[i + 1])) continue;
        // A fast car lays many points with one heading.
        if (before == nullptr || before->heading != point.heading) {
            sine = std::sin(point.heading);
            cosine = std::cos(point.heading);
        }
        double const x = point.x * scale - view.left + view.clip.x;
        double const y = point.y * scale - view.top + view.clip.y;
        SDL_Color const color = {MARK_SHADE, MARK_SHADE, MARK_SHADE,
                                 alpha_at(view.now - point.time_ms)};
        bool const joined = i > 0 && close_enough(trail[i - 1], point);
        points.push_back({x, y, -sine * view.offset, cosine * view.offset, color,
                          edges_beyond(x, y, view.clip, reach), joined});
        before = &point;
    }
    return points;
}

SDL_Vertex vertex(double x, double y, SDL_Color color) {
    return {{static_cast<float>(x), static_cast<float>(y)}, color, {0.0F, 0.0F}};
}

// The mark of one wheel between two neighbours; `side` is -1 for the left wheel, +1 for the right.
void add_quad(MarkBatch& batch, MarkPoint const& a, MarkPoint const& b, double side,
              double half_width) {
    double const ax = a.x + side * a.side_x;
    double const ay = a.y + side * a.side_y;
    double const bx = b.x + side * b.side_x;
    double const by = b.y + side * b.side_y;
    double const dx = bx - ax;
    double const dy = by - ay;
    double const length = std::sqrt(dx * dx + dy * dy);
    if (length < SHORTEST_QUAD) return;
    double const ox = -dy / length * half_width;
    double const oy = dx / length * half_width;
    int const n = static_cast<int>(batch.vertices.size());
    batch.vertices.insert(batch.vertices.end(),
                          {vertex(ax + ox, ay + oy, a.color), vertex(ax - ox, ay - oy, a.color),
                           vertex(bx - ox, by - oy, b.color), vertex(bx + ox, by + oy, b.color)});
    batch.indices.insert(batch.indices.end(), {n, n + 1, n + 2, n, n + 2, n + 3});
}

MarkBatch make_marks(std::vector<MarkPoint> const& points, double half_width) {
    MarkBatch batch;
    batch.vertices.reserve(points.size() * 2 * 4); // two wheels, a quad each
    batch.indices.reserve(points.size() * 2 * 6);
    for (double const side : {-1.0, 1.0}) {
        for (std::size_t i = 1; i < points.size(); ++i) {
            MarkPoint const& a = points[i - 1];
            MarkPoint const& b = points[i];
            bool const shows = (a.outside & b.outside) == 0;
            if (b.joined && shows) add_quad(batch, a, b, side, half_width);
        }
    }
    return batch;
}

} // namespace

void update_skid_trail(PlayerView& view, CarState const& car, unsigned now) {
    expire(view.skid_points, now);
    if (!car.skidding) {
        view.skid_active = false;
        return;
    }
    if (!view.skid_active) begin_trail(view, car, now);
    double const dx = car.x - view.skid_last_x;
    double const dy = car.y - view.skid_last_y;
    double const distance = std::sqrt(dx * dx + dy * dy);
    if (distance > STILLNESS) {
        lay_along(view, car, dx, dy, distance, now);
    } else if (now - view.skid_last_ms >= STANDING_MS) {
        append(view, car.x, car.y, car.heading, now);
        view.skid_last_ms = now;
    }
}

void draw_skids(SDL_Renderer* renderer, PlayerView const& view, int left, int top, unsigned now,
                SDL_Rect const& clip) {
    if (view.skid_points.empty()) return;
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    SDL_RenderSetClipRect(renderer, &clip);

    double const magnified = zoom_factor() * CAR_MAGNIFIER;
    double const half_width = std::max(THINNEST_HALF_WIDTH, magnified * MARK_WIDTH * 0.5);
    MarkBatch const batch =
        make_marks(prepare_points(view.skid_points,
                                  {clip, left, top, now, WHEEL_OFFSET * magnified, half_width}),
                   half_width);
    if (!batch.vertices.empty()) {
        SDL_RenderGeometry(renderer, nullptr, batch.vertices.data(),
                           static_cast<int>(batch.vertices.size()), batch.indices.data(),
                           static_cast<int>(batch.indices.size()));
    }
    SDL_RenderSetClipRect(renderer, nullptr);
}
