#include "world/math.h"

#include <array>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#if defined(__FAST_MATH__)
#error "the race needs every addition in the order in which it is written"
#endif
static_assert(FLT_EVAL_METHOD == 0, "the race needs doubles that are rounded at each operation");
static_assert(std::numeric_limits<double>::is_iec559);

// The methods are the field's own: reduction by a constant in parts whose products are exact (Cody
// and Waite), polynomials by Remez's exchange, worked out to 60 digits and rounded, and pairs of
// doubles for what one cannot hold (Dekker). The polynomials stand in Estrin's order: their halves
// do not wait for each other.

namespace {

// Added to a double of less than 2^50, it rounds it to a whole number, which then stands in the
// lowest bits of the sum.
constexpr double ROUNDER = 0x1.8p52;

std::uint64_t bits_of(double v) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &v, sizeof bits);
    return bits;
}

// The unevaluated sum of two doubles.
struct Pair {
    double high = 0.0;
    double low = 0.0;
};

// The exact sum; `a` is 0 or no smaller than `b`.
Pair exact_sum(double a, double b) {
    double const sum = a + b;
    return {sum, b - (sum - a)};
}

// `v` as a sum of two numbers of at most 26 bits, whose products are exact.
Pair halves(double v) {
    double const scaled = v * 0x1.0000002p27;
    double const high = scaled - (scaled - v);
    return {high, v - high};
}

Pair exact_product(double a, double b) {
    Pair const p = halves(a);
    Pair const q = halves(b);
    double const product = a * b;
    double const rest = ((p.high * q.high - product) + p.high * q.low + p.low * q.high);
    return {product, rest + p.low * q.low};
}

// What is left of an angle when the nearest multiple of a quarter turn is taken off.
struct Reduced {
    Pair rest; // within an eighth of a turn
    std::uint64_t quarters = 0;
};

// pi / 2 in three parts. The first two have 33 bits, so that up to 2^20 of them are exact.
Reduced reduce(double angle) {
    constexpr double QUARTERS_PER_RADIAN = 0x1.45f306dc9c883p-1;
    constexpr double QUARTER = 0x1.921fb54400000p+0;
    constexpr double QUARTER_MIDDLE = 0x1.0b4611a600000p-34;
    constexpr double QUARTER_END = 0x1.3198a2e037073p-69;
    double const sum = angle * QUARTERS_PER_RADIAN + ROUNDER;
    double const quarters = sum - ROUNDER;
    Pair const rest = exact_sum(angle - quarters * QUARTER, -(quarters * QUARTER_MIDDLE));
    return {{rest.high, rest.low - quarters * QUARTER_END}, bits_of(sum)};
}

// Both for an angle within an eighth of a turn; `z` is the square of its high part.
double sine_near_zero(Pair angle, double z) {
    double const low = 0x1.5555555555549p-3 - z * 0x1.111111110f87ap-7;
    double const middle = 0x1.a01a019c1195ap-13 - z * 0x1.71de3577b11efp-19;
    double const high = 0x1.ae5e663544499p-26 - z * 0x1.5d92ff4693f0ap-33;
    double const z2 = z * z;
    double const series = low + z2 * (middle + z2 * high);
    return angle.high - (angle.high * z * series - angle.low * (1.0 - 0.5 * z));
}

double cosine_near_zero(Pair angle, double z) {
    double const low = 0x1.555555555554cp-5 + z * -0x1.6c16c16c1517ep-10;
    double const middle = 0x1.a01a019cb1c03p-16 + z * -0x1.27e4f809f20ddp-22;
    double const high = 0x1.1ee9ebe9e1816p-29 + z * -0x1.8fae9cb38b295p-37;
    double const z2 = z * z;
    double const series = low + z2 * (middle + z2 * high);
    Pair const parabola = exact_sum(1.0, -0.5 * z);
    return parabola.high + (parabola.low + (z2 * series - angle.high * angle.low));
}

// The arc tangent less its argument, for a tangent of at most sqrt(2) - 1.
double arc_tangent_bend(double t) {
    double const z = t * t;
    double const z2 = z * z;
    double const z4 = z2 * z2;
    double const a = (-0x1.555555555553dp-2 + z * 0x1.99999999958ddp-3) +
                     z2 * (-0x1.24924922b0c2dp-3 + z * 0x1.c71c70e77c00dp-4);
    double const b = (-0x1.745cf9069f174p-4 + z * 0x1.3b111c11ab3f0p-4) +
                     z2 * (-0x1.10ebd9ce35c88p-4 + z * 0x1.df112e2753caep-5);
    double const c =
        (-0x1.9cdb1c8abb778p-5 + z * 0x1.37ea887f11aa5p-5) + z2 * -0x1.25972da82e0b7p-6;
    return t * z * (a + z4 * (b + z4 * c));
}

