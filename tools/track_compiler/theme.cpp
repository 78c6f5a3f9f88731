#include "track_compiler/theme.h"

#include "track_compiler/data_file.h"
#include "track_compiler/scenery_words.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

namespace {

struct ColourField {
    std::string_view word;
    Colour Theme::*member;
};
constexpr std::array<ColourField, 29> COLOURS{{
    {"road", &Theme::road},
    {"road_worn", &Theme::road_worn},
    {"road_edge", &Theme::road_edge},
    {"line", &Theme::line},
    {"kerb_red", &Theme::kerb_red},
    {"kerb_white", &Theme::kerb_white},
    {"rim_light", &Theme::rim_light},
    {"rim_dark", &Theme::rim_dark},
    {"ground_light", &Theme::ground_light},
    {"ground_dark", &Theme::ground_dark},
    {"verge", &Theme::verge},
    {"water_shallow", &Theme::water_shallow},
    {"water_deep", &Theme::water_deep},
    {"shore", &Theme::shore},
    {"sand", &Theme::sand},
    {"gravel", &Theme::gravel},
    {"field", &Theme::field},
    {"plaza", &Theme::plaza},
    {"ice", &Theme::ice},
    {"woods", &Theme::woods},
    {"rocks", &Theme::rocks},
    {"leaf_light", &Theme::leaf_light},
    {"leaf_dark", &Theme::leaf_dark},
    {"stone", &Theme::stone},
    {"roof", &Theme::roof},
    {"wall", &Theme::wall},
    {"lamp", &Theme::lamp},
    {"ink", &Theme::ink},
    {"bloom", &Theme::bloom},
}};

struct NumberField {
    std::string_view word;
    double Theme::*member;
    double low;
    double high;
};
constexpr std::array<NumberField, 20> NUMBERS{{
    {"rim_width", &Theme::rim_width, 2.0, 12.0},
    {"grain", &Theme::grain, 0.0, 1.0},
    {"road_grain", &Theme::road_grain, 0.0, 1.0},
    {"shadow", &Theme::shadow, 0.0, 1.0},
    {"shadow_angle", &Theme::shadow_angle, -360.0, 360.0},
    {"shadow_length", &Theme::shadow_length, 0.0, 4.0},
    {"dark", &Theme::dark, 0.0, 1.0},
    {"paper", &Theme::paper, 0.0, 1.0},
    {"edge_line", &Theme::edge_line, 0.0, 1.0},
    {"rim_block", &Theme::rim_block, 0.0, 400.0},
    {"rim_rough", &Theme::rim_rough, 0.0, 1.0},
    {"mow", &Theme::mow, 0.0, 1.0},
    {"ripples", &Theme::ripples, 0.0, 1.0},
    {"cracks", &Theme::cracks, 0.0, 1.0},
    {"tufts", &Theme::tufts, 0.0, 1.0},
    {"snow", &Theme::snow, 0.0, 1.0},
    {"flowers", &Theme::flowers, 0.0, 1.0},
    {"groves", &Theme::groves, 0.0, 1.0},
    {"repairs", &Theme::repairs, 0.0, 1.0},
    {"quay", &Theme::quay, 0.0, 1.0},
}};

// Six hexadecimal digits, RRGGBB.
std::optional<Colour> parse_colour(std::string_view word) {
    std::uint32_t value = 0;
    char const* const end = word.data() + word.size();
    auto const [stop, error] = std::from_chars(word.data(), end, value, 16);
    if (word.size() != 6 || error != std::errc() || stop != end) return std::nullopt;
    auto const channel = [&](unsigned shift) {
        return static_cast<float>((value >> shift) & 0xFFU) / 255.0F;
    };
    return Colour{channel(16), channel(8), channel(0)};
}

// Reads a kind of round thing and numbers behind the statement's word. What is wrong with them, or
// an empty string.
std::string read_rule(DataLine const& data, SceneryKind& kind, std::span<double> numbers) {
    std::string const word(data.words[0]);
    if (data.words.size() != numbers.size() + 2) {
        return word + ": a kind and " + std::to_string(numbers.size()) + " numbers are needed";
    }
    KindWord const* const found = find_kind(data.words[1]);
    if (found == nullptr || !found->round) {
        return word + ": " + in_quotes(data.words[1]) + " is no kind of round thing";
    }
    kind = found->kind;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        std::optional<double> const value = parse_number(data.words[i + 2]);
        if (!value || *value < 0.0 || *value > 4000.0) {
            return word + ": " + in_quotes(data.words[i + 2]) + " is no number in its range";
        }
        numbers[i] = *value;
    }
    return {};
}

