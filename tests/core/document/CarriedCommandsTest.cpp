#include "core/document/CarriedCommands.h"
#include "core/document/DocumentFiles.h"
#include "support/TestContext.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

/// What the commands of an old text carry.
CarriedCommands carriedOf(std::string_view text,
                          CarriedCommands::Follow follow = CarriedCommands::Follow::Codes) {
    CarriedCommands carried(follow);
    TmatsReader reader;
    auto source = ByteSource::fromMemory(text);
    std::string command;
    while (reader.nextRawCommand(source, command)) {
        carried.add(viewCommand(command));
    }
    return carried;
}

TEST(CarriedCommands, StayInFrontOfTheCommandThatFollowedThem) {
    struct Row {
        const char* about;
        const char* former;
        const char* rewritten;
        const char* joined;
    };
    const Row rows[] = {
        {"none", "T-1\\A:1;", "T-1\\A:2;\r\n", "T-1\\A:2;\r\n"},
        {"no colon", "T-1\\A:1;T-1\\X;T-1\\B:1;", "T-1\\A:1;\r\nT-1\\B:2;\r\n",
         "T-1\\A:1;\r\nT-1\\X;\r\nT-1\\B:2;\r\n"},
        {"no backslash", "T-1:a\\b;T-1\\A:1;", "T-1\\A:1;\r\n", "T-1:a\\b;\r\nT-1\\A:1;\r\n"},
        {"another order", "T-1;T-1\\A:1;T-1 ;T-1\\B:1;", "T-1\\B:1;\r\nT-1\\A:1;\r\n",
         "T-1;\r\nT-1\\B:1;\r\nT-1;\r\nT-1\\A:1;\r\n"},
        {"in any case", "T-1\\A:1;T-1\\X;T-1\\b:1;", "T-1\\A:1;\r\nT-1\\B:2;\r\n",
         "T-1\\A:1;\r\nT-1\\X;\r\nT-1\\B:2;\r\n"},
        {"the next is gone", "T-1\\X;T-1\\A:1;T-1\\Y;T-1\\B:1;", "T-1\\B:2;\r\n",
         "T-1\\X;\r\nT-1\\Y;\r\nT-1\\B:2;\r\n"},
        {"all are gone", "T-1\\X;T-1\\A:1;", "T-1\\B:2;\r\n", "T-1\\B:2;\r\nT-1\\X;\r\n"},
        {"at the end", "T-1\\A:1;T-1\\X;T-1\\X;", "T-1\\A:2;\r\n",
         "T-1\\A:2;\r\nT-1\\X;\r\nT-1\\X;\r\n"},
        {"in front of a repetition", "T-1\\A:1;T-1\\X;T-1\\A:2;", "T-1\\A:1;\r\n",
         "T-1\\X;\r\nT-1\\A:1;\r\n"},
        {"an empty file", "T-1\\X;", "", "T-1\\X;\r\n"},
        {"comments", "COMMENT: a\\b:c;T-1\\A:1;comment:d;T-1\\B:1;", "T-1\\B:1;\r\nT-1\\A:1;\r\n",
         "comment:d;\r\nT-1\\B:1;\r\nCOMMENT: a\\b:c;\r\nT-1\\A:1;\r\n"},
    };
    for (const auto& row : rows) {
        auto carried = carriedOf(row.former);
        EXPECT_EQ(withCarried(row.rewritten, carried), row.joined) << row.about;
    }
}

TEST(CarriedCommands, FollowRowsThatHaveMoved) {
    auto carried = carriedOf("T-1\\A-1:1;T-1\\X;T-1\\A-2:2;T-1\\Y;T-1\\A-3:3;");
    carried.recode([](std::string& code) {
        code.back() = static_cast<char>(code.back() - 1);  // the first row is gone
        return code.back() != '0';
    });
    EXPECT_EQ(withCarried("T-1\\A-1:2;\r\nT-1\\A-2:3;\r\n", carried),
              "T-1\\X;\r\nT-1\\A-1:2;\r\nT-1\\Y;\r\nT-1\\A-2:3;\r\n");
}

TEST(CarriedCommands, FollowTheValueOfARowThatHasMoved) {
    const char* const former =
        "T-1\\A-1:one;COMMENT: two;T-1\\A-2:two;COMMENT: x;T-1\\B-2:x;"
        "T-1\\B-3:x;COMMENT: three;T-1\\A-3:three;";
    struct Row {
        const char* about;
        const char* rewritten;
        const char* joined;
    };
    for (const auto& row : {
             Row{"moved", "T-1\\A-1:two;\r\nT-1\\A-2:three;\r\n",
                 "COMMENT: two;\r\nT-1\\A-1:two;\r\nCOMMENT: x;\r\nCOMMENT: three;\r\n"
                 "T-1\\A-2:three;\r\n"},
             Row{"changed", "T-1\\A-2:new;\r\nT-1\\A-3:three;\r\n",
                 "COMMENT: two;\r\nT-1\\A-2:new;\r\nCOMMENT: x;\r\nCOMMENT: three;\r\n"
                 "T-1\\A-3:three;\r\n"},
             Row{"a value that is not the only one", "T-1\\B-1:x;\r\nT-1\\B-2:y;\r\n",
                 "T-1\\B-1:x;\r\nCOMMENT: two;\r\nCOMMENT: x;\r\nT-1\\B-2:y;\r\n"
                 "COMMENT: three;\r\n"},
         }) {
        auto carried = carriedOf(former, CarriedCommands::Follow::Values);
        EXPECT_EQ(withCarried(row.rewritten, carried), row.joined) << row.about;
    }
}

TEST(CarriedCommands, FindTheirPlaceAgainAmongManyCommands) {
    std::string former = "T-1\\X;";
    std::string rewritten;
    for (int i = 0; i < 1000; ++i) {
        const auto command = "T-1\\A-" + std::to_string(i) + ":1;";
        former += command;
        rewritten += i < 60 ? "" : command + "\r\n";
    }
    auto carried = carriedOf(former);
    EXPECT_EQ(withCarried(rewritten, carried), "T-1\\X;\r\n" + rewritten);
}

TEST(CarriedCommands, AFileIsClosedWithWhatTheFormerOneCarries) {
    test::TestContext t;
    const LoadScope scope(t.files);
    t.write("[kavu]PCMFMT.P01", "P-1\\A:1;\r\nP-1\\X;\r\nP-1\\B:1;\r\n");
    for (int i = 0; i < 2; ++i) {
        auto group = t.files.writer("[kavu]PCMFMT.P01");
        group.write("P-1\\B:2;\r\nP-1\\C:2;\r\n");
        EXPECT_TRUE(closeCarrying(t.files, t.reader, "[kavu]PCMFMT.P01", group).ok());
        EXPECT_EQ(t.read("[kavu]PCMFMT.P01"), "P-1\\X;\r\nP-1\\B:2;\r\nP-1\\C:2;\r\n");
    }
    auto first = t.files.writer("[kavu]PCMFMT.P02");
    first.write("P-2\\B:2;\r\n");
    EXPECT_TRUE(closeCarrying(t.files, t.reader, "[kavu]PCMFMT.P02", first).ok());
    EXPECT_EQ(t.read("[kavu]PCMFMT.P02"), "P-2\\B:2;\r\n");
}

}  // namespace
}  // namespace kavu
