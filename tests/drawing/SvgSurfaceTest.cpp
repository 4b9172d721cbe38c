#include "drawing/SvgSurface.h"

#include <limits>

#include <gtest/gtest.h>

namespace kavu {
namespace {

bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(SvgSurface, WritesShapesWithPenAndBrush) {
    SvgSurface svg(100, 50);
    (void)svg.setPen({0xFF0000, 2, LineStyle::Dash});
    svg.setSolidBrush(0x00FF00);
    svg.rectangle({1, 2, 11, 22});
    svg.setHollowBrush();
    (void)svg.setPen({0, 1, LineStyle::None});
    svg.ellipse({0, 0, 10, 20});
    const DrawingPoint points[] = {{0, 0}, {1.005, 2}, {3, 0}};
    svg.polygon(points);
    const auto text = svg.document();
    EXPECT_TRUE(holds(text,
                      "<rect x=\"1\" y=\"2\" width=\"10\" height=\"20\" fill=\"#00ff00\" "
                      "stroke=\"#ff0000\" stroke-width=\"2\" stroke-dasharray=\"12 6\"/>"))
        << text;
    EXPECT_TRUE(holds(text, "<ellipse cx=\"5\" cy=\"10\" rx=\"5\" ry=\"10\" fill=\"none\"/>"));
    EXPECT_TRUE(holds(text, "<polygon points=\"0,0 1,2 3,0\" fill=\"none\"/>"));
    EXPECT_TRUE(holds(text, "width=\"100\" height=\"50\" viewBox=\"0 0 100 50\""));
}

TEST(SvgSurface, SegmentsThatHangTogetherAreOneElement) {
    SvgSurface svg(100, 50);
    svg.line({0, 0}, {1, 1});
    svg.line({1, 1}, {2, 0.5});
    svg.line({5, 5}, {6, 6});
    const auto text = svg.document();
    EXPECT_TRUE(holds(text, "<path d=\"M0 0L1 1L2 0.5\" fill=\"none\""));
    EXPECT_TRUE(holds(text, "<path d=\"M5 5L6 6\""));
}

TEST(SvgSurface, TextIsSafeInTheFile) {
    SvgSurface svg(100, 50);
    svg.text({1, 2}, "<a & b>\x01\x93quoted\x94", {});
    svg.text({1, 2}, "", {});
    svg.text({3, 4}, "up", {"Arial", 16, true, 90});
    const auto text = svg.document();
    EXPECT_TRUE(holds(text, ">&lt;a &amp; b&gt; \xE2\x80\x9Cquoted\xE2\x80\x9D</text>")) << text;
    EXPECT_TRUE(holds(text, "font-size=\"16\" font-weight=\"bold\" transform=\"rotate(-90 3 4)\""));
}

TEST(SvgSurface, NumbersThatAreNotFiniteDoNotSpoilTheFile) {
    SvgSurface svg(100, 50);
    svg.line({std::numeric_limits<double>::quiet_NaN(), 0},
             {std::numeric_limits<double>::infinity(), 1});
    EXPECT_TRUE(holds(svg.document(), "M0 0L0 1"));
}

TEST(SvgSurface, ClipsAGroup) {
    SvgSurface svg(100, 50);
    svg.clip({1, 2, 3, 4});
    svg.line({0, 0}, {1, 1});
    svg.releaseClip();
    const auto text = svg.document();
    EXPECT_TRUE(holds(text, "<g clip-path=\"url(#clip1)\">\n<path"));
    EXPECT_TRUE(holds(text, "/>\n</g>\n</svg>"));
}

}  // namespace
}  // namespace kavu
