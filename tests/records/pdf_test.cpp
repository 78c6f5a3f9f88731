#include "records/mem_buffer.h"
#include "records/pdf.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

// Whether readers find their way by the table at its end is for the tests of the report.
TEST(Pdf, WritesItsObjectsByteForByte) {
    TempDir const dir;
    Pdf pdf;
    std::array<std::uint8_t, 4> const picture{0, 255, '\n', 'e'};
    EXPECT_EQ(pdf.add_image(picture, 520, 390), 5);
    EXPECT_EQ(pdf.add_page(pdf.text_cmd(40, 792.456, "(a) \\ \xc3\xb6", 13, true) +
                               pdf.text_cmd(-1, 2, "x", 10, false) + pdf.frame_cmd(1, 2, 3, 4.125) +
                               pdf.image_cmd(1, 2, 3, 4, 5),
                           {5}),
              7);
    ASSERT_TRUE(pdf.write(dir.file("a.pdf")));
    std::string expected =
        "%PDF-1.4\n%\xe2\xe3\xcf\xd3\n"
        "1 0 obj\n<< /Type /Catalog /Pages 2 0 R >>\nendobj\n"
        "2 0 obj\n<< /Type /Pages /Count 1 /Kids [ 7 0 R ] >>\nendobj\n"
        "3 0 obj\n<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding "
        ">>\nendobj\n"
        "4 0 obj\n<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold /Encoding "
        "/WinAnsiEncoding >>\nendobj\n"
        "5 0 obj\n<< /Type /XObject /Subtype /Image /Width 520 /Height 390 /ColorSpace /DeviceRGB "
        "/BitsPerComponent 8 /Filter /DCTDecode /Length 4 >>\nstream\n";
    expected.append(picture.begin(), picture.end());
    expected +=
        "\nendstream\nendobj\n"
        "6 0 obj\n<< /Length 177 >>\nstream\n"
        "BT /F2 13.00 Tf 40.00 792.46 Td (\\(a\\) \\\\ \xc3\xb6) Tj ET\n"
        "BT /F1 10.00 Tf -1.00 2.00 Td (x) Tj ET\n"
        "0.8 0.8 0.8 RG 0.7 w 1.00 2.00 3.00 4.12 re S\n"
        "q 3.00 0 0 4.00 1.00 2.00 cm /Im5 Do Q\n"
        "\nendstream\nendobj\n"
        "7 0 obj\n<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Resources << /Font << /F1 "
        "3 0 R /F2 4 0 R >> /XObject << /Im5 5 0 R >> >> /Contents 6 0 R >>\nendobj\n";
    std::string const file = read_file(dir.file("a.pdf"));
    EXPECT_EQ(file.substr(0, expected.size()), expected);
    EXPECT_EQ(file.substr(expected.size(), 50),
              "xref\n0 8\n0000000000 65535 f \n0000000015 00000 n \n0");
    EXPECT_TRUE(file.ends_with("trailer\n<< /Size 8 /Root 1 0 R >>\nstartxref\n" +
                               std::to_string(expected.size()) + "\n%%EOF\n"));
}

TEST(MemBuffer, WritesSeeksAndReads) {
    MemBuffer buffer;
    SDL_RWops* stream = open_mem_buffer(buffer);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(SDL_RWwrite(stream, "abcdef", 2, 3), 3U);
    EXPECT_EQ(SDL_RWseek(stream, -1, RW_SEEK_SET), -1);
    EXPECT_EQ(SDL_RWseek(stream, INT64_MAX, RW_SEEK_CUR), -1);
    EXPECT_EQ(SDL_RWseek(stream, -5, RW_SEEK_END), 1);
    std::array<char, 8> out{};
    EXPECT_EQ(SDL_RWread(stream, out.data(), 4, 2), 1U) << "5 bytes hold one item of 4";
    EXPECT_EQ(std::string(out.data()), "bcde");
    EXPECT_EQ(SDL_RWseek(stream, 3, RW_SEEK_CUR), 8) << "one stayed unread";
    EXPECT_EQ(SDL_RWread(stream, out.data(), 1, 1), 0U);
    EXPECT_EQ(SDL_RWwrite(stream, "z", 1, 1), 1U);
    EXPECT_EQ(SDL_RWseek(stream, 1, RW_SEEK_SET), 1);
    EXPECT_EQ(SDL_RWwrite(stream, "B", 1, 1), 1U);
    EXPECT_EQ(std::string(buffer.bytes.begin(), buffer.bytes.end()), std::string("aBcdef\0\0z", 9));
    EXPECT_EQ(SDL_RWsize(stream), 9);
    SDL_FreeRW(stream);
}
