#include "records/mem_buffer.h"
#include "records/pdf.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

TEST(Pdf, EscapesWhatEndsAText) {
    EXPECT_EQ(esc_pdf_text("a (new) \\ \xc3\xb6\n"), "a \\(new\\) \\\\ \xc3\xb6\n");
    Pdf const pdf;
    EXPECT_EQ(pdf.text_cmd(40, 792.456, "(x)", 13, true),
              "BT /F2 13.00 Tf 40.00 792.46 Td (\\(x\\)) Tj ET\n");
    EXPECT_EQ(pdf.text_cmd(-1, 2, "x", 10, false), "BT /F1 10.00 Tf -1.00 2.00 Td (x) Tj ET\n");
    EXPECT_EQ(pdf.frame_cmd(1, 2, 3, 4.125), "0.8 0.8 0.8 RG 0.7 w 1.00 2.00 3.00 4.12 re S\n");
    EXPECT_EQ(pdf.image_cmd(1, 2, 3, 4, 5), "q 3.00 0 0 4.00 1.00 2.00 cm /Im5 Do Q\n");
}

TEST(Pdf, WritesAPageWithoutPicturesByteForByte) {
    TempDir const dir;
    Pdf pdf;
    pdf.add_page("BT ET\n", {});
    ASSERT_TRUE(pdf.write(dir.file("a.pdf")));
    std::string const expected =
        "%PDF-1.4\n%\xe2\xe3\xcf\xd3\n"
        "1 0 obj\n<< /Type /Catalog /Pages 2 0 R >>\nendobj\n"
        "2 0 obj\n<< /Type /Pages /Count 1 /Kids [ 6 0 R ] >>\nendobj\n"
        "3 0 obj\n<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding "
        ">>\nendobj\n"
        "4 0 obj\n<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold /Encoding "
        "/WinAnsiEncoding >>\nendobj\n"
        "5 0 obj\n<< /Length 6 >>\nstream\nBT ET\n\nendstream\nendobj\n"
        "6 0 obj\n<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Resources << /Font << /F1 "
        "3 0 R /F2 4 0 R >> /XObject << >> >> /Contents 5 0 R >>\nendobj\n";
    std::string const file = read_file(dir.file("a.pdf"));
    EXPECT_EQ(file.substr(0, expected.size()), expected);
    EXPECT_EQ(file.substr(expected.size(), 30), "xref\n0 7\n0000000000 65535 f \n0");
    EXPECT_TRUE(file.ends_with("trailer\n<< /Size 7 /Root 1 0 R >>\nstartxref\n" +
                               std::to_string(expected.size()) + "\n%%EOF\n"));
    EXPECT_FALSE(pdf.write(dir.file("no/folder.pdf")));
}

TEST(Pdf, PointsItsTableAtEveryObject) {
    TempDir const dir;
    Pdf pdf;
    std::vector<std::uint8_t> const binary{0, 255, '\n', 0, 'e', 'n', 'd', 'o', 'b', 'j'};
    int const first = pdf.add_image(binary, 520, 390);
    int const second = pdf.add_image({}, 1, 2);
    EXPECT_EQ(first, 5);
    EXPECT_EQ(second, 6);
    EXPECT_EQ(pdf.add_page("1", {first, second}), 8);
    EXPECT_EQ(pdf.add_page("2", {second}), 10);
    ASSERT_TRUE(pdf.write(dir.file("a.pdf")));
    EXPECT_EQ(pdf.objs[4],
              "<< /Type /XObject /Subtype /Image /Width 520 /Height 390 /ColorSpace /DeviceRGB "
              "/BitsPerComponent 8 /Filter /DCTDecode /Length 10 >>\nstream\n" +
                  std::string(binary.begin(), binary.end()) + "\nendstream");
    EXPECT_NE(pdf.objs[7].find("/XObject << /Im5 5 0 R /Im6 6 0 R >> >>"), std::string::npos);
    EXPECT_NE(pdf.objs[1].find("/Count 2 /Kids [ 8 0 R 10 0 R ]"), std::string::npos);

    std::string const file = read_file(dir.file("a.pdf"));
    std::size_t const table = std::stoul(file.substr(file.rfind("startxref\n") + 10));
    ASSERT_EQ(file.substr(table, 10), "xref\n0 11\n");
    std::size_t const entries = table + 10;
    for (std::size_t n = 1; n <= 10; ++n) {
        std::string const entry = file.substr(entries + 20 * n, 20);
        EXPECT_TRUE(entry.ends_with(" 00000 n \n"));
        std::string const head = std::to_string(n) + " 0 obj\n";
        EXPECT_EQ(file.substr(std::stoul(entry), head.size()), head);
    }
    EXPECT_EQ(file.substr(entries + 220, 8), "trailer\n");
}

TEST(MemBuffer, WritesSeeksAndReads) {
    MemBuffer buffer;
    SDL_RWops* stream = open_mem_buffer(buffer);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(SDL_RWwrite(stream, "abcdef", 2, 3), 3U);
    EXPECT_EQ(SDL_RWseek(stream, -1, RW_SEEK_SET), -1);
    EXPECT_EQ(SDL_RWseek(stream, INT64_MAX, RW_SEEK_CUR), -1);
    EXPECT_EQ(SDL_RWwrite(stream, "gh", 1, 2), 2U) << "where the last write ended";
    EXPECT_EQ(SDL_RWseek(stream, -6, RW_SEEK_END), 2);
    std::array<char, 8> out{};
    EXPECT_EQ(SDL_RWread(stream, out.data(), 4, 2), 1U) << "6 bytes hold one item of 4";
    EXPECT_EQ(std::string(out.data()), "cdef");
    EXPECT_EQ(SDL_RWtell(stream), 6) << "and 2 stay unread";
    EXPECT_EQ(SDL_RWread(stream, out.data(), 0, 2), 0U);

    EXPECT_EQ(SDL_RWseek(stream, 4, RW_SEEK_CUR), 10);
    EXPECT_EQ(SDL_RWread(stream, out.data(), 1, 1), 0U);
    EXPECT_EQ(SDL_RWwrite(stream, "z", 1, 0), 0U);
    EXPECT_EQ(SDL_RWsize(stream), 8);
    EXPECT_EQ(SDL_RWwrite(stream, "z", 1, 1), 1U);
    EXPECT_EQ(std::string(buffer.bytes.begin(), buffer.bytes.end()),
              std::string("abcdefgh\0\0z", 11));
    EXPECT_EQ(SDL_RWseek(stream, 1, RW_SEEK_SET), 1);
    EXPECT_EQ(SDL_RWwrite(stream, "B", 1, 1), 1U);
    EXPECT_EQ(buffer.bytes.size(), 11U);
    EXPECT_EQ(buffer.bytes[1], 'B');
    SDL_FreeRW(stream);
}
