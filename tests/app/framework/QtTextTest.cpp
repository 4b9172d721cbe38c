#include "app/framework/QtText.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(QtText, BytesAreUtf8OrElseWindows1252) {
    EXPECT_EQ(toQString("plain"), QStringLiteral("plain"));
    EXPECT_EQ(toQString("K\xC3\xB6ln"), QStringLiteral("Köln"));
    EXPECT_EQ(toQString("K\xF6ln \x80"), QStringLiteral("Köln €"));
    EXPECT_EQ(toQString(std::string_view("a\0b", 3)).size(), 3);
}

TEST(QtText, TextBecomesUtf8) {
    EXPECT_EQ(toBytes(QStringLiteral("Köln €")), "K\xC3\xB6ln \xE2\x82\xAC");
    EXPECT_EQ(toBytes(QString(QChar(0xD800))), "?");
}

TEST(QtText, WhatNobodyEditedKeepsItsBytes) {
    for (const char* bytes : {"K\xF6ln", "K\xC3\xB6ln", "\x81\x8D", "\xEF\xBB\xBFx", ""}) {
        const ShownText shown(bytes);
        EXPECT_EQ(shown.bytesOf(shown.shown()), bytes);
    }
}

TEST(QtText, AnEditedTextIsUtf8) {
    const ShownText shown("K\xF6ln");
    EXPECT_EQ(shown.bytesOf(QStringLiteral("Köln!")), "K\xC3\xB6ln!");
}

}  // namespace
}  // namespace kavu
