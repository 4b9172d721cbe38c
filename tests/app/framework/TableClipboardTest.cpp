#include "app/framework/TableClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(TableClipboard, OtherProgramsGetTextAndThisOneAllOfIt) {
    copyTable({.rows = {{"A", "K\xF6ln"}, {"", "B"}}, .kind = "frame", .own = {{"1", "\x01;"}}});
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("A\tKöln\n\tB\n"));
    const auto clip = pasteTable();
    ASSERT_TRUE(clip);
    EXPECT_EQ(clip->rows, (TableRows{{"A", "K\xF6ln"}, {"", "B"}})) << "the bytes are the same";
    EXPECT_EQ(clip->kind, "frame");
    EXPECT_EQ(clip->own, (TableRows{{"1", "\x01;"}}));
}

TEST(TableClipboard, TextOfOtherProgramsIsATableOfNoKind) {
    QGuiApplication::clipboard()->setText(QStringLiteral("A\tB\r\n\tC"));
    const auto clip = pasteTable();
    ASSERT_TRUE(clip);
    EXPECT_EQ(clip->kind, "");
    EXPECT_EQ(clip->rows, (TableRows{{"A", "B"}, {"", "C"}}));
    QGuiApplication::clipboard()->setText(QString());
    EXPECT_FALSE(pasteTable());
}

TEST(TableClipboard, CellsWithTabsLineEndsAndQuotesSurviveText) {
    const TableRows rows = {{"a\tb", "c\nd", "say \"x\""}, {"", "", "\"\""}, {"plain"}};
    EXPECT_EQ(tableFromText(tableText(rows)), rows);
    EXPECT_EQ(tableText({{"a\"b", "c"}}), "\"a\"\"b\"\tc\n");
    EXPECT_EQ(tableFromText("\"open"), (TableRows{{"open"}}));
    EXPECT_EQ(tableFromText("a\rb\n\nc"), (TableRows{{"a"}, {"b"}, {""}, {"c"}}));
    EXPECT_TRUE(tableFromText("").empty());
}

// A clipboard belongs to everybody.
TEST(TableClipboard, ADamagedClipIsReadAsText) {
    for (const auto& bytes : {QByteArray(), QByteArray("\x00\x00\x00\x02", 4),
                              QByteArray("\x00\x00\x00\x01\x00\x00\x00\x00\xFF\xFF\xFF\xF0", 12)}) {
        auto* const data = new QMimeData;
        data->setText(QStringLiteral("A"));
        data->setData(QLatin1String(kTableMimeType), bytes);
        QGuiApplication::clipboard()->setMimeData(data);
        const auto clip = pasteTable();
        ASSERT_TRUE(clip);
        EXPECT_EQ(clip->kind, "");
        EXPECT_EQ(clip->rows, (TableRows{{"A"}}));
    }
}

}  // namespace
}  // namespace kavu
