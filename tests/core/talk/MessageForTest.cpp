#include "core/talk/MessageFor.h"
#include "core/talk/Titles.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

// What must not compile is in tests/architecture/compile_failures.

TEST(MessageForTest, AMessageKeepsItsNumber) {
    constexpr MessageFor<std::string> unableToEdit = 85;
    constexpr MessageFor<const char*> withoutNumber = -85;
    constexpr MessageFor<int, long> between = 160;
    EXPECT_EQ(unableToEdit.id(), 85);
    EXPECT_EQ(withoutNumber.id(), -85);
    EXPECT_EQ(between.id(), 160);
}

TEST(MessageForTest, ATitleKeepsItsNumberAndMayBeNone) {
    constexpr MessageTitle error = title::kError;
    constexpr MessageTitle none = 0;
    EXPECT_EQ(error.id(), 78);
    EXPECT_EQ(none.id(), 0);
}

TEST(MessageForTest, OnlyANumberChosenAtRunTimeMayHaveNoText) {
    const MessageFor<int> message = chosenMessage(9999);
    const MessageTitle title = chosenMessage(9999);
    EXPECT_EQ(message.id(), 9999);
    EXPECT_EQ(title.id(), 9999);
}

// The conversions of all texts are ones that a message can be given arguments for.
TEST(MessageForTest, EveryTextFitsSomeArguments) {
    for (const auto& [id, text] : messageTable()) {
        std::vector<PrintfKind> arguments;
        for (std::size_t at = text.find('%'); at != std::string_view::npos;
             at = text.find('%', at + 2)) {
            const auto end = text.find_first_of("%dsgcx", at + 1);
            ASSERT_NE(end, std::string_view::npos) << id << ": " << text;
            const auto conversion = text[end];
            if (conversion != '%') {
                arguments.push_back(conversion == 's'   ? PrintfKind::Text
                                    : conversion == 'g' ? PrintfKind::Floating
                                                        : PrintfKind::Integer);
            }
        }
        EXPECT_TRUE(fitsArguments(text, arguments)) << id << ": " << text;
    }
}

}  // namespace
}  // namespace kavu::test
