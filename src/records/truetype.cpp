#include "records/truetype.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t FACE_HEAD_SIZE = 12;
constexpr std::size_t TABLE_ENTRY_SIZE = 16;
constexpr std::size_t LONG_OFFSETS_FLAG = 50; // in the table "head"
// Also of those that map characters.
constexpr unsigned MOST_FACE_TABLES = 64;

// What a face without names and without a map from characters is made of, in the order of a file.
constexpr std::array<std::string_view, 9> KEPT_TABLES{"cvt ", "fpgm", "glyf", "head", "hhea",
                                                      "hmtx", "loca", "maxp", "prep"};

std::string big_endian(std::size_t value, int bytes) {
    std::string text;
    for (int i = bytes - 1; i >= 0; --i) {
        text +=
            static_cast<char>(static_cast<unsigned char>(value >> (8U * static_cast<unsigned>(i))));
    }
    return text;
}

void pad_to_four(std::string& bytes) {
    bytes.resize((bytes.size() + 3) / 4 * 4);
}

std::size_t checksum(std::string const& table) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < table.size(); ++i) {
        auto const byte = static_cast<unsigned char>(table[i]);
        sum += std::uint32_t{byte} << (8U * (3U - static_cast<unsigned>(i % 4)));
    }
    return sum;
}

std::string face_file(std::map<std::string_view, std::string> const& tables) {
    std::size_t power = 1;
    std::size_t log = 0;
    while (power * 2 <= tables.size()) {
        power *= 2;
        ++log;
    }
    std::string file = big_endian(0x00010000, 4) + big_endian(tables.size(), 2) +
                       big_endian(power * TABLE_ENTRY_SIZE, 2) + big_endian(log, 2) +
                       big_endian((tables.size() - power) * TABLE_ENTRY_SIZE, 2);
    std::string content;
    std::size_t const begin = FACE_HEAD_SIZE + TABLE_ENTRY_SIZE * tables.size();
    for (auto const& [tag, bytes] : tables) {
        file += std::string(tag) + big_endian(checksum(bytes), 4) +
                big_endian(begin + content.size(), 4) + big_endian(bytes.size(), 4);
        content += bytes;
        pad_to_four(content);
    }
    return file + content;
}

} // namespace

unsigned TrueType::u16(std::size_t at) const {
    if (at + 2 > bytes_.size()) return 0;
    return static_cast<unsigned>(static_cast<unsigned char>(bytes_[at])) << 8U |
           static_cast<unsigned char>(bytes_[at + 1]);
}

int TrueType::s16(std::size_t at) const {
    return static_cast<std::int16_t>(u16(at));
}

std::size_t TrueType::u32(std::size_t at) const {
    return std::size_t{u16(at)} << 16U | u16(at + 2);
}

TrueType::Table TrueType::table(std::string_view tag) const {
    unsigned const count = std::min(u16(4), MOST_FACE_TABLES);
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t const entry = FACE_HEAD_SIZE + i * TABLE_ENTRY_SIZE;
        if (entry + TABLE_ENTRY_SIZE > bytes_.size()) break;
        if (std::string_view(bytes_).substr(entry, 4) != tag) continue;
        std::size_t const at = std::min(u32(entry + 8), bytes_.size());
        return {at, std::min(u32(entry + 12), bytes_.size() - at)};
    }
    return {bytes_.size(), 0};
}

std::string_view TrueType::bytes_of(std::string_view tag) const {
    Table const found = table(tag);
    return std::string_view(bytes_).substr(found.at, found.length);
}

// Where the map from Unicode's first 65,536 code points begins; 0 for none.
std::size_t TrueType::find_unicode_table() const {
    constexpr unsigned BY_SEGMENTS = 4;
    std::size_t const map = table("cmap").at;
    unsigned const count = std::min(u16(map + 2), MOST_FACE_TABLES);
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t const entry = map + 4 + 8 * i;
        std::size_t const at = map + u32(entry + 4);
        bool const unicode = u16(entry) == 0 || (u16(entry) == 3 && u16(entry + 2) == 1);
        if (unicode && u16(at) == BY_SEGMENTS) return at;
    }
    return 0;
}

