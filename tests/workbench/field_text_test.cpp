#include "automation/dates.h"
#include "workbench/host/field_text.h"

#include <gtest/gtest.h>

namespace talvix::host {

TEST(FieldText, EveryKindThatAFileKeepsComesBack) {
    const std::u16string lone(1, static_cast<char16_t>(0xDC00));
    const std::u16string high(1, static_cast<char16_t>(0xD800));
    const Value values[] = {u"",
                            Value(u"a" + high),
                            Value(high + u"\uE000"),
                            u" Größe \\ \r\n\t€ \U0001F600 ",
                            u"\u0001",
                            Value(lone),
                            5,
                            -2147483647,
                            2.5,
                            1e300,
                            true,
                            false,
                            Value(ToDate({2003, 12, 31, 14, 5, 0}))};
    for (const Value& value : values) {
        const auto written = WriteFieldText(value);
        ASSERT_TRUE(written);
        EXPECT_EQ(ReadFieldText(*written), value);
        EXPECT_EQ(written->text.find_first_of(u"\r\n\t\u0001"), std::u16string::npos);
    }
    for (const auto* plain :
         {u"\U0001F600", u"\U00010000", u"\U0010FFFF", u"\uE000", u"\uD7FF", u"a b"}) {
        EXPECT_EQ(WriteFieldText(plain)->text, plain);
    }
    EXPECT_EQ(WriteFieldText(Value(u"a" + high))->text, u"a\\uD800");
    EXPECT_EQ(WriteFieldText(Value(high + u"\uE000"))->text, u"\\uD800\uE000");
    EXPECT_FALSE(WriteFieldText(Value()));
    EXPECT_FALSE(WriteFieldText(Nothing()));
}

TEST(FieldText, WhatIsNotOfItsKindIsRefused) {
    const FieldText bad[] = {{u"long", u"1.5"}, {u"long", u"x"},     {u"date", u"gestern"},
                             {u"text", u"\\x"}, {u"text", u"\\u12"}, {u"text", u"\\"},
                             {u"neu", u"1"},    {u"double", u""}};
    for (const FieldText& field : bad) {
        EXPECT_FALSE(ReadFieldText(field));
    }
}

} // namespace talvix::host
