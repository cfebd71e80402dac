#include "automation/dates.h"
#include "automation/failure.h"
#include "automation/late.h"
#include "automation/text.h"
#include "tests/fakes/fake_culture.h"
#include "tests/proof/proof.h"
#include "workbench/host/mail_coding.h"
#include "workbench/host/mail_header.h"
#include "workbench/host/mail_item.h"
#include "workbench/host/message_storage.h"
#include "workbench/host/mime_reader.h"

#include <gtest/gtest.h>

#include <map>

namespace talvix::host {

namespace {

constexpr const char* kMail =
    "From: =?utf-8?q?J=C3=B6rg_M=C3=BCller?= <joerg@example.org>\r\n"
    "To: \"Muster, Erika\" <erika@example.org>, bau@example.org\r\n"
    "Cc: =?iso-8859-1?Q?S=F6hne?= <s@example.org>\r\n"
    "Subject: =?utf-8?B?QW5nZWJvdCBmw7xy?=\r\n =?utf-8?Q?_Gr=C3=B6=C3=9Fe_5?= und mehr\r\n"
    "Date: Fri, 20 Nov 2026 10:15:30 +0100\r\n"
    "MIME-Version: 1.0\r\n"
    "Content-Type: multipart/mixed;\r\n boundary=\"aussen; grenze\"\r\n"
    "\r\n"
    "Vorrede\r\n"
    "--aussen; grenze\r\n"
    "Content-Type: multipart/alternative; boundary=innen\r\n"
    "\r\n"
    "--innen\r\n"
    "Content-Type: text/plain; charset=iso-8859-15\r\n"
    "Content-Transfer-Encoding: quoted-printable\r\n"
    "\r\n"
    "Gr=FC=DFe, 5 =A4 und eine lange=\r\n Zeile\r\n"
    "--innen\r\n"
    "Content-Type: text/html; charset=utf-8\r\n"
    "\r\n"
    "<b>Gr\xC3\xBC\xC3\x9F"
    "e</b>\r\n"
    "--innen--\r\n"
    "--aussen; grenze\r\n"
    "Content-Type: application/pdf; name=\"egal.pdf\"\r\n"
    "Content-Disposition: attachment; filename*0*=utf-8'de'Pl%C3%A4ne%20;\r\n"
    " filename*1*=%E2%82%AC.pdf\r\n"
    "Content-Transfer-Encoding: base64\r\n"
    "\r\n"
    "SGFs\r\nbG8=\r\n"
    "--aussen; grenze\r\n"
    "Content-Type: text/plain; name=\"=?utf-8?Q?Notiz_=C3=84.txt?=\"\r\n"
    "Content-Disposition: attachment\r\n"
    "\r\n"
    "roh\r\n"
    "--aussen; grenze\r\n"
    "Content-Type: message/rfc822\r\n"
    "\r\n"
    "Subject: Innen\r\n\r\nText\r\n"
    "--aussen; grenze--\r\nNachrede\r\n";

} // namespace

TEST(MimeReader, ReadsHeadersBodiesAndAttachmentsOfANestedMail) {
    const Mail mail = ReadMime(kMail);
    EXPECT_EQ(mail.subject, u"Angebot für Größe 5 und mehr");
    ASSERT_TRUE(mail.from);
    EXPECT_EQ(mail.from->name, u"Jörg Müller");
    EXPECT_EQ(mail.from->address, u"joerg@example.org");
    ASSERT_EQ(mail.to.size(), 2U);
    EXPECT_EQ(mail.to[0].name, u"Muster, Erika");
    EXPECT_EQ(mail.to[1].address, u"bau@example.org");
    EXPECT_EQ(mail.cc.at(0).name, u"Söhne");
    EXPECT_EQ(mail.sent, 1795166130);
    EXPECT_EQ(mail.text, u"Grüße, 5 € und eine lange Zeile");
    EXPECT_EQ(mail.html, u"<b>Grüße</b>");
    ASSERT_EQ(mail.attachments.size(), 3U);
    EXPECT_EQ(mail.attachments[0].fileName, u"Pläne €.pdf");
    EXPECT_EQ(mail.attachments[0].content, "Hallo");
    EXPECT_EQ(mail.attachments[0].mediaType, u"application/pdf");
    EXPECT_EQ(mail.attachments[1].fileName, u"Notiz Ä.txt");
    EXPECT_EQ(mail.attachments[1].content, "roh");
    EXPECT_EQ(mail.attachments[2].fileName, u"Innen.eml");
}

TEST(MimeReader, TakesWhatIsMalformedAsFarAsItGoes) {
    EXPECT_EQ(ReadMime("Subject: nur Kopf").subject, u"nur Kopf");
    EXPECT_EQ(ReadMime("Subject: =?utf-8?B?kaputt\n\nText").subject, u"=?utf-8?B?kaputt");
    EXPECT_EQ(ReadMime("Subject: \xFC\n\nText").subject, u"ü");
    EXPECT_EQ(ReadMime("A: b\nContent-Type: multipart/mixed; boundary=x\n\n--x\n\nEnde fehlt").text,
              u"Ende fehlt");
    EXPECT_EQ(ReadMime("A: b\nContent-Type: multipart/mixed\n\nText").attachments.size(), 1U);
    EXPECT_FALSE(ReadMime("Date: gestern\n\n").sent);
    EXPECT_THROW(ReadMime(""), Failure);
    EXPECT_THROW(ReadMime("kein Kopf\n\nText"), Failure);
}

TEST(MimeReader, PartsThatNestTooDeepArePassedOver) {
    std::string message = "A: b\n";
    for (int depth = 0; depth < 200; ++depth) {
        message += "Content-Type: multipart/mixed; boundary=b" + std::to_string(depth) + "\n\n--b" +
                   std::to_string(depth) + "\n";
    }
    EXPECT_EQ(ReadMime(message + "\nText").text, u"");
}

TEST(MailCoding, BlanksAtBothEndsGo) {
    EXPECT_EQ(TrimAscii("  a b \r\n"), "a b");
    EXPECT_EQ(TrimAscii("\t "), "");
}

TEST(MailCoding, OnlyTwoHexadecimalDigitsAreAByte) {
    EXPECT_EQ(DecodeQuotedPrintable("=4A=0a=G4=4G=4"), "J\n=G4=4G=4");
    EXPECT_EQ(DecodePercent("%0A%fF%4"), "\n\xFF%4");
}

TEST(MimeReader, ANameMayTellItsCharsetAndNoLanguage) {
    const Mail mail =
        ReadMime("Content-Type: application/pdf\r\n"
                 "Content-Disposition: attachment; filename*=utf-8''Gr%C3%B6%C3%9Fe.pdf\r\n"
                 "\r\nx");
    ASSERT_EQ(mail.attachments.size(), 1U);
    EXPECT_EQ(mail.attachments[0].fileName, u"Größe.pdf");
}

TEST(ReadMailDate, KnowsZonesAndRefusesWhatIsNoDate) {
    EXPECT_EQ(ReadMailDate("Thu, 1 Jan 1970 00:00:00 GMT"), 0);
    EXPECT_EQ(ReadMailDate("1 Mar 2024 00:00 -0230"), 1709260200);
    EXPECT_EQ(ReadMailDate("29 Feb 2024 12:00:00 +0000"), 1709208000);
    EXPECT_EQ(ReadMailDate("31 Jan 2023 00:00:00 +0000"), 1675123200);
    EXPECT_EQ(ReadMailDate("1 Dec 2023 00:00:00 +0000"), 1701388800);
    EXPECT_FALSE(ReadMailDate("32 Jan 2024 00:00:00 +0000"));
    EXPECT_FALSE(ReadMailDate(""));
    for (const char* good :
         {"1 Jan 1900 00:00:00 +0000", "31 Dec 9999 23:59:60 +0000", "1 Jan 2024 00:00 +0000"}) {
        EXPECT_TRUE(ReadMailDate(good)) << good;
    }
    for (const char* bad :
         {"0 Jan 2024 00:00:00 +0000", "1 Jan 1899 00:00:00 +0000", "1 Jan 10000 00:00:00 +0000",
          "1 Jan 2024 24:00:00 +0000", "1 Jan 2024 00:60:00 +0000", "1 Jan 2024 00:00:61 +0000",
          "1 Foo 2024 00:00:00 +0000"}) {
        EXPECT_FALSE(ReadMailDate(bad)) << bad;
    }
}

TEST(MailItem, SavesItselfAndItsAttachmentsAndDiscardsDeletions) {
    const FakeCulture culture;
    std::vector<std::u16string> saved;
    const Late item(
        MakeMailItem(ReadMime(kMail),
                     {[&](const Mail& mail, std::u16string_view path) {
                          saved.push_back(std::u16string(path) + u" with " +
                                          std::u16string(mail.attachments.size(), u'*'));
                      },
                      [&](std::u16string_view path, std::string_view content) {
                          saved.push_back(std::u16string(path) + u": " + FromUtf8(content));
                      }},
                     culture));
    EXPECT_EQ(item.Call(u"Subject"), Value(u"Angebot für Größe 5 und mehr"));
    EXPECT_EQ(item.Call(u"To"), Value(u"Muster, Erika; bau@example.org"));
    EXPECT_NEAR(item.Call(u"SentOn").If<Date>()->days, ToDate({2026, 11, 20, 9, 15, 30}).days,
                1e-6);
    EXPECT_EQ(item[u"Attachments"].Call(u"count"), Value(3));
    item[u"Attachments"](u"Item", 1).Call(u"SaveAsFile", u"C:\\tmp.msg");
    item.Call(u"SaveAs", u"C:\\ganz.msg", 3);
    for (int number = 3; number >= 1; --number) {
        item[u"Attachments"](u"Item", number).Call(u"Delete");
    }
    item.Call(u"SaveAs", u"C:\\ohne.msg", 3);
    EXPECT_THROW(item[u"Attachments"](u"Item", 1), Failure);
    item.Call(u"Close", 1);
    EXPECT_EQ(item[u"Attachments"].Call(u"count"), Value(3));
    EXPECT_EQ(saved, (std::vector<std::u16string>{u"C:\\tmp.msg: Hallo", u"C:\\ganz.msg with ***",
                                                  u"C:\\ohne.msg with "}));
    EXPECT_THROW(item.Call(u"SaveAs", u"C:\\x.txt", 0), Failure);
    EXPECT_THROW(item.Call(u"SaveAs", u"", 3), Failure);
}

TEST(MessageStorage, HoldsPropertiesRecipientsAndAttachments) {
    const MessageStorage storage = ToMessageStorage(ReadMime(kMail));
    std::string table;
    std::string subject;
    for (const auto& [name, content] : storage.streams) {
        table = name == u"__properties_version1.0" ? content : table;
        subject = name == u"__substg1.0_0037001F" ? content : subject;
    }
    EXPECT_EQ((table.size() - 32) % 16, 0U);
    EXPECT_EQ(table[16], 3); // recipients
    EXPECT_EQ(table[20], 3); // attachments
    EXPECT_EQ(subject.size(), std::u16string(u"Angebot für Größe 5 und mehr").size() * 2);
    std::vector<std::u16string> names;
    for (const MessageStorage& inner : storage.storages) {
        names.push_back(inner.name);
    }
    EXPECT_EQ(names, (std::vector<std::u16string>{
                         u"__recip_version1.0_#00000000", u"__recip_version1.0_#00000001",
                         u"__recip_version1.0_#00000002", u"__attach_version1.0_#00000000",
                         u"__attach_version1.0_#00000001", u"__attach_version1.0_#00000002",
                         u"__nameid_version1.0"}));
}

TEST(MessageStorage, KeepsTheTextsThatAMailShows) {
    const Mail mail = ReadMime(kMail);
    const MessageStorage storage = ToMessageStorage(mail);
    std::map<std::u16string, std::u16string> texts;
    std::string table;
    for (const auto& [name, content] : storage.streams) {
        table = name == u"__properties_version1.0" ? content : table;
        std::u16string& text = texts[name];
        for (std::size_t at = 0; at + 1 < content.size(); at += 2) {
            text += static_cast<char16_t>(static_cast<unsigned char>(content[at]) |
                                          static_cast<unsigned char>(content[at + 1]) << 8);
        }
    }
    EXPECT_EQ(texts[u"__substg1.0_001A001F"], u"IPM.Note");
    EXPECT_EQ(texts[u"__substg1.0_0070001F"], mail.subject);
    EXPECT_EQ(texts[u"__substg1.0_0E04001F"], u"Muster, Erika; bau@example.org");
    EXPECT_EQ(texts[u"__substg1.0_0E03001F"], u"Söhne");
    EXPECT_EQ(texts[u"__substg1.0_007D001F"], mail.headers);
    EXPECT_EQ(texts[u"__substg1.0_1000001F"], mail.text);
    EXPECT_EQ(texts[u"__substg1.0_0C1A001F"], u"Jörg Müller");
    EXPECT_EQ(texts[u"__substg1.0_0C1E001F"], u"SMTP");
    EXPECT_EQ(texts[u"__substg1.0_0C1F001F"], u"joerg@example.org");
    const std::string flags("\x03\x00\x07\x0E", 4); // PR_MESSAGE_FLAGS, a number
    const std::size_t place = table.find(flags);
    ASSERT_NE(place, std::string::npos);
    EXPECT_EQ(table[place + 8], 0x11) << "read, with attachments";
    EXPECT_EQ(table[place + 4], 6) << "may be read and written";
}

/// A storage's table of properties, "number:kind" or "number:kind=value", in hexadecimal digits.
std::string PropertiesOf(const MessageStorage& storage, std::size_t headerBytes) {
    std::string properties;
    for (const auto& [name, content] : storage.streams) {
        const auto bytes = [table = std::string(content)](std::size_t at, std::size_t count) {
            std::uint64_t number = 0;
            for (std::size_t place = count; place-- > 0;) {
                number = number << 8U | static_cast<unsigned char>(table[at + place]);
            }
            return number;
        };
        for (std::size_t at = headerBytes;
             name == u"__properties_version1.0" && at + 16 <= content.size(); at += 16) {
            const auto hex = [&](std::size_t place, std::size_t count) {
                return ToUtf8(HexText(static_cast<std::uint32_t>(bytes(place, count))));
            };
            properties += (properties.empty() ? "" : " ") + hex(at + 2, 2).substr(4) + ":" +
                          hex(at, 2).substr(6) + (bytes(at, 2) == 3 ? "=" + hex(at + 8, 4) : "");
        }
    }
    return properties;
}

TEST(MessageStorage, NumbersWhatItHolds) {
    const MessageStorage storage = ToMessageStorage(ReadMime(kMail));
    std::vector<std::string> properties = {PropertiesOf(storage, 32)};
    for (const MessageStorage& inner : storage.storages) {
        properties.push_back(PropertiesOf(inner, 8));
    }
    ASSERT_EQ(properties.size(), 8U);
    EXPECT_EQ(properties[0],
              "340D:03=00040000 0E07:03=00000011 001A:1F 0037:1F 0070:1F 0E04:1F 0E03:1F 007D:1F "
              "1000:1F 3FDE:03=0000FDE9 1013:02 0039:40 0E06:40 0C1A:1F 0C1E:1F 0C1F:1F 0042:1F "
              "0064:1F 0065:1F");
    EXPECT_EQ(properties[2],
              "0C15:03=00000001 3000:03=00000001 0FFE:03=00000006 3001:1F 3002:1F 3003:1F");
    EXPECT_EQ(properties[3],
              "0C15:03=00000002 3000:03=00000002 0FFE:03=00000006 3001:1F 3002:1F 3003:1F");
    EXPECT_EQ(properties[5],
              "0E21:03=00000001 3705:03=00000001 370B:03=FFFFFFFF 0FFE:03=00000007 3001:1F 3704:1F "
              "3707:1F 3703:1F 370E:1F 3701:02");
}

TEST(MessageStorage, KeepsHtmlAsUtf8) {
    const Mail mail =
        ReadMime("Subject: a\r\nContent-Type: text/html; charset=utf-8\r\n\r\n<b>\xC3\xBC</b>");
    std::map<std::u16string, std::string> streams;
    for (const auto& [name, content] : ToMessageStorage(mail).streams) {
        streams[name] = content;
    }
    EXPECT_EQ(streams[u"__substg1.0_10130102"], ToUtf8(mail.html));
    EXPECT_NE(mail.html.find(u"<b>ü</b>"), std::u16string::npos);
    const std::string codePage("\x03\x00\xDE\x3F\x06\x00\x00\x00\xE9\xFD\x00\x00", 12);
    EXPECT_NE(streams[u"__properties_version1.0"].find(codePage), std::string::npos);
}

TEST(MimeReader, WordsAmongPlainTextsKeepThem) {
    const auto subject = [](const char* text) {
        return ReadMime(std::string("Subject: ") + text + "\n\nText").subject;
    };
    EXPECT_EQ(subject("=?utf-8?Q?a?= x =?utf-8?Q?b?="), u"a x b");
    EXPECT_EQ(subject("=?utf-8?Q?a?=  =?utf-8?Q?b?= c"), u"ab c");
    EXPECT_EQ(subject("x =?utf-8?Q?a?="), u"x a");
}

TEST(MimeReader, PiecesOfANameComeInTheOrderOfTheirNumbers) {
    const Mail mail =
        ReadMime("Content-Type: application/pdf\r\nContent-Disposition: attachment;\r\n"
                 " filename*2=c.pdf; filename*0=a; filename*1=b\r\n\r\nx");
    ASSERT_EQ(mail.attachments.size(), 1U);
    EXPECT_EQ(mail.attachments[0].fileName, u"abc.pdf");
    const Mail coded = ReadMime("Content-Type: application/pdf\r\nContent-Disposition: attachment;"
                                "\r\n filename*0*=utf-8'de'a; filename*1*=b'c'd.pdf\r\n\r\nx");
    ASSERT_EQ(coded.attachments.size(), 1U);
    EXPECT_EQ(coded.attachments[0].fileName, u"ab'c'd.pdf") << "only the first tells its language";
}

TEST(MessageStorage, TellsWhenAMailWasSentWhereItSays) {
    const std::string sent("\x40\x00\x39\x00", 4); // PR_CLIENT_SUBMIT_TIME
    for (const auto& [date, isThere] :
         {std::pair("Date: Fri, 20 Nov 2026 10:15:30 +0100\r\n", true), std::pair("", false)}) {
        const Mail mail = ReadMime(std::string(date) + "Subject: Kurz\r\n\r\nText");
        std::string table;
        for (const auto& [name, content] : ToMessageStorage(mail).streams) {
            table = name == u"__properties_version1.0" ? content : table;
        }
        EXPECT_EQ(table.find(sent) != std::string::npos, isThere) << date;
    }
}

TEST(MimeReader, AQuotedNameKeepsWhatStandsAfterABackslash) {
    const Mail mail =
        ReadMime("Content-Type: application/pdf\r\n"
                 "Content-Disposition: attachment; filename=\"Plan \\(1\\) b.pdf\"\r\n"
                 "\r\nx");
    ASSERT_EQ(mail.attachments.size(), 1U);
    EXPECT_EQ(mail.attachments[0].fileName, u"Plan (1) b.pdf");
}

TEST(MimeReader, TakesDamagedMailsAsFarAsTheyGo) {
    const std::string whole = kMail;
    int read = 0;
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        ProofRandom random(seed);
        std::string damaged = whole;
        for (int deed = random.Below(6); deed >= 0; --deed) {
            const auto at =
                static_cast<std::size_t>(random.Below(static_cast<int>(damaged.size())));
            switch (random.Below(4)) {
            case 0:
                damaged[at] = static_cast<char>(random.Below(256));
                break;
            case 1:
                damaged.erase(at, static_cast<std::size_t>(1 + random.Below(9)));
                break;
            case 2:
                damaged.insert(at, random.Of<const char*>({"=", "=?", "?=", "%", "%4", ";", "\"",
                                                           "\r\n", "\n", "--", ",", "<", "("}));
                break;
            default:
                damaged.resize(std::max<std::size_t>(at, 20));
            }
        }
        try {
            const Mail mail = ReadMime(damaged);
            ++read;
            for (const MailAttachment& attachment : mail.attachments) {
                EXPECT_FALSE(attachment.fileName.empty()) << "seed " << seed;
            }
        } catch (const Failure& failure) {
            EXPECT_NE(failure.Text().find(u"Kopfzeilen"), std::u16string::npos);
        }
    }
    EXPECT_GT(read, 2000);
}

} // namespace talvix::host
