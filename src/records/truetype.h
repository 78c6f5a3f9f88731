#pragma once

// A TrueType face, as far as a document needs one that shows text in it.

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

class TrueType {
public:
    // `bytes` is a font file; of any other bytes nothing comes but empty glyphs.
    explicit TrueType(std::string bytes)
        : bytes_(std::move(bytes)), unicode_table_(find_unicode_table()) {}

    // The glyph of a code point, 0 for one that the face lacks. Code points above 0xffff are
    // lacking.
    [[nodiscard]] unsigned glyph_of(std::uint32_t code) const;
    // All measures are thousandths of the font's size.
    [[nodiscard]] int advance(unsigned glyph) const;
    [[nodiscard]] std::array<int, 4> box() const; // around any glyph: left, bottom, right, top
    [[nodiscard]] int ascent() const;
    [[nodiscard]] int descent() const; // below 0

    // The file of a face in which these glyphs, with all that they are put together from, have the
    // numbers that they have here; all others are empty.
    [[nodiscard]] std::string subset(std::set<unsigned> glyphs) const;

private:
    struct Table {
        std::size_t at = 0;
        std::size_t length = 0;
    };
    // Numbers of the file; 0 beyond its end.
    [[nodiscard]] unsigned u16(std::size_t at) const;
    [[nodiscard]] int s16(std::size_t at) const;
    [[nodiscard]] std::size_t u32(std::size_t at) const;
    [[nodiscard]] Table table(std::string_view tag) const;
    [[nodiscard]] std::string_view bytes_of(std::string_view tag) const;
    [[nodiscard]] std::size_t find_unicode_table() const;
    [[nodiscard]] int thousandths(int units) const;
    [[nodiscard]] std::size_t outline_at(unsigned glyph) const;
    [[nodiscard]] std::string_view outline(unsigned glyph) const;
    void add_parts(unsigned glyph, std::set<unsigned>& parts) const;

    std::string bytes_;
    std::size_t unicode_table_; // 0 for none
};
