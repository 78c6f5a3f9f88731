#pragma once

// Text in letters that the PDF's two standard fonts lack, Greek or Cyrillic: shown in a face that
// goes into the document, with no more glyphs than it shows.

#include "records/truetype.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

class PdfLetters {
public:
    // Those of `texts`, which are all that will be shown, in the face of that file. Where there is
    // no such file no text is shown in it.
    PdfLetters(std::string const& face_file, std::vector<std::string> const& texts);

    // Whether any of the texts is shown in this face.
    [[nodiscard]] bool wanted() const { return !shown_.empty(); }
    // Whether this is UTF-8 with letters that the standard fonts lack and this face has.
    [[nodiscard]] bool wanted_for(std::string const& text) const;
    // The text as the operand of the command that shows it.
    [[nodiscard]] std::string operand(std::string const& text) const;
    // In thousandths of the font's size.
    [[nodiscard]] int width(std::string const& text) const;

    // Bodies of the document's objects, the first of which is the font and has the number `at`.
    [[nodiscard]] std::array<std::string, 5> objects(int at) const;

private:
    [[nodiscard]] std::string widths() const;
    [[nodiscard]] std::string code_map() const;

    TrueType face_;
    std::map<unsigned, std::uint32_t> shown_; // glyphs and what they stand for
};
