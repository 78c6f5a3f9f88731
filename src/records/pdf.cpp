#include "records/pdf.h"

#include "platform/files.h"
#include "records/file_handle.h"
#include "records/printed.h"

#include <cstdio>

namespace {

std::string stream_body(std::string const& dictionary, std::string_view content) {
    std::string body = dictionary + "\nstream\n";
    body += content;
    return body + "\nendstream";
}

// Writes and counts, as the cross-reference table wants to know where each object starts.
class CountingFile {
public:
    explicit CountingFile(std::FILE* file) : file_(file) {}
    void put(std::string const& bytes) {
        std::fwrite(bytes.data(), 1, bytes.size(), file_);
        offset_ += static_cast<long>(bytes.size());
    }
    [[nodiscard]] long offset() const { return offset_; }

private:
    std::FILE* file_;
    long offset_ = 0;
};

} // namespace

std::string esc_pdf_text(std::string const& s) {
    std::string escaped;
    for (char const c : s) {
        if (c == '(' || c == ')' || c == '\\') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

Pdf::Pdf() {
    add("");
    add("");
    add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>");
    add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold /Encoding /WinAnsiEncoding >>");
}

int Pdf::add(std::string body) {
    objs.push_back(std::move(body));
    return static_cast<int>(objs.size());
}

int Pdf::add_image(std::span<std::uint8_t const> jpeg, int width, int height) {
    std::string const dictionary =
        printed("<< /Type /XObject /Subtype /Image /Width %d /Height %d /ColorSpace /DeviceRGB "
                "/BitsPerComponent 8 /Filter /DCTDecode /Length ",
                width, height) +
        std::to_string(jpeg.size()) + " >>";
    return add(stream_body(dictionary, {reinterpret_cast<char const*>(jpeg.data()), jpeg.size()}));
}

void Pdf::add_letters(std::string const& face_file, std::vector<std::string> const& texts) {
    PdfLetters letters(face_file, texts);
    if (!letters.wanted()) return;
    letters_font_ = static_cast<int>(objs.size()) + 1;
    for (std::string& body : letters.objects(letters_font_)) add(std::move(body));
    letters_ = std::move(letters);
}

std::optional<double> Pdf::width_in_letters(std::string const& text, double size) const {
    if (!letters_ || !letters_->wanted_for(text)) return std::nullopt;
    return letters_->width(text) * size / 1000.0;
}

int Pdf::add_page(std::string const& commands, std::vector<int> const& images) {
    int const contents =
        add(stream_body("<< /Length " + std::to_string(commands.size()) + " >>", commands));
    std::string shown;
    for (int const image : images) shown += printed("/Im%d %d 0 R ", image, image);
    std::string const third = letters_ ? printed("/F3 %d 0 R ", letters_font_) : "";
    pages_.push_back(
        add(printed("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 %.0f %.0f] "
                    "/Resources << /Font << /F1 3 0 R /F2 4 0 R %s>> "
                    "/XObject << %s>> >> /Contents %d 0 R >>",
                    PDF_PAGE_WIDTH, PDF_PAGE_HEIGHT, third.c_str(), shown.c_str(), contents)));
    return pages_.back();
}

std::string Pdf::text_cmd(double x, double y, std::string const& text, double size,
                          bool bold) const {
    if (letters_ && letters_->wanted_for(text)) {
        return printed("BT /F3 %.2f Tf %.2f %.2f Td %s Tj ET\n", size, x, y,
                       letters_->operand(text).c_str());
    }
    return printed("BT /%s %.2f Tf %.2f %.2f Td (", bold ? "F2" : "F1", size, x, y) +
           esc_pdf_text(text) + ") Tj ET\n";
}

std::string Pdf::frame_cmd(double x, double y, double w, double h) const {
    return printed("0.8 0.8 0.8 RG 0.7 w %.2f %.2f %.2f %.2f re S\n", x, y, w, h);
}

std::string Pdf::image_cmd(double x, double y, double w, double h, int image) const {
    return printed("q %.2f 0 0 %.2f %.2f %.2f cm /Im%d Do Q\n", w, h, x, y, image);
}

void Pdf::fill_tree() {
    std::string kids = "[ ";
    for (int const page : pages_) kids += printed("%d 0 R ", page);
    kids += "]";
    objs[0] = "<< /Type /Catalog /Pages 2 0 R >>";
    objs[1] = "<< /Type /Pages /Count " + std::to_string(pages_.size()) + " /Kids " + kids + " >>";
}

bool Pdf::write(std::string const& path) {
    FileHandle const handle(open_file(path, "wb"));
    if (!handle) return false;
    fill_tree();
    CountingFile file(handle.get());
    file.put("%PDF-1.4\n%\xe2\xe3\xcf\xd3\n");
    std::vector<long> offsets;
    for (std::string const& body : objs) {
        offsets.push_back(file.offset());
        file.put(std::to_string(offsets.size()) + " 0 obj\n");
        file.put(body);
        file.put("\nendobj\n");
    }

    long const table = file.offset();
    std::string const count = std::to_string(objs.size() + 1);
    file.put("xref\n0 " + count + "\n0000000000 65535 f \n");
    for (long const offset : offsets) file.put(printed("%010ld 00000 n \n", offset));
    file.put(printed("trailer\n<< /Size %s /Root 1 0 R >>\nstartxref\n%ld\n%%%%EOF\n",
                     count.c_str(), table));
    return true;
}
