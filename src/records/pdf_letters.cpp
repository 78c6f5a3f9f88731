#include "records/pdf_letters.h"

#include "base/utf8.h"
#include "records/deflated.h"
#include "records/file_text.h"
#include "records/printed.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>

namespace {

// Letters from here on the standard fonts lack; where signs begin they have some of them again.
constexpr std::uint32_t FIRST_LACKING = 0x100;
constexpr std::uint32_t FIRST_SIGN = 0x2000;
constexpr std::size_t MOST_IN_A_BLOCK = 100; // entries of a map from codes, as its format has it

// Empty for bytes that are no UTF-8.
std::vector<std::uint32_t> code_points(std::string_view text) {
    std::vector<std::uint32_t> codes;
    while (!text.empty()) {
        std::uint32_t code = 0;
        text.remove_prefix(first_code_point(text, code));
        if (code == 0) return {};
        codes.push_back(code);
    }
    return codes;
}

std::string packed_stream(std::string const& more, std::string const& content) {
    std::string const packed = deflated(content).value_or("");
    return "<< /Length " + std::to_string(packed.size()) + " /Filter /FlateDecode" + more +
           " >>\nstream\n" + packed + "\nendstream";
}

constexpr char const* CODE_MAP_BEGIN =
    "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
    "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
    "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
    "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
constexpr char const* CODE_MAP_END =
    "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";

} // namespace

PdfLetters::PdfLetters(std::string const& face_file, std::vector<std::string> const& texts)
    : face_(read_file_text(face_file).value_or("")) {
    for (std::string const& text : texts) {
        if (!wanted_for(text)) continue;
        for (std::uint32_t const code : code_points(text)) {
            shown_.try_emplace(face_.glyph_of(code), code);
        }
    }
}

bool PdfLetters::wanted_for(std::string const& text) const {
    std::vector<std::uint32_t> const codes = code_points(text);
    return std::any_of(codes.begin(), codes.end(), [this](std::uint32_t code) {
        return code >= FIRST_LACKING && code < FIRST_SIGN && face_.glyph_of(code) != 0;
    });
}

std::string PdfLetters::operand(std::string const& text) const {
    std::string glyphs = "<";
    for (std::uint32_t const code : code_points(text)) {
        glyphs += printed("%04X", face_.glyph_of(code));
    }
    return glyphs + ">";
}

int PdfLetters::width(std::string const& text) const {
    int sum = 0;
    for (std::uint32_t const code : code_points(text)) sum += face_.advance(face_.glyph_of(code));
    return sum;
}

std::string PdfLetters::widths() const {
    std::string list;
    for (auto const& [glyph, code] : shown_) {
        list += printed("%u [%d] ", glyph, face_.advance(glyph));
    }
    return list;
}

// From glyphs back to letters, for readers that search or copy text.
std::string PdfLetters::code_map() const {
    std::string map = CODE_MAP_BEGIN;
    std::size_t left = shown_.size();
    std::size_t in_block = 0;
    for (auto const& [glyph, code] : shown_) {
        if (in_block == 0) {
            map += std::to_string(std::min(left, MOST_IN_A_BLOCK)) + " beginbfchar\n";
        }
        map += printed("<%04X> <%04X>\n", glyph, code & 0xffffU);
        in_block = (in_block + 1) % MOST_IN_A_BLOCK;
        --left;
        if (in_block == 0 || left == 0) map += "endbfchar\n";
    }
    return map + CODE_MAP_END;
}

std::array<std::string, 5> PdfLetters::objects(int at) const {
    constexpr char const* NAME = "BRINDL+Letters"; // six letters and "+": a part of a face
    std::set<unsigned> glyphs;
    for (auto const& [glyph, code] : shown_) glyphs.insert(glyph);
    std::string const file = face_.subset(glyphs);
    auto const box = face_.box();
    return {
        printed("<< /Type /Font /Subtype /Type0 /BaseFont /%s /Encoding /Identity-H "
                "/DescendantFonts [%d 0 R] /ToUnicode %d 0 R >>",
                NAME, at + 1, at + 4),
        printed("<< /Type /Font /Subtype /CIDFontType2 /BaseFont /%s /CIDSystemInfo << /Registry "
                "(Adobe) /Ordering (Identity) /Supplement 0 >> /FontDescriptor %d 0 R /CIDToGIDMap "
                "/Identity /DW 600 /W [ %s] >>",
                NAME, at + 2, widths().c_str()),
        printed("<< /Type /FontDescriptor /FontName /%s /Flags 4 /FontBBox [%d %d %d %d] "
                "/ItalicAngle 0 /Ascent %d /Descent %d /CapHeight %d /StemV 140 /FontFile2 %d 0 R "
                ">>",
                NAME, box[0], box[1], box[2], box[3], face_.ascent(), face_.descent(),
                face_.ascent(), at + 3),
        packed_stream(" /Length1 " + std::to_string(file.size()), file),
        packed_stream("", code_map()),
    };
}
