// Pages and pictures as files, and pages that can be drawn again.
#include "drawing/CairoSurface.h"
#include "drawing/SvgSurface.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

std::size_t countOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string_view::npos;
         at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

const DrawingFont kSans{.family = "Arial", .height = 12};
const DrawingFont kMono{.family = "Courier", .height = 10};

TEST(PdfSurface, HasItsPaperItsTitleAndItsPages) {
    PdfSurface surface({.title = "Calibrations \xE4", .author = "KAVU-9", .paper = {612, 792}});
    for (int page = 1; page <= 3; ++page) {
        EXPECT_TRUE(surface.startPage());
        surface.addOutline("Page " + std::to_string(page));
        surface.text({50, 50}, "text", kSans);
        EXPECT_TRUE(surface.startPage()) << "of the same page";
        EXPECT_EQ(surface.pages(), page);
        surface.endPage();
    }
    const auto pdf = surface.document();
    EXPECT_TRUE(pdf.starts_with("%PDF-"));
    EXPECT_NE(pdf.find("/MediaBox [ 0 0 612 792 ]"), std::string::npos);
    EXPECT_NE(pdf.find("/Author (KAVU-9)"), std::string::npos);
    EXPECT_NE(pdf.find("/Outlines"), std::string::npos);
    EXPECT_NE(pdf.find("LiberationSans"), std::string::npos) << "the font is embedded";
}

TEST(PdfSurface, LeavesItsMarginsOnAllSides) {
    PdfSurface surface({.paper = {612, 792}, .margin = 30});
    const auto area = surface.area();
    EXPECT_DOUBLE_EQ(area.left, 30);
    EXPECT_DOUBLE_EQ(area.top, 30);
    EXPECT_DOUBLE_EQ(area.right, 582);
    EXPECT_DOUBLE_EQ(area.bottom, 762);
    EXPECT_DOUBLE_EQ(surface.paper().right, 612);
}

TEST(PdfSurface, CourierHasLettersOfOneWidth) {
    PdfSurface surface({});
    EXPECT_DOUBLE_EQ(surface.textSize("iiiii", kMono).width,
                     surface.textSize("WWWWW", kMono).width);
    EXPECT_NEAR(surface.textSize("0000000000", kMono).width, 60, 0.1);
    EXPECT_NEAR(surface.textSize("0000000000", {.family = "Courier", .height = 9}).width, 54, 0.1)
        << "not as wide as whole points";
    EXPECT_LT(surface.textSize("iiiii", kSans).width, surface.textSize("WWWWW", kSans).width);
}

TEST(PdfSurface, BytesThatAreNoUtf8AndControlCharactersAreDrawn) {
    PdfSurface surface({.title = "t", .keepsPages = true});
    (void)surface.startPage();
    surface.text({50, 50}, "K\xF6ln\ttab\x01", kSans);
    surface.text({50, 80}, "", kSans);
    EXPECT_TRUE(surface.document().starts_with("%PDF-"));
}

TEST(PdfSurface, KeepsItsPagesOnlyIfThatIsWanted) {
    for (const bool keeps : {false, true}) {
        PdfSurface surface({.title = "t", .keepsPages = keeps});
        (void)surface.startPage();
        surface.text({1, 2}, "here", kMono);
        const auto made = surface.printed();
        EXPECT_EQ(made.pages.size(), keeps ? 1U : 0U);
        EXPECT_TRUE(made.pdf.starts_with("%PDF-"));
        EXPECT_EQ(made.title, "t");
        EXPECT_NEAR(made.paper.width, 595.28, 0.01);
    }
}

/// Each kind of step once.
void drawAll(DrawingSurface& surface) {
    (void)surface.startPage();
    (void)surface.setPen({0xFF0000, 2, LineStyle::Dash});
    surface.line({10, 10}, {50, 10});
    surface.line({50, 10}, {50, 40});
    surface.setSolidBrush(0x00FF00);
    surface.rectangle({60, 60, 90, 90});
    surface.ellipse({100, 60, 120, 80});
    surface.setHollowBrush();
    const DrawingPoint triangle[] = {{10, 100}, {30, 100}, {20, 80}};
    surface.polygon(triangle);
    surface.clip({0, 0, 100, 100});
    surface.text({20, 20}, "upright", {.family = "Arial", .height = 9, .angle = 90});
    surface.releaseClip();
}

TEST(RecordedPage, DrawsAgainWhatWasDrawn) {
    PdfSurface surface({.paper = {200, 200}, .margin = 0, .keepsPages = true});
    drawAll(surface);
    const auto made = surface.printed();
    ASSERT_EQ(made.pages.size(), 1U);
    SvgSurface again(200, 200);
    made.pages[0].drawOn(again);
    SvgSurface direct(200, 200);
    drawAll(direct);
    EXPECT_EQ(again.document(), direct.document());
}

TEST(RecordedPage, KnowsItsTextsAndTheirPlaces) {
    PdfSurface surface({.keepsPages = true});
    (void)surface.startPage();
    surface.text({40, 50}, "0000", kMono);
    const auto made = surface.printed();
    ASSERT_EQ(made.pages[0].texts().size(), 1U);
    const auto& text = made.pages[0].texts()[0];
    EXPECT_EQ(text.text, "0000");
    EXPECT_DOUBLE_EQ(text.at.x, 40);
    EXPECT_NEAR(text.size.width, 24, 0.1);
}

/// A picture of a text, up to the end of its first letters of equal width.
std::string pictureOf(const std::string& text, double height, double width) {
    PngSurface surface(900, 40);
    const DrawingFont font{.family = "Courier", .height = height};
    surface.clip({10, 0, 10 + width, 40});
    surface.text({10, 5}, text, font);
    surface.releaseClip();
    return surface.document();
}

TEST(PngSurface, TablesAreDrawnAsTheLayoutOfTextDrawsThem) {
    std::string letters;
    for (char c = ' '; c <= '~'; ++c) {
        letters += c;
    }
    for (const double height : {5.0, 9.0, 14.0}) {
        PngSurface measure(10, 10);
        const DrawingFont font{.family = "Courier", .height = height};
        const auto ready = measure.textSize(letters, font);
        // Such a letter takes a text out of what is ready, and stands outside of the picture.
        const auto laid = measure.textSize(letters + "\xC3\xA4", font);
        EXPECT_NEAR(laid.width - ready.width, ready.width / 95, 0.01);
        EXPECT_DOUBLE_EQ(laid.height, ready.height);
        const double shown = ready.width * 0.98;  // its edge is blurred
        EXPECT_EQ(pictureOf(letters, height, shown),
                  pictureOf(letters + "\xC3\xA4", height, shown));
        EXPECT_NE(pictureOf(letters, height, shown), pictureOf("", height, shown));
    }
}

TEST(PngSurface, IsAPictureOfItsSizeWithAWhiteBackground) {
    PngSurface surface(120, 80);
    EXPECT_DOUBLE_EQ(surface.area().right, 120);
    surface.setSolidBrush(0);
    surface.rectangle({10, 10, 20, 20});
    const auto png = surface.document();
    EXPECT_TRUE(png.starts_with("\x89PNG\r\n"));
    EXPECT_EQ(static_cast<unsigned char>(png[19]), 120U);
    EXPECT_EQ(static_cast<unsigned char>(png[23]), 80U);
    EXPECT_EQ(countOf(png, "IEND"), 1U);
}

}  // namespace
}  // namespace kavu
