#pragma once

// A writer of PDF 1.4 files with A4 pages, text in two fonts, with a third for letters that these
// lack, and JPEG pictures: a list of object bodies, framed with numbers, a cross-reference table
// and a trailer when it is written. Positions are in points from the page's lower left corner.

#include "records/pdf_letters.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

constexpr double PDF_PAGE_WIDTH = 595.0;
constexpr double PDF_PAGE_HEIGHT = 842.0;

// Puts a backslash in front of parentheses and backslashes. All other bytes stand, and are read in
// WinAnsi encoding.
std::string esc_pdf_text(std::string const& s);

class Pdf {
public:
    // Reserves the catalog (1) and the page tree (2) and adds the fonts (3 and 4).
    Pdf();

    // The body of object number i + 1; may hold binary data. Numbers never change.
    std::vector<std::string> objs;

    // Both return the number of the new object. Pages appear in the order in which they are added,
    // and show those images that their commands place.
    int add_image(std::span<std::uint8_t const> jpeg, int width, int height);
    int add_page(std::string const& commands, std::vector<int> const& images);

    // Those of `texts` that hold letters which the two fonts lack will be shown in the face of this
    // file. To be called once, before the first page.
    void add_letters(std::string const& face_file, std::vector<std::string> const& texts);
    // The width in points of a text that is shown in that face; nothing for any other, as there are
    // no measures of the two fonts here.
    [[nodiscard]] std::optional<double> width_in_letters(std::string const& text,
                                                         double size) const;

    // The commands of a page.
    [[nodiscard]] std::string text_cmd(double x, double y, std::string const& text, double size,
                                       bool bold) const;
    [[nodiscard]] std::string frame_cmd(double x, double y, double w, double h) const;
    [[nodiscard]] std::string image_cmd(double x, double y, double w, double h, int image) const;

    // Fills the catalog and the page tree and writes the file. False if it cannot be opened; a
    // disk that fills up on the way is not noticed.
    bool write(std::string const& path);

private:
    int add(std::string body);
    void fill_tree();

    std::vector<int> pages_; // object numbers
    std::optional<PdfLetters> letters_;
    int letters_font_ = 0; // object number
};
