#pragma once

#include "platform/registry.h"

#include <gtest/gtest.h>

namespace talvix {

/// What every `Registry` keeps to. A rig offers Port() and Key(), a key of the user that is not
/// there.
template <typename Rig>
class RegistryContract : public testing::Test {
protected:
    Rig rig;
};
TYPED_TEST_SUITE_P(RegistryContract);

TYPED_TEST_P(RegistryContract, TextsAndNumbersComeBackWithTheirTypes) {
    Registry& registry = this->rig.Port();
    EXPECT_FALSE(registry.Read(kCurrentUser, this->rig.Key(), u"Text"));
    registry.WriteText(kCurrentUser, this->rig.Key(), u"Text", u"Größe");
    registry.WriteNumber(kCurrentUser, this->rig.Key(), u"Zahl", 0xFFFFFFFFU);
    const auto text = registry.Read(kCurrentUser, this->rig.Key(), u"TEXT");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->type, kRegistryText);
    EXPECT_EQ(text->text.substr(0, 5), u"Größe");
    const auto number = registry.Read(kCurrentUser, this->rig.Key(), u"Zahl");
    ASSERT_TRUE(number);
    EXPECT_EQ(number->type, kRegistryNumber);
    EXPECT_EQ(number->number, 0xFFFFFFFFU);
}

TYPED_TEST_P(RegistryContract, AnEmptyTextIsThereAndOverwritesANumber) {
    Registry& registry = this->rig.Port();
    registry.WriteNumber(kCurrentUser, this->rig.Key(), u"Wert", 5);
    registry.WriteText(kCurrentUser, this->rig.Key(), u"Wert", u"");
    const auto value = registry.Read(kCurrentUser, this->rig.Key(), u"Wert");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->type, kRegistryText);
    EXPECT_EQ(value->text.find_first_not_of(u'\0'), std::u16string::npos);
    EXPECT_FALSE(registry.Read(kCurrentUser, this->rig.Key() + u"\\tiefer", u"Wert"));
}

REGISTER_TYPED_TEST_SUITE_P(RegistryContract, TextsAndNumbersComeBackWithTheirTypes,
                            AnEmptyTextIsThereAndOverwritesANumber);

} // namespace talvix