// 0 to 4 eighths of a turn.
constexpr std::array<Pair, 5> EIGHTHS = {{{0.0, 0.0},
                                          {0x1.921fb54442d18p-1, 0x1.1a62633145c07p-55},
                                          {0x1.921fb54442d18p+0, 0x1.1a62633145c07p-54},
                                          {0x1.2d97c7f3321d2p+1, 0x1.a79394c9e8a0ap-54},
                                          {0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53}}};

// `top` / `bottom`, where an inexact first quotient is mended by what it leaves over.
Pair quotient(Pair top, Pair bottom) {
    double const inverse = 1.0 / bottom.high;
    double const first = top.high * inverse;
    Pair const product = exact_product(first, bottom.high);
    double const left = (top.high - product.high) - product.low + (top.low - first * bottom.low);
    return {first, left * inverse};
}

// Two to the power of `n`, -1022..1023.
double power_of_two(std::int64_t n) {
    std::uint64_t const bits = static_cast<std::uint64_t>(n + 1023) << 52U;
    double power = 0.0;
    std::memcpy(&power, &bits, sizeof power);
    return power;
}

} // namespace

SineCosine sine_cosine(double angle) {
    Reduced const reduced = reduce(angle);
    double const z = reduced.rest.high * reduced.rest.high;
    double const sine = sine_near_zero(reduced.rest, z);
    double const cosine = cosine_near_zero(reduced.rest, z);
    bool const swapped = (reduced.quarters & 1U) != 0;
    double const first = swapped ? cosine : sine;
    double const second = swapped ? sine : cosine;
    return {(reduced.quarters & 2U) != 0 ? -first : first,
            ((reduced.quarters + 1) & 2U) != 0 ? -second : second};
}

// With the axes swapped and mirrored, (x, y) comes to lie within an eighth of a turn of +x; seen
// from the diagonal if that is nearer, within a sixteenth of an axis.
double arc_tangent(double y, double x) {
    bool const steep = std::abs(y) > std::abs(x);
    double shorter = steep ? std::abs(x) : std::abs(y);
    double longer = steep ? std::abs(y) : std::abs(x);
    if (!(longer > 0x1p-400 && longer < 0x1p900)) { // parts of it would leave the doubles
        double const scale = longer < 1.0 ? 0x1p600 : 0x1p-200;
        shorter *= scale;
        longer = longer == 0.0 ? 1.0 : longer * scale;
    }
    constexpr double SIXTEENTH = 0x1.a827999fcef32p-2; // its tangent, sqrt(2) - 1
    bool const diagonal = shorter > SIXTEENTH * longer;
    Pair const tangent = diagonal
                             ? quotient(exact_sum(-longer, shorter), exact_sum(longer, shorter))
                             : quotient({shorter, 0.0}, {longer, 0.0});

    std::size_t eighths = diagonal ? 1 : 0;
    if (steep) eighths = 2 - eighths;
    if (std::signbit(x)) eighths = 4 - eighths;
    double const turned = steep != std::signbit(x) ? -1.0 : 1.0;
    Pair const base = EIGHTHS[eighths];
    Pair const sum = exact_sum(base.high, turned * tangent.high);
    double const bend = tangent.low + arc_tangent_bend(tangent.high);
    return std::copysign(sum.high + (sum.low + (base.low + turned * bend)), y);
}

double exponential(double x) {
    if (x > 0x1.62e42fefa39efp+9) return std::numeric_limits<double>::infinity();
    if (x < -746.0) return 0.0;
    double const sum = x * 0x1.71547652b82fep+0 + ROUNDER;
    double const whole = sum - ROUNDER;
    // ln 2 in two parts, the first of 42 bits
    Pair const rest = exact_sum(x - whole * 0x1.62e42fefa3800p-1, -(whole * 0x1.ef35793c76730p-45));
    double const r = rest.high;
    double const r2 = r * r;
    double const r4 = r2 * r2;
    double const a =
        (0.5 + r * 0x1.5555555555557p-3) + r2 * (0x1.5555555555558p-5 + r * 0x1.11111111100dbp-7);
    double const b = (0x1.6c16c16c151fcp-10 + r * 0x1.a01a01abe84bap-13) +
                     r2 * (0x1.a01a01acfacc0p-16 + r * 0x1.71de0230beb99p-19);
    double const c =
        (0x1.27e4cccdeb2f7p-22 + r * 0x1.af4deb0af45a9p-26) + r2 * 0x1.1f8b4c6b3c913p-29;
    Pair const one_and_r = exact_sum(1.0, r);
    double const power =
        one_and_r.high + (one_and_r.low + (rest.low + r2 * (a + r4 * (b + r4 * c))));
    // In two factors: the least results are smaller than any one power of two
    auto const n = static_cast<std::int64_t>(bits_of(sum) - bits_of(ROUNDER));
    return power * power_of_two(n / 2) * power_of_two(n - n / 2);
}
