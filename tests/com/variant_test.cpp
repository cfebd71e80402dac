#include "automation/failure.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/com/late_dispatch.h"
#include "platform/win32/com/variant.h"
#include "tests/fakes/expando.h"

#include <gtest/gtest.h>

#include <limits>

namespace talvix {

namespace {

VARIANT Kind(VARTYPE kind) {
    VARIANT variant;
    VariantInit(&variant);
    variant.vt = kind;
    return variant;
}

} // namespace

TEST(Variants, EveryKindOfOursGoesOutAndComesBack) {
    const List list = std::make_shared<const std::vector<Value>>(
        std::vector<Value>{1, u"zwei", Empty(), Date{3}});
    const Value values[] = {Empty(),
                            Null(),
                            Missing(),
                            true,
                            false,
                            std::uint8_t{255},
                            std::int16_t{-32768},
                            2147483647,
                            std::int64_t{1} << 50,
                            1.25F,
                            -0.5,
                            Currency{-12345},
                            Date{38000.5},
                            u"",
                            u"Größe €",
                            u"mit\0Null",
                            ErrorCode{-2147467259},
                            Nothing()};
    for (const Value& value : values) {
        Variant variant;
        ToVariant(value, *variant.Get());
        EXPECT_EQ(ToValue(*variant.Get()), value);
    }
    Variant variant;
    ToVariant(list, *variant.Get());
    const Value back = ToValue(*variant.Get());
    ASSERT_NE(back.If<List>(), nullptr);
    EXPECT_EQ(**back.If<List>(), *list);
}

TEST(Variants, UnsignedKindsBecomeTheSmallestSignedOnesThatHoldThem) {
    VARIANT variant = Kind(VT_I1);
    variant.cVal = -5;
    EXPECT_EQ(ToValue(variant), Value(std::int16_t{-5}));
    variant = Kind(VT_UI2);
    variant.uiVal = 65535;
    EXPECT_EQ(ToValue(variant), Value(65535));
    variant = Kind(VT_UI4);
    variant.ulVal = 4294967295U;
    EXPECT_EQ(ToValue(variant), Value(std::int64_t{4294967295}));
    variant = Kind(VT_UI8);
    variant.ullVal = std::numeric_limits<ULONGLONG>::max();
    EXPECT_EQ(ToValue(variant), Value(18446744073709551615.0));
    variant = Kind(VT_UINT);
    variant.uintVal = 7;
    EXPECT_EQ(ToValue(variant), Value(std::int64_t{7}));
    variant = Kind(VT_INT);
    variant.intVal = -7;
    EXPECT_EQ(ToValue(variant), Value(-7));
}

TEST(Variants, DecimalsBecomeDoubles) {
    VARIANT variant;
    VariantInit(&variant);
    VarDecFromR8(12.5, &variant.decVal);
    variant.vt = VT_DECIMAL;
    EXPECT_EQ(ToValue(variant), Value(12.5));
}

TEST(Variants, ReferencesAreFollowedAndNullOnesAreEmpty) {
    LONG number = 42;
    VARIANT inner = Kind(VT_BYREF | VT_I4);
    inner.plVal = &number;
    VARIANT outer = Kind(VT_BYREF | VT_VARIANT);
    outer.pvarVal = &inner;
    EXPECT_EQ(ToValue(outer), Value(42));
    for (const VARTYPE kind : {VT_I4, VT_BSTR, VT_VARIANT, VT_DISPATCH, VT_DATE}) {
        VARIANT null = Kind(static_cast<VARTYPE>(kind | VT_BYREF));
        null.byref = nullptr;
        EXPECT_EQ(ToValue(null), Value());
    }
    VARIANT text = Kind(VT_BSTR);
    text.bstrVal = nullptr;
    EXPECT_EQ(ToValue(text), Value(u""));
}

TEST(Variants, AReferenceToItselfAndARecordAreRefused) {
    VARIANT self = Kind(VT_BYREF | VT_VARIANT);
    self.pvarVal = &self;
    EXPECT_THROW(ToValue(self), Failure);
    EXPECT_THROW(ToValue(Kind(VT_RECORD)), Failure);
    EXPECT_THROW(ToValue(Kind(77)), Failure);
}

TEST(Variants, ArraysOfTwoDimensionsAreListsOfLists) {
    SAFEARRAYBOUND bounds[2] = {{2, 1}, {3, 0}};
    SAFEARRAY* array = SafeArrayCreate(VT_I2, 2, bounds);
    for (LONG row = 1; row <= 2; ++row) {
        for (LONG column = 0; column < 3; ++column) {
            LONG place[2] = {row, column};
            SHORT value = static_cast<SHORT>(row * 10 + column);
            SafeArrayPutElement(array, place, &value);
        }
    }
    VARIANT variant = Kind(VT_ARRAY | VT_I2);
    variant.parray = array;
    const Value rows = ToValue(variant);
    ASSERT_EQ((*rows.If<List>())->size(), 2U);
    const List second = *(**rows.If<List>())[1].If<List>();
    EXPECT_EQ((*second)[2], Value(std::int16_t{22}));
    SafeArrayDestroy(array);
    variant.parray = nullptr;
    EXPECT_TRUE((*ToValue(variant).If<List>())->empty());
}

TEST(Variants, WriteBackKeepsTheKindOfTheTarget) {
    VARIANT_BOOL truth = VARIANT_FALSE;
    VARIANT variant = Kind(VT_BYREF | VT_BOOL);
    variant.pboolVal = &truth;
    WriteBack(1, variant);
    EXPECT_EQ(truth, VARIANT_TRUE);
    WriteBack(u"kein Wahrheitswert", variant);
    EXPECT_EQ(truth, VARIANT_TRUE);
    Bstr text(u"alt");
    BSTR raw = SysAllocString(L"alt");
    variant = Kind(VT_BYREF | VT_BSTR);
    variant.pbstrVal = &raw;
    WriteBack(5, variant);
    EXPECT_EQ(Bstr::View(raw), u"5");
    SysFreeString(raw);
}

TEST(Variants, AnOwnObjectComesBackAsItself) {
    const Object own = std::make_shared<Expando>(u"Eigenes");
    Variant variant;
    ToVariant(own, *variant.Get());
    EXPECT_EQ(variant.Get()->vt, VT_DISPATCH);
    EXPECT_EQ(ToValue(*variant.Get()), Value(own));
}

} // namespace talvix
