#include "core/text/Markup.h"

#include <string>

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(MarkupEntity, StandsForMarkupAndForNothingElse) {
    std::string escaped;
    for (const char c : std::string("a<b>&\"'\n\r\t")) {
        const auto entity = markupEntity(c);
        escaped += entity.empty() ? std::string(1, c) : std::string(entity);
    }
    EXPECT_EQ(escaped, "a&lt;b&gt;&amp;&quot;'\n\r\t");
}

}  // namespace
}  // namespace kavu
