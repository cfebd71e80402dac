#include "platform/registration.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace talvix {

namespace {

const ServerIdentity kIdentity{
    u"{C}", u"{L}", u"Talvix.Ding", u"Ein Ding",
    true,   131473, true,           {{u"{I}", u"_Ding"}, {u"{E}", u"DingEvents"}}};

bool Has(const std::vector<RegistrationEntry>& entries, std::u16string_view key,
         std::u16string_view name, std::u16string_view text) {
    return std::any_of(entries.begin(), entries.end(), [&](const RegistrationEntry& entry) {
        return entry.key == key && entry.name == name && entry.text == text;
    });
}

} // namespace

TEST(RegistrationEntries, DescribeClassProgramAndLibrary) {
    const auto entries = RegistrationEntries(kIdentity, u"C:\\Programme\\Ding.ocx");
    EXPECT_TRUE(Has(entries, u"CLSID\\{C}\\InprocServer32", u"", u"C:\\Programme\\Ding.ocx"));
    EXPECT_TRUE(Has(entries, u"CLSID\\{C}\\InprocServer32", u"ThreadingModel", u"Apartment"));
    EXPECT_TRUE(Has(entries, u"CLSID\\{C}\\ProgID", u"", u"Talvix.Ding.1"));
    EXPECT_TRUE(Has(entries, u"CLSID\\{C}\\VersionIndependentProgID", u"", u"Talvix.Ding"));
    EXPECT_TRUE(Has(entries, u"CLSID\\{C}\\MiscStatus\\1", u"", u"131473"));
    EXPECT_TRUE(Has(entries, u"Talvix.Ding\\CurVer", u"", u"Talvix.Ding.1"));
    EXPECT_TRUE(Has(entries, u"Talvix.Ding.1\\CLSID", u"", u"{C}"));
    EXPECT_TRUE(Has(entries, u"TypeLib\\{L}\\1.0\\0\\win64", u"", u"C:\\Programme\\Ding.ocx"));
    EXPECT_TRUE(Has(entries, u"TypeLib\\{L}\\1.0\\HELPDIR", u"", u"C:\\Programme"));
}

TEST(RegistrationEntries, NameEachInterfaceWithItsMarshallerAndLibrary) {
    const auto entries = RegistrationEntries(kIdentity, u"C:\\x.dll");
    for (const auto* id : {u"{I}", u"{E}"}) {
        const std::u16string key = std::u16string(u"Interface\\") + id;
        EXPECT_TRUE(Has(entries, key + u"\\ProxyStubClsid32", u"",
                        u"{00020420-0000-0000-C000-000000000046}"));
        EXPECT_TRUE(Has(entries, key + u"\\TypeLib", u"", u"{L}"));
        EXPECT_TRUE(Has(entries, key + u"\\TypeLib", u"Version", u"1.0"));
    }
    EXPECT_TRUE(Has(entries, u"Interface\\{I}", u"", u"_Ding"));
    const auto isShared = [](const RegistrationEntry& entry) {
        return entry.shared && entry.key.starts_with(u"Interface");
    };
    EXPECT_TRUE(std::none_of(entries.begin(), entries.end(), isShared))
        << "each bitness has its own";
}

TEST(RegistrationEntries, AClassThatIsNoControlSaysNothingOfControls) {
    ServerIdentity identity = kIdentity;
    identity.isControl = false;
    identity.is64Bit = false;
    const auto entries = RegistrationEntries(identity, u"C:\\x.dll");
    EXPECT_FALSE(Has(entries, u"CLSID\\{C}\\Control", u"", u""));
    EXPECT_TRUE(Has(entries, u"TypeLib\\{L}\\1.0\\0\\win32", u"", u"C:\\x.dll"));
}

} // namespace talvix
