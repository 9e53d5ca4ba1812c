#include "platform/basic/Variant.h"

#include <gtest/gtest.h>

#include "platform/basic/ErrorOf.h"
#include "platform/basic/Printers.h"
#include "platform/basic/Text.h"

namespace tarmel::basic {
using namespace Qt::StringLiterals;
namespace {

const Date spring = Date::of(2010, 3, 15);

TEST(VariantText, FollowsTheSpanishForms) {
    EXPECT_EQ(Variant().toText(), u""_s);
    EXPECT_EQ(Variant(true).toText(), u"Verdadero"_s);
    EXPECT_EQ(Variant(false).toText(), u"Falso"_s);
    EXPECT_EQ(Variant(-12).toText(), u"-12"_s);
    EXPECT_EQ(Variant(1.25).toText(), u"1,25"_s);
    EXPECT_EQ(Variant(spring).toText(), u"15/03/2010"_s);
    EXPECT_EQ(Variant(u"Ñ"_s).toText(), u"Ñ"_s);
    EXPECT_EQ(errorOf([] { (void)Variant(Null{}).toText(); }), 94);
    EXPECT_EQ(Variant(Null{}).joined(), u""_s);
}

TEST(VariantConversion, NumbersDatesAndTruth) {
    EXPECT_EQ(Variant(true).toLong(), -1);
    EXPECT_EQ(Variant().toLong(), 0);
    EXPECT_EQ(Variant(u"2,5"_s).toInteger(), 2);
    EXPECT_EQ(Variant(spring).toDouble(), spring.serial());
    EXPECT_EQ(Variant(u"15/03/2010"_s).toDate(), spring);
    EXPECT_EQ(Variant(spring.serial()).toDate(), spring);
    EXPECT_TRUE(Variant(u"verdadero"_s).toBool());
    EXPECT_TRUE(Variant(u"-1"_s).toBool());
    EXPECT_FALSE(Variant(u"False"_s).toBool());
    EXPECT_FALSE(Variant().toBool());
    EXPECT_TRUE(Variant(2).toBool());
}

TEST(VariantConversion, RefusesWhatCannotBe) {
    EXPECT_EQ(errorOf([] { (void)Variant(Null{}).toLong(); }), 94);
    EXPECT_EQ(errorOf([] { (void)Variant(Null{}).toBool(); }), 94);
    EXPECT_EQ(errorOf([] { (void)Variant(Null{}).toDate(); }), 94);
    EXPECT_EQ(errorOf([] { (void)Variant(u""_s).toLong(); }), 13);
    EXPECT_EQ(errorOf([] { (void)Variant(u"x"_s).toBool(); }), 13);
    EXPECT_EQ(errorOf([] { (void)Variant(40000).toInteger(); }), 6);
    EXPECT_EQ(errorOf([] { (void)Variant(qint64{1} << 40).toLong(); }), 6);
    EXPECT_EQ(errorOf([] { (void)Variant(3e6).toDate(); }), 6);
}

struct OrderRow {
    Variant a, b;
    bool equal, less, different;
};

class VariantOrder : public testing::TestWithParam<OrderRow> {};

TEST_P(VariantOrder, ComparesByTheTypesOfBoth) {
    const auto& [a, b, equal, less, different] = GetParam();
    EXPECT_EQ(testsEqual(a, b), equal);
    EXPECT_EQ(testsLess(a, b), less);
    EXPECT_EQ(testsDifferent(a, b), different);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, VariantOrder,
    testing::Values(OrderRow{Null{}, Null{}, false, false, false}, OrderRow{Null{}, 1, false, false, false},
                    OrderRow{u"a"_s, Null{}, false, false, false}, OrderRow{1, 1.0, true, false, false},
                    OrderRow{-1, true, true, false, false},
                    OrderRow{spring, spring.serial(), true, false, false},
                    OrderRow{12, u"12"_s, false, true, true}, OrderRow{u"12"_s, 12, false, false, true},
                    OrderRow{9999, u""_s, false, true, true}, OrderRow{u"10"_s, u"9"_s, false, true, true},
                    OrderRow{u"a"_s, u"B"_s, false, false, true}, OrderRow{u"a"_s, u"á"_s, false, true, true},
                    OrderRow{Variant(), 0, true, false, false},
                    OrderRow{Variant(), u""_s, true, false, false},
                    OrderRow{Variant(), Variant(), true, false, false}));

TEST(VariantTruth, TextIsConvertedForATypedBoolean) {
    for (const QString& text : {u"Verdadero"_s, u"True"_s, u"-1"_s, u"1"_s})
        EXPECT_TRUE(testsTrue(text));
    EXPECT_FALSE(testsTrue(u"Falso"_s));
    EXPECT_FALSE(testsTrue(u"0"_s));
    EXPECT_TRUE(testsTrue(true));
    EXPECT_TRUE(testsTrue(-1));
    EXPECT_FALSE(testsTrue(1));
    EXPECT_FALSE(testsTrue(Null{}));
    EXPECT_FALSE(testsTrue(Variant()));
    EXPECT_EQ(errorOf([] { (void)testsTrue(u"quizá"_s); }), 13);
}

TEST(RuntimeErrors, BearTheRuntimesTexts) {
    const RuntimeError overflow(6);
    EXPECT_EQ(overflow.number(), 6);
    EXPECT_EQ(overflow.description(), u"Desbordamiento"_s);
    EXPECT_EQ(overflow.source(), u"Tarmel"_s);
    EXPECT_EQ(errorText(94), u"Uso no válido de Null"_s);
    EXPECT_EQ(errorText(3021), u""_s);
    EXPECT_FALSE(resumeNext([] { throw RuntimeError(5); }));
    EXPECT_TRUE(resumeNext([] {}));
}

}  // namespace
}  // namespace tarmel::basic
