#pragma once

#include "tests/proof/proof.h"

#include <string>

namespace talvix {

/// A name such as no colleague would give: ways out of a folder, devices, streams, ends that the
/// system drops, any length up to 300, halves of characters, look-alikes.
inline std::u16string HostileName(ProofRandom& random) {
    static const std::u16string pieces[] = {
        u"..",           u"..\\",        u"\\",       u"/",         u"C:",     u"C:\\",
        u"\\\\srv\\d\\", u"\\\\?\\",     u"\\\\.\\",  u":",         u":$DATA", u"a.doc",
        u"CON",          u"nul.txt",     u"COM1",     u"lpt\u00B9", u".",      u" ",
        u"...",          u"%TEMP%",      u"~1",       u"\xD800",    u"\xDC00", u"\u2044",
        u"\uFF0F",       u"\uFF3C",      u"\u202E",   u"\u200B",    u"*",      u"?",
        u"\"",           u"|",           u"<",        u"\t",        u"\n",     u"\x01",
        u"a\u0308",      u"\u00E4",      u"\u0130",   u"I",         u"ſ",      u"K\u212A",
        u"$Recycle.Bin", u"desktop.ini", u"Dokument", u"\uFEFF",    u"x"};
    std::u16string name;
    const int count = 1 + random.Below(5);
    for (int at = 0; at < count; ++at) {
        name += random.Of(pieces);
    }
    if (random.OneIn(8)) {
        name.resize(static_cast<std::size_t>(1 + random.Below(300)), u'n');
    }
    if (random.OneIn(10)) {
        name += u'\0';
        name += u"x.txt";
    }
    return name;
}

} // namespace talvix
