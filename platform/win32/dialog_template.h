#pragma once

#include <windows.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace talvix {

/// A place in dialog units: quarters of the font's average width, eighths of its height.
struct DialogRect {
    short left;
    short top;
    short width;
    short height;
};

/// A dialog's description in memory, as Windows reads it (DLGTEMPLATE).
class DialogTemplate {
public:
    /// The font is taken in 8 points.
    DialogTemplate(DWORD style, const DialogRect& place, std::u16string_view caption,
                   std::u16string_view font = u"MS Shell Dlg");
    /// `kind` is the number of a standard class, such as kButtonKind.
    void Add(WORD kind, WORD id, DWORD style, const DialogRect& place, std::u16string_view text);
    const DLGTEMPLATE* Get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

    static constexpr WORD kButtonKind = 0x80;
    static constexpr WORD kEditKind = 0x81;
    static constexpr WORD kStaticKind = 0x82;
    static constexpr WORD kComboKind = 0x85;

private:
    void Append(DWORD number);
    void Append(const DialogRect& place);
    void Append(std::u16string_view text);

    std::vector<WORD> words_;
};

/// Moves a dialog into the middle of its owner, or of the screen where it has none to be seen.
void CenterOverOwner(HWND dialog);

} // namespace talvix
