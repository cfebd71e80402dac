#include "automation/coercion.h"
#include "automation/dates.h"
#include "automation/event_source.h"
#include "automation/failure.h"
#include "automation/late.h"
#include "automation/member_table.h"
#include "automation/resume_next.h"
#include "automation/text.h"
#include "tests/fakes/expando.h"
#include "tests/fakes/fake_culture.h"
#include "tests/fakes/fake_platform.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>

namespace talvix {

TEST(Text, TrimTakesBlanksOnly) {
    EXPECT_EQ(Trim(u"  a b "), u"a b");
    EXPECT_EQ(Trim(u"\ta\t"), u"\ta\t");
    EXPECT_EQ(Trim(u"   "), u"");
    EXPECT_EQ(Trim(u""), u"");
}

TEST(Text, LeftAndMidKeepToTheText) {
    EXPECT_EQ(Left(u"abc", 2), u"ab");
    EXPECT_EQ(Left(u"abc", 9), u"abc");
    EXPECT_EQ(Mid(u"abc", 3), u"c");
    EXPECT_EQ(Mid(u"abc", 4), u"");
    EXPECT_EQ(Mid(u"abc", 0), u"");
}

TEST(Text, ReplaceTakesEveryOccurrenceAndNothingForAnEmptySearch) {
    EXPECT_EQ(Replace(u"a\\\\b\\\\c", u"\\\\", u"\\"), u"a\\b\\c");
    EXPECT_EQ(Replace(u"abc", u"", u"x"), u"abc");
    EXPECT_EQ(ReplaceNoCase(FakeCulture(), u"P:\\PROJ\\Größe", u"p:\\proj", u""), u"\\Größe");
    EXPECT_EQ(ReplaceNoCase(FakeCulture(), u"P:\\Proj", u"", u"x"), u"P:\\Proj");
}

TEST(Text, LeadingNumberReadsWhatItCan) {
    EXPECT_EQ(LeadingNumber(u"10"), 10);
    EXPECT_EQ(LeadingNumber(u" 9 "), 9);
    EXPECT_EQ(LeadingNumber(u""), 0);
    EXPECT_EQ(LeadingNumber(u"abc"), 0);
    EXPECT_EQ(LeadingNumber(u"12ab"), 12);
}

TEST(Text, NumbersAreFilledUpAndSpelled) {
    EXPECT_EQ(PaddedText(7, 2), u"07");
    EXPECT_EQ(PaddedText(0, 4), u"0000");
    EXPECT_EQ(PaddedText(12345, 4), u"12345");
    EXPECT_EQ(HexText(0x0012ABCDU), u"0012ABCD");
    EXPECT_EQ(HexText(0xFFFFFFFFU), u"FFFFFFFF");
}

TEST(Text, Utf8GoesBothWaysAndMendsWhatIsBroken) {
    const std::u16string text = u"Größe € \U0001F600";
    EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
    const std::u16string edges = u"\u007F\u0080\u07FF\u0800\uFFFD\U00010000\U0010FFFF";
    EXPECT_EQ(ToUtf8(edges),
              "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
    EXPECT_EQ(FromUtf8(ToUtf8(edges)), edges);
    EXPECT_EQ(FromUtf8("a\xFF"), u"a\uFFFD");
    EXPECT_EQ(FromUtf8("\xE2\x82"), u"\uFFFD\uFFFD");
    EXPECT_EQ(FromUtf8("\xC0\x80"), u"\uFFFD\uFFFD");
    const std::u16string lone(1, static_cast<char16_t>(0xD800));
    EXPECT_EQ(ToUtf8(lone), "\xEF\xBF\xBD");
}

TEST(Dates, AreDaysSinceThe30thOfDecember1899) {
    EXPECT_EQ(ToDate({1899, 12, 30, 0, 0, 0}).days, 0);
    EXPECT_EQ(ToDate({1899, 12, 30, 12, 0, 0}).days, 0.5);
    EXPECT_EQ(ToDate({2000, 1, 1, 12, 0, 0}).days, 36526.5);
    EXPECT_EQ(ToDate({1899, 12, 29, 6, 0, 0}).days, -1.25);
    EXPECT_EQ(*ToCivilTime(Date{-1.25}), (CivilTime{1899, 12, 29, 6, 0, 0}));
    EXPECT_EQ(*ToCivilTime(Date{36526.999999}), (CivilTime{2000, 1, 2, 0, 0, 0}));
    EXPECT_EQ(*ToCivilTime(Date{-657434}), (CivilTime{100, 1, 1, 0, 0, 0}));
    EXPECT_EQ(*ToCivilTime(Date{2958465.5}), (CivilTime{9999, 12, 31, 12, 0, 0}));
    EXPECT_FALSE(ToCivilTime(Date{-657435}));
    EXPECT_FALSE(ToCivilTime(Date{2958466}));
    EXPECT_FALSE(ToCivilTime(Date{1e9}));
    EXPECT_FALSE(ToCivilTime(Date{-1e300}));
}

TEST(Dates, IsoTextIsReadBackAndNothingElseIs) {
    const Date date = ToDate({2003, 12, 31, 14, 5, 0});
    EXPECT_EQ(IsoText(date), u"2003-12-31 14:05:00");
    EXPECT_EQ(ReadIsoText(u"2003-12-31 14:05:00")->days, date.days);
    EXPECT_TRUE(ReadIsoText(u"2003-12-31"));
    EXPECT_EQ(IsoText(Date{2958465.5}), u"9999-12-31 12:00:00");
    EXPECT_EQ(IsoText(Date{2958465.9999999}), u"") << "would be rounded into the next year";
    EXPECT_TRUE(ReadIsoText(u"2003-12-31 23:59:59"));
    for (const auto* bad :
         {u"", u"2003-02-30", u"31.12.2003", u"2003-12-31 24:00:00", u"2003-12-31 10:60:00",
          u"2003-12-31 10:00:60", u"2003-12-31x", u"2003-1-1"}) {
        EXPECT_FALSE(ReadIsoText(bad)) << ToUtf8(bad);
    }
}

TEST(Late, WhatIsNoObjectGivesNone) {
    EXPECT_THROW(Late(Value(5)).AsObject(), Failure);
    EXPECT_THROW(Late(Nothing()).AsObject(), Failure);
    EXPECT_THROW(Late().AsObject(), Failure);
}

TEST(Coercion, TextFormsAreTheUsers) {
    const FakeCulture german;
    EXPECT_EQ(ToText(Value(1.5), german), u"1,5");
    EXPECT_EQ(ToText(ToDate({2003, 12, 31, 14, 5, 0}), german), u"31.12.2003 14:05:00");
    EXPECT_EQ(ToText(true, german), u"True");
    EXPECT_EQ(ToText(Null(), german), u"");
    EXPECT_EQ(ToText(std::int64_t{12345678901234}, german), u"12345678901234");
    EXPECT_THROW(ToText(Nothing(), german), Failure);
}

TEST(Coercion, NumbersRoundHalvesToEvenAndOverflowIsAFailure) {
    const FakeCulture german;
    EXPECT_EQ(ToLong(2.5, german), 2);
    EXPECT_EQ(ToLong(3.5, german), 4);
    EXPECT_EQ(ToLong(u"12", german), 12);
    EXPECT_EQ(ToLong(true, german), -1);
    EXPECT_EQ(ToLong(-2147483648.0, german), INT32_MIN);
    EXPECT_EQ(ToLong(2147483647.0, german), INT32_MAX);
    EXPECT_THROW(ToLong(2147483648.0, german), Failure);
    EXPECT_THROW(ToLong(-2147483649.0, german), Failure);
    EXPECT_THROW(ToLong(1e10, german), Failure);
    EXPECT_THROW(ToLong(u"zwölf", german), Failure);
    EXPECT_TRUE(ToBoolean(u"TRUE", german));
    EXPECT_FALSE(ToBoolean(Empty(), german));
    EXPECT_THROW(ToBoolean(u"vielleicht", german), Failure);
}

TEST(Coercion, AnObjectGivesItsDefaultMember) {
    class Wrapper : public Expando {
    public:
        Wrapper() : Expando(u"Wrapper") {}
        Value Invoke(MemberId, unsigned, const Arguments&) override { return u"innen"; }
    };
    EXPECT_EQ(ToText(std::make_shared<Wrapper>(), FakeCulture()), u"innen");
}

TEST(ResumeNext, SkipsAFailingStatementNotesItAndGoesOn) {
    FakeTrace trace;
    ResumeNext next{trace, u"Schritte"};
    int value = 1;
    EXPECT_FALSE(next([&] { value = []() -> int { throw Failure(5, u"kaputt"); }(); }));
    EXPECT_EQ(value, 1);
    EXPECT_TRUE(next([&] { value = 2; }));
    EXPECT_EQ(value, 2);
    EXPECT_FALSE(next.If([]() -> bool { throw std::runtime_error("x"); }));
    EXPECT_FALSE(next([] { throw 42; }));
    ASSERT_EQ(trace.notes.size(), 3U);
    EXPECT_EQ(trace.notes[0], u"Schritte: skipped: kaputt");
}

TEST(Late, ChainsReadAndWriteByName) {
    auto inner = std::make_shared<Expando>(u"Inner");
    inner->With(u"Caption", u"alt");
    auto outer = std::make_shared<Expando>(u"Outer");
    outer->With(u"Child", inner);
    const Late late{Value(outer)};
    late[u"child"].Set(u"CAPTION", u"neu");
    EXPECT_EQ(late[u"Child"].Call(u"Caption"), Value(u"neu"));
    EXPECT_THROW(late[u"Child"][u"Caption"][u"More"], Failure);
    EXPECT_THROW(Late{Nothing()}[u"x"], Failure);
}

TEST(Late, AnUnknownNameIsToldInTheFailure) {
    const Late late{Value(std::make_shared<Expando>(u"Page"))};
    try {
        late[u"Fehlt"];
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Number(), failure_number::kUnknownName);
        EXPECT_EQ(failure.Text(), u"Page has no member \"Fehlt\"");
    }
}

TEST(Late, AnObjectIsPutByReferenceFirstThenByValue) {
    class Picky : public Expando {
    public:
        Picky() : Expando(u"Picky") {}
        Value Invoke(MemberId member, unsigned access, const Arguments& arguments) override {
            ways.push_back(access);
            if (access == access::kPutReference) {
                throw Failure(failure_number::kMemberNotFound, u"no put by reference");
            }
            return Expando::Invoke(member, access, arguments);
        }
        std::vector<unsigned> ways;
    };
    auto picky = std::make_shared<Picky>();
    picky->With(u"Item", Empty());
    const Value child = std::make_shared<Expando>(u"Child");
    Late(Value(picky)).Set(u"Item", child);
    EXPECT_EQ(picky->ways, (std::vector<unsigned>{access::kPutReference, access::kPut}));
    EXPECT_EQ(picky->Field(u"Item"), child);
}

namespace {

class CountingSink : public EventSink {
public:
    explicit CountingSink(std::function<void()> action = [] {}) : action_(std::move(action)) {}
    void OnEvent(std::u16string_view, std::span<Value> arguments) override {
        ++count;
        if (!arguments.empty()) {
            arguments[0] = true;
        }
        action_();
    }
    int count = 0;

private:
    std::function<void()> action_;
};

} // namespace

TEST(EventSource, ChangesByReferenceAndEndsWithTheSubscription) {
    EventSource source;
    auto sink = std::make_shared<CountingSink>();
    Subscription subscription = source.Connect(sink);
    std::array<Value, 1> arguments{false};
    source.Raise(u"Before", arguments);
    EXPECT_EQ(arguments[0], Value(true));
    subscription.reset();
    source.Raise(u"Before", arguments);
    EXPECT_EQ(sink->count, 1);
    EXPECT_FALSE(source.HasSinks());
}

TEST(EventSource, DeliversToTheSinksOfTheMomentWhateverTheyDo) {
    auto source = std::make_unique<EventSource>();
    Subscription second;
    auto other = std::make_shared<CountingSink>();
    auto first = std::make_shared<CountingSink>([&] {
        second.reset();
        throw std::runtime_error("own trouble");
    });
    const Subscription kept = source->Connect(first);
    second = source->Connect(other);
    source->Raise(u"Click", {});
    source->Raise(u"Click", {});
    EXPECT_EQ(first->count, 2);
    EXPECT_EQ(other->count, 1);
    source.reset();
}

namespace {

class Sums : public Tabled<Sums> {
public:
    static const MemberTable<Sums>& Members() {
        static const MemberTable<Sums> members(
            {{{u"Sum", access::kMethod, u"first second [third]"},
              [](Sums&, const MemberCall& call) -> Value {
                  const FakeCulture german;
                  const std::int32_t third = call.At(2).IsAbsent() ? 0 : ToLong(call.At(2), german);
                  return ToLong(call.At(0), german) * 100 + ToLong(call.At(1), german) * 10 + third;
              }},
             {{u"Fixed", access::kGet, u""}, [](Sums&, const MemberCall&) -> Value { return 7; }}});
        return members;
    }
    std::u16string TypeName() const override { return u"Sums"; }
};

} // namespace

TEST(MemberTable, NamedAndOptionalArgumentsFindTheirPlaces) {
    Sums sums;
    const std::array<Value, 3> three{1, 2, 3};
    EXPECT_EQ(InvokeByName(sums, u"SUM", access::kMethod, {three, {}}), Value(123));
    const std::array<Value, 2> two{1, 2};
    EXPECT_EQ(InvokeByName(sums, u"Sum", access::kMethod, {two, {}}), Value(120));
    const std::array<std::u16string_view, 2> names{u"third", u"SECOND"};
    EXPECT_EQ(InvokeByName(sums, u"Sum", access::kMethod, {three, names}), Value(132));
}

TEST(MemberTable, WhatIsMissingUnknownOrReadOnlyIsToldByName) {
    Sums sums;
    const std::array<Value, 4> four{1, 2, 3, 4};
    const std::array<std::u16string_view, 1> wrong{u"fourth"};
    const std::span<const Value> values = four;
    EXPECT_THROW(InvokeByName(sums, u"Sum", access::kMethod, {values.first(1), {}}), Failure);
    EXPECT_THROW(InvokeByName(sums, u"Sum", access::kMethod, {values.first(2), wrong}), Failure);
    EXPECT_THROW(InvokeByName(sums, u"Sum", access::kMethod, {four, {}}), Failure);
    EXPECT_THROW(InvokeByName(sums, u"Fixed", access::kPut, {values.first(1), {}}), Failure);
    EXPECT_THROW(sums.Invoke(99, access::kGet, {}), Failure);
    EXPECT_THROW(sums.Invoke(-5, access::kGet, {}), Failure);
}

TEST(Coercion, EveryKindBecomesEveryOtherOrIsRefused) {
    const FakeCulture culture;
    const Value kinds[] = {Empty(),
                           Null(),
                           Missing(),
                           true,
                           std::uint8_t{7},
                           std::int16_t{-7},
                           70000,
                           std::int64_t{1} << 40,
                           1.5F,
                           -2.5,
                           Currency{15000},
                           Date{38000.5},
                           u"12,5",
                           u"Text",
                           Nothing(),
                           Value(std::make_shared<const std::vector<Value>>()),
                           ErrorCode{5}};
    int answered = 0;
    const auto answers = [&](auto&& convert) {
        for (const Value& kind : kinds) {
            try {
                convert(kind);
                ++answered;
            } catch (const Failure& failure) {
                EXPECT_FALSE(failure.Text().empty());
            }
        }
    };
    answers([&](const Value& value) { return ToText(value, culture); });
    answers([&](const Value& value) { return ToNumber(value, culture); });
    answers([&](const Value& value) { return ToLong(value, culture); });
    answers([&](const Value& value) { return ToBoolean(value, culture); });
    answers([&](const Value& value) { return ToDateValue(value, culture); });
    EXPECT_GT(answered, 50);
    EXPECT_LT(answered, 70);
}

TEST(Dates, TextsThatAreNoneAreNoDates) {
    for (const auto* text :
         {u"", u"2003", u"2003-12-31", u"2003-12-31 14:05:00", u"2003-12-31 14:05:00x",
          u"2003-13-31", u"2003-02-29", u"2004-02-29", u"2003-00-10", u"2003-1-1", u"03-12-31",
          u"2003-12-31 24:00:00", u"2003-12-31 14:60:00", u"2003-12-31 14:05:61", u"2003/12/31",
          u"99999-12-31", u"0001-01-01", u"2003-12-31T14:05:00"}) {
        const auto date = ReadIsoText(text);
        if (date) {
            EXPECT_EQ(ReadIsoText(IsoText(*date)), date) << ToUtf8(text);
        }
    }
    EXPECT_FALSE(ReadIsoText(u"2003-02-29"));
    EXPECT_TRUE(ReadIsoText(u"2004-02-29"));
    EXPECT_FALSE(ToCivilTime(Date{1e12}));
    EXPECT_FALSE(ToCivilTime(Date{-1e12}));
}

} // namespace talvix