// scatter KIND DENSITY MIN MAX NEAR FAR
std::string read_scatter(DataLine const& data, Theme& theme) {
    SceneryKind kind{};
    std::array<double, 5> numbers{};
    std::string cause = read_rule(data, kind, numbers);
    if (!cause.empty()) return cause;
    auto const [density, low, high, near, far] = numbers;
    if (low < 2.0 || high < low || far < near) return "scatter: the sizes or distances are wrong";
    theme.scatters.push_back({kind, density, low, high, near, far});
    return {};
}

// row KIND SPACING SIZE AWAY
std::string read_row(DataLine const& data, Theme& theme) {
    SceneryKind kind{};
    std::array<double, 3> numbers{};
    std::string cause = read_rule(data, kind, numbers);
    if (!cause.empty()) return cause;
    auto const [spacing, size, away] = numbers;
    if (size < 2.0 || spacing < size) return "row: the things do not fit";
    theme.rows.push_back({kind, spacing, size, away});
    return {};
}

// Which of `fields` has that word; their number if none has.
template <typename Fields>
std::size_t find_field(Fields const& fields, std::string_view word) {
    auto const found = std::find_if(fields.begin(), fields.end(),
                                    [word](auto const& field) { return field.word == word; });
    return static_cast<std::size_t>(found - fields.begin());
}

std::string read_colour(DataLine const& data, ColourField const& field, Theme& theme) {
    std::optional<Colour> const colour = parse_colour(data.words[1]);
    if (!colour) return ": " + in_quotes(data.words[1]) + " is no colour RRGGBB";
    theme.*field.member = *colour;
    return {};
}

std::string read_number(DataLine const& data, NumberField const& field, Theme& theme) {
    std::optional<double> const value = parse_number(data.words[1]);
    if (!value || *value < field.low || *value > field.high) {
        return ": " + in_quotes(data.words[1]) + " is no number in its range";
    }
    theme.*field.member = *value;
    return {};
}

using Given = std::array<bool, COLOURS.size()>;

// What is wrong with the line, or an empty string.
std::string read_field(DataLine const& data, Theme& theme, Given& given) {
    std::string_view const word = data.words[0];
    if (word == "scatter") return read_scatter(data, theme);
    if (word == "row") return read_row(data, theme);
    std::size_t const colour = find_field(COLOURS, word);
    std::size_t const number = find_field(NUMBERS, word);
    if (colour < COLOURS.size()) given[colour] = true;
    std::string cause;
    if (data.words.size() != 2) {
        cause = ": one value is needed";
    } else if (colour < COLOURS.size()) {
        cause = read_colour(data, COLOURS[colour], theme);
    } else if (number < NUMBERS.size()) {
        cause = read_number(data, NUMBERS[number], theme);
    } else {
        cause = ": no such field";
    }
    return cause.empty() ? cause : std::string(word) + cause;
}

} // namespace

std::optional<Theme> parse_theme(std::string_view text, Faults& faults) {
    Theme theme;
    Given given{};
    DataReader reader(text);
    DataLine data{.number = 1, .words = {}};
    while (reader.next(data, faults)) {
        std::string cause = read_field(data, theme, given);
        if (!cause.empty()) faults.push_back({data.number, std::move(cause)});
    }
    for (std::size_t i = 0; i < COLOURS.size(); ++i) {
        if (given[i]) continue;
        faults.push_back(
            {data.number, "the colour " + std::string(COLOURS[i].word) + " is missing"});
    }
    if (!faults.empty()) return std::nullopt;
    return theme;
}