unsigned TrueType::glyph_of(std::uint32_t code) const {
    std::size_t const map = unicode_table_;
    if (map == 0 || code > 0xffffU) return 0;
    std::size_t const doubled = std::size_t{u16(map + 6) / 2} * 2; // twice the number of segments
    std::size_t const ends = map + 14;
    std::size_t const starts = ends + doubled + 2;
    for (std::size_t i = 0; i < doubled && ends + i < bytes_.size(); i += 2) {
        if (u16(ends + i) < code) continue;
        unsigned const start = u16(starts + i);
        if (start > code) return 0;
        unsigned const delta = u16(starts + doubled + i);
        std::size_t const range_at = starts + 2 * doubled + i;
        unsigned const range = u16(range_at);
        if (range == 0) return (code + delta) & 0xffffU;
        unsigned const glyph = u16(range_at + range + 2 * (std::size_t{code} - start));
        return glyph == 0 ? 0 : (glyph + delta) & 0xffffU;
    }
    return 0;
}

int TrueType::thousandths(int units) const {
    auto const em = static_cast<int>(std::max(u16(table("head").at + 18), 1U));
    return units * 1000 / em;
}

int TrueType::advance(unsigned glyph) const {
    unsigned const widths = std::max(u16(table("hhea").at + 34), 1U);
    return thousandths(
        static_cast<int>(u16(table("hmtx").at + 4 * std::size_t{std::min(glyph, widths - 1)})));
}

std::array<int, 4> TrueType::box() const {
    std::array<int, 4> edges{};
    std::size_t const head = table("head").at;
    for (std::size_t i = 0; i < edges.size(); ++i) edges[i] = thousandths(s16(head + 36 + 2 * i));
    return edges;
}

int TrueType::ascent() const {
    return thousandths(s16(table("hhea").at + 4));
}

int TrueType::descent() const {
    return thousandths(s16(table("hhea").at + 6));
}

std::size_t TrueType::outline_at(unsigned glyph) const {
    std::size_t const offsets = table("loca").at;
    bool const is_long = u16(table("head").at + LONG_OFFSETS_FLAG) != 0;
    return is_long ? u32(offsets + 4 * std::size_t{glyph})
                   : 2 * std::size_t{u16(offsets + 2 * std::size_t{glyph})};
}

std::string_view TrueType::outline(unsigned glyph) const {
    std::string_view const all = bytes_of("glyf");
    std::size_t const begin = std::min(outline_at(glyph), all.size());
    std::size_t const end = std::min(outline_at(glyph + 1), all.size());
    return all.substr(begin, end > begin ? end - begin : 0);
}

// The glyphs that this one is put together from, if it is.
void TrueType::add_parts(unsigned glyph, std::set<unsigned>& parts) const {
    constexpr unsigned WORDS = 0x1;
    constexpr unsigned SCALE = 0x8;
    constexpr unsigned MORE = 0x20;
    constexpr unsigned TWO_SCALES = 0x40;
    constexpr unsigned MATRIX = 0x80;
    std::string_view const shape = outline(glyph);
    auto at = static_cast<std::size_t>(shape.data() - bytes_.data());
    std::size_t const end = at + shape.size();
    if (shape.size() < 2 || s16(at) >= 0) return;
    at += 10; // behind the number of contours, which is negative here, and the box
    unsigned flags = MORE;
    while ((flags & MORE) != 0 && at + 4 <= end) {
        flags = u16(at);
        parts.insert(u16(at + 2));
        at += 4 + ((flags & WORDS) != 0 ? 4 : 2);
        at += (flags & SCALE) != 0        ? 2
              : (flags & TWO_SCALES) != 0 ? 4
              : (flags & MATRIX) != 0     ? 8
                                          : 0;
    }
}

std::string TrueType::subset(std::set<unsigned> glyphs) const {
    glyphs.insert(0); // what stands for a glyph that is lacking
    for (std::vector<unsigned> fresh(glyphs.begin(), glyphs.end()); !fresh.empty();) {
        std::set<unsigned> parts;
        for (unsigned const glyph : fresh) add_parts(glyph, parts);
        fresh.clear();
        for (unsigned const part : parts) {
            if (glyphs.insert(part).second) fresh.push_back(part);
        }
    }
    std::map<std::string_view, std::string> tables;
    for (std::string_view const tag : KEPT_TABLES) tables[tag] = std::string(bytes_of(tag));
    std::string shapes;
    std::string offsets;
    unsigned const count = u16(table("maxp").at + 4);
    for (unsigned glyph = 0; glyph < count; ++glyph) {
        offsets += big_endian(shapes.size(), 4);
        if (!glyphs.contains(glyph)) continue;
        shapes += outline(glyph);
        pad_to_four(shapes);
    }
    tables["loca"] = offsets + big_endian(shapes.size(), 4);
    tables["glyf"] = shapes;
    std::string& head = tables["head"];
    if (head.size() > LONG_OFFSETS_FLAG + 1) head.replace(LONG_OFFSETS_FLAG, 2, big_endian(1, 2));
    return face_file(tables);
}
