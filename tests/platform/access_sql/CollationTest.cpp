#include "platform/access_sql/Collation.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarmel::access_sql {
namespace {

TEST(SpanishOrder, PutsEachTextBehindTheOneBefore) {
    const std::vector<std::string_view> order = {
        "",   " a", "-", "_z", "0", "9", "a",  "á", "ab", "áb", "ac", "águila", "b",  "c", "ç",
        "ca", "nz", "ñ", "ña", "o", "ó", "oa", "u", "ú",  "ü",  "uz", "z",      "z0", "α", "日"};
    for (std::size_t i = 0; i < order.size(); ++i) {
        for (std::size_t k = 0; k < order.size(); ++k) {
            const int expected = i < k ? -1 : i > k ? 1 : 0;
            EXPECT_EQ(compareSpanish(order[i], order[k]), expected) << order[i] << " / " << order[k];
        }
    }
}

TEST(SpanishOrder, KnowsNoCase) {
    EXPECT_EQ(compareSpanish("ÑANDÚ Común", "ñandú cOMÚN"), 0);
    EXPECT_EQ(compareSpanish("Ç", "ç"), 0);
    EXPECT_NE(compareSpanish("a", "á"), 0);
    EXPECT_NE(compareSpanish("n", "ñ"), 0);
    EXPECT_LT(compareSpanish("aguila", "ÁGUILA"), 0);
    EXPECT_LT(compareSpanish("ÁGUILA", "aguilb"), 0);
}

TEST(SpanishOrder, TakesBytesThatAreNoText) {
    EXPECT_EQ(compareSpanish("a\xff", "A\xff"), 0);
    EXPECT_NE(compareSpanish("\xff", "\xfe"), 0);
    EXPECT_NE(compareSpanish("\xc3", "\xc3\xb1"), 0);
}

TEST(Like, KnowsItsSigns) {
    struct Row {
        const char* text;
        const char* pattern;
        bool fits;
    };
    for (const Row& row : {Row{"Ñandú", "ñ%", true},
                           {"Ñandú", "_and_", true},
                           {"Ñandú", "and%", false},
                           {"", "%", true},
                           {"", "_", false},
                           {"abcabd", "%ab_", true},
                           {"abcabd", "%abc", false},
                           {"a%b", "a%%b", true},
                           {"ÁÁ", "_", false},
                           {"ÁÁ", "__", true},
                           {"aaab", "%a%a%b%", true},
                           {"á", "a", false}}) {
        EXPECT_EQ(matchesLike(row.text, row.pattern), row.fits) << row.text << " Like " << row.pattern;
    }
}

}  // namespace
}  // namespace tarmel::access_sql
