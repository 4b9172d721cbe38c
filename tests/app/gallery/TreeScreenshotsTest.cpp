#include "app/framework/Look.h"
#include "app/support/FormStage.h"
#include "app/support/WidgetChecks.h"
#include "core/document/OpenDocument.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"
#include "support/TestApplication.h"

#include <QApplication>

namespace kavu {
namespace {

class TreePictures : public testing::TestWithParam<std::pair<look::Scheme, double>> {};

/// With KAVU_PICTURES set to a folder the pictures stay there, to be looked at.
TEST_P(TreePictures, AreMadeFromTheSampleWithRoomForEveryText) {
    const auto [scheme, scale] = GetParam();
    const auto before = QApplication::font();
    auto font = before;
    font.setPointSizeF(font.pointSizeF() * scale);
    QApplication::setFont(font);
    look::apply(*static_cast<QApplication*>(QCoreApplication::instance()), scheme);
    test::TestApplication app;
    auto& context = app.application.context();
    ASSERT_TRUE(openFromName(context, &app.ui, KAVU_SOURCE_DIR "/samples/flight-test.tma"));
    test::FormStage forms;
    ScreenshotStage stage{forms.form, &context};
    ScreenshotList list;
    addTreeScreenshots(list);
    ASSERT_EQ(list.entries().size(), 2u);
    for (const auto& entry : list.entries()) {
        const auto window = entry.make(stage);
        ASSERT_NE(window, nullptr) << entry.name;
        EXPECT_EQ(test::checkWindow(*window), std::vector<std::string>{}) << entry.name;
        const auto picture = window->grab();
        EXPECT_FALSE(picture.isNull());
        if (const auto folder = qEnvironmentVariable("KAVU_PICTURES"); !folder.isEmpty()) {
            EXPECT_TRUE(picture.save(QStringLiteral("%1/%2-%3-%4.png")
                                         .arg(folder, QString::fromStdString(entry.name))
                                         .arg(int(scheme))
                                         .arg(scale)));
        }
    }
    QApplication::setFont(before);
}

INSTANTIATE_TEST_SUITE_P(Looks, TreePictures,
                         testing::Values(std::pair{look::Scheme::Light, 1.0},
                                         std::pair{look::Scheme::Dark, 1.0},
                                         std::pair{look::Scheme::Light, 2.0}));

}  // namespace
}  // namespace kavu
