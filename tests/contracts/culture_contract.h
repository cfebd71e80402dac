#pragma once

#include "automation/culture.h"
#include "automation/dates.h"

#include <gtest/gtest.h>

namespace talvix {

/// What the German rules answer, real or fake.
template <typename Rules>
class GermanContract : public testing::Test {
protected:
    Rules rules;
};
TYPED_TEST_SUITE_P(GermanContract);

TYPED_TEST_P(GermanContract, UpperCaseKnowsUmlautsAndKeepsTheSharpS) {
    EXPECT_EQ(this->rules.UpperCase(u"größe Ärger ÿ é я"), u"GRÖßE ÄRGER Ÿ É Я");
    EXPECT_EQ(this->rules.UpperCase(u""), u"");
    EXPECT_TRUE(this->rules.SameText(u"GRÖßE", u"größe"));
    EXPECT_FALSE(this->rules.SameText(u"a", u"ab"));
}

TYPED_TEST_P(GermanContract, SortKeysOrderWithoutCaseUmlautsWithTheirBase) {
    const auto key = [&](const char16_t* text) { return this->rules.SortKey(text); };
    EXPECT_EQ(key(u"abc"), key(u"ABC"));
    EXPECT_LT(key(u"apfel"), key(u"Birne"));
    EXPECT_LT(key(u"Äpfel"), key(u"Birne"));
    EXPECT_LT(key(u"Arm"), key(u"ärmel"));
    EXPECT_NE(key(u"Apfel"), key(u"Äpfel"));
    EXPECT_LT(key(u""), key(u"a"));
}

TYPED_TEST_P(GermanContract, DatesAreShortWithTheTimeWhereThereIsOne) {
    EXPECT_EQ(this->rules.DateText(ToDate({2003, 12, 31, 0, 0, 0})), u"31.12.2003");
    EXPECT_EQ(this->rules.DateText(ToDate({2003, 12, 31, 14, 5, 9})), u"31.12.2003 14:05:09");
    EXPECT_EQ(this->rules.DateText(Date{1e12}), u"");
    const auto read = this->rules.ReadDate(u"31.12.2003 14:05:09");
    ASSERT_TRUE(read);
    EXPECT_NEAR(read->days, ToDate({2003, 12, 31, 14, 5, 9}).days, 1e-9);
    EXPECT_FALSE(this->rules.ReadDate(u"kein Datum"));
}

TYPED_TEST_P(GermanContract, NumbersHaveACommaAndGroupsOnlyWhereAsked) {
    EXPECT_EQ(this->rules.NumberText(1234.5), u"1234,5");
    EXPECT_EQ(this->rules.ReadNumber(u"1234,5"), 1234.5);
    EXPECT_FALSE(this->rules.ReadNumber(u"zwölf"));
    EXPECT_EQ(this->rules.GroupedText(1464.84), u"1.465");
    EXPECT_EQ(this->rules.GroupedText(2.5), u"3");
    EXPECT_EQ(this->rules.GroupedText(1.0009765625), u"1");
    EXPECT_EQ(this->rules.GroupedText(5242880), u"5.242.880");
    EXPECT_EQ(this->rules.GroupedText(0.2), u"");
}

REGISTER_TYPED_TEST_SUITE_P(GermanContract, UpperCaseKnowsUmlautsAndKeepsTheSharpS,
                            SortKeysOrderWithoutCaseUmlautsWithTheirBase,
                            DatesAreShortWithTheTimeWhereThereIsOne,
                            NumbersHaveACommaAndGroupsOnlyWhereAsked);

} // namespace talvix
