#include "world/math.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <random>

namespace {

using Wide = long double;

// How many units in the last place of a double `got` lies off the true value.
double units_off(double got, Wide truth) {
    int exponent = 0;
    std::frexp(std::max(std::abs(truth), Wide(std::numeric_limits<double>::min())), &exponent);
    return static_cast<double>(std::abs(Wide(got) - truth) / std::ldexp(Wide(1.0), exponent - 53));
}

struct WorldMath : testing::Test {
    void SetUp() override {
        if (std::numeric_limits<Wide>::digits < 64) GTEST_SKIP() << "nothing finer to compare with";
    }
    double within(double least, double greatest) {
        return std::uniform_real_distribution<double>(least, greatest)(random);
    }
    std::mt19937_64 random;
};

TEST_F(WorldMath, SineAndCosineAreWithinOneUnit) {
    auto const check = [](double angle) {
        auto const [sine, cosine] = sine_cosine(angle);
        ASSERT_LT(units_off(sine, std::sin(Wide(angle))), 1.0) << std::hexfloat << angle;
        ASSERT_LT(units_off(cosine, std::cos(Wide(angle))), 1.0) << std::hexfloat << angle;
    };
    for (double const range : {1e-9, 0.8, std::numbers::pi, 25.0, 6283.0}) {
        for (int i = 0; i < 50000; ++i) check(within(-range, range));
    }
    for (int quarter = -4000; quarter <= 4000; ++quarter) { // where hardly anything is left
        double const angle = quarter * std::numbers::pi / 2.0;
        for (double const at : {angle, std::nextafter(angle, 9e9), std::nextafter(angle, -9e9)}) {
            check(at);
        }
    }
}

TEST_F(WorldMath, ArcTangentIsWithinOneUnitAndKnowsTheSignsOfZero) {
    auto const check = [](double y, double x) {
        ASSERT_LT(units_off(arc_tangent(y, x), std::atan2(Wide(y), Wide(x))), 1.0)
            << std::hexfloat << y << ' ' << x;
    };
    for (double const power : {0.0, 3.0, 30.0, 140.0, 305.0}) {
        for (int i = 0; i < 50000; ++i) {
            double const size = std::pow(10.0, -within(0.0, power));
            double const other = std::pow(10.0, -within(0.0, std::min(power, 150.0)));
            check(within(-size, size), within(-size, size));
            check(within(-size, size) * other, within(-size, size));
        }
    }
    for (double const border :
         {0.0, 0.5, std::numbers::sqrt2 - 1.0, 1.0, 1.0 + std::numbers::sqrt2}) {
        for (int i = 0; i < 20000; ++i) {
            double const x = within(-1.0, 1.0);
            check(x * border * within(1.0 - 1e-13, 1.0 + 1e-13), x);
        }
    }
    for (double const y : {0.0, -0.0, 2.0, -2.0}) {
        for (double const x : {0.0, -0.0, 2.0, -2.0}) {
            EXPECT_EQ(arc_tangent(y, x), std::atan2(y, x));
            EXPECT_EQ(std::signbit(arc_tangent(y, x)), std::signbit(y));
        }
    }
}

TEST_F(WorldMath, ExponentialIsWithinOneUnitUpToBothEnds) {
    for (double const range : {1e-6, 1.0, 40.0, 709.7}) {
        for (int i = 0; i < 50000; ++i) {
            double const x = within(-range - (range > 700.0 ? 35.0 : 0.0), range);
            ASSERT_LT(units_off(exponential(x), std::exp(Wide(x))), 1.0) << std::hexfloat << x;
        }
    }
    EXPECT_EQ(exponential(0.0), 1.0);
    EXPECT_EQ(exponential(1e9), std::numeric_limits<double>::infinity());
    EXPECT_EQ(exponential(709.79), std::numeric_limits<double>::infinity());
    EXPECT_EQ(exponential(-1e9), 0.0);
}

TEST(WorldMathEverywhere, HasTheSameBitsInEveryBuild) {
    std::uint64_t hash = 0;
    for (int i = 1; i < 20000; ++i) {
        double const x = i * 0.000314;
        auto const [sine, cosine] = sine_cosine(x);
        for (double const y : {sine, cosine, arc_tangent(x, 1.0 - x), exponential(-x)}) {
            hash = (hash ^ std::bit_cast<std::uint64_t>(y)) * 1099511628211ULL;
        }
    }
    EXPECT_EQ(hash, 3060205290465825369ULL);
}

} // namespace
