#include "workbench/program/print_list.h"

#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/device_context.h"
#include "platform/win32/owned.h"
#include "platform/win32/system_text.h"
#include "platform/win32/wide.h"
#include "workbench/host/list_export.h"

#include <windows.h>
#include <commdlg.h>

#include <algorithm>
#include <cderr.h>

namespace talvix::workbench {

namespace {

constexpr int kTextPoints = 9;
constexpr int kTitlePoints = 13;

HFONT MakeFont(int points, int dpi, int weight) {
    return CreateFontW(-MulDiv(points, dpi, 72), 0, 0, 0, weight, FALSE, FALSE, FALSE,
                       DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                       VARIABLE_PITCH | FF_SWISS, L"Arial");
}

/// Draws the lines of one sheet from top to bottom.
class SheetPen {
public:
    SheetPen(HDC dc, const Sheet& sheet)
        : dc_(dc), sheet_(sheet), gap_(sheet.dpi / 36), columns_(host::PrintColumns()) {
        SetBkMode(dc_, TRANSPARENT);
        SetTextColor(dc_, RGB(0, 0, 0));
    }

    void Title(const std::u16string& left, const std::u16string& right) {
        const OwnedFont font(MakeFont(kTitlePoints, sheet_.dpi, FW_BOLD));
        const Chosen chosen(dc_, font.Get());
        RECT box{0, 0, sheet_.size.cx, 2 * MulDiv(kTitlePoints, sheet_.dpi, 72)};
        RECT number = box;
        DrawTextW(dc_, Wide(right), -1, &number, DT_SINGLELINE | DT_RIGHT | DT_NOPREFIX);
        box.right -= sheet_.size.cx / 6;
        DrawTextW(dc_, Wide(left), -1, &box, DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
        top_ = box.bottom;
    }

    void Captions() {
        const OwnedFont font(MakeFont(kTextPoints, sheet_.dpi, FW_BOLD));
        const Chosen chosen(dc_, font.Get());
        std::vector<std::u16string> captions;
        for (const host::PrintColumn& column : columns_) {
            captions.push_back(column.caption);
        }
        Row(captions, true);
    }

    /// False when the row does not fit any more; the first one is drawn all the same.
    bool Row(const std::vector<std::u16string>& texts, bool evenIfTooTall) {
        const int height = HeightOf(texts);
        if (top_ + height > sheet_.size.cy && !evenIfTooTall) {
            return false;
        }
        int left = 0;
        for (std::size_t at = 0; at < columns_.size(); ++at) {
            const int width = WidthOf(at);
            RECT box{left, top_ + gap_ / 2, left + width - gap_, top_ + height};
            DrawTextW(dc_, Wide(texts[at]), -1, &box, kCellStyle);
            left += width;
        }
        top_ += height;
        MoveToEx(dc_, 0, top_, nullptr);
        LineTo(dc_, sheet_.size.cx, top_);
        return true;
    }

private:
    static constexpr UINT kCellStyle = DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL;

    int WidthOf(std::size_t column) const {
        int all = 0;
        for (const host::PrintColumn& each : columns_) {
            all += each.share;
        }
        return MulDiv(sheet_.size.cx, columns_[column].share, all);
    }

    int HeightOf(const std::vector<std::u16string>& texts) const {
        int height = 0;
        for (std::size_t at = 0; at < columns_.size(); ++at) {
            RECT box{0, 0, WidthOf(at) - gap_, 0};
            DrawTextW(dc_, texts[at].empty() ? L" " : Wide(texts[at]), -1, &box,
                      kCellStyle | DT_CALCRECT);
            height = std::max<int>(height, box.bottom);
        }
        return height + gap_;
    }

    HDC dc_;
    const Sheet& sheet_;
    const int gap_;
    const std::vector<host::PrintColumn> columns_;
    int top_ = 0;
};

/// What PrintDlg hands out.
class ChosenPrinter {
public:
    explicit ChosenPrinter(HWND owner) {
        dialog_.lStructSize = sizeof dialog_;
        dialog_.hwndOwner = owner;
        dialog_.Flags =
            PD_RETURNDC | PD_NOSELECTION | PD_NOPAGENUMS | PD_USEDEVMODECOPIESANDCOLLATE;
        isChosen_ = PrintDlgW(&dialog_) != FALSE;
        error_ = isChosen_ ? 0 : CommDlgExtendedError();
    }
    ChosenPrinter(const ChosenPrinter&) = delete;
    ChosenPrinter& operator=(const ChosenPrinter&) = delete;
    ~ChosenPrinter() {
        GlobalFree(dialog_.hDevMode);
        GlobalFree(dialog_.hDevNames);
        if (dialog_.hDC != nullptr) {
            DeleteDC(dialog_.hDC);
        }
    }
    bool IsChosen() const { return isChosen_; }
    DWORD Error() const { return error_; }
    HDC Dc() const { return dialog_.hDC; }

private:
    PRINTDLGW dialog_{};
    bool isChosen_ = false;
    DWORD error_ = 0;
};

void Print(HDC dc, const ListPrinter& printer, const std::u16string& name) {
    const Sheet sheet{{GetDeviceCaps(dc, HORZRES), GetDeviceCaps(dc, VERTRES)},
                      GetDeviceCaps(dc, LOGPIXELSX)};
    DOCINFOW document{};
    document.cbSize = sizeof document;
    document.lpszDocName = Wide(name);
    bool good = StartDocW(dc, &document) > 0;
    std::size_t row = 0;
    for (int number = 1; good && (number == 1 || row < printer.Rows()); ++number) {
        good = StartPage(dc) > 0;
        row = printer.DrawSheet(dc, sheet, row, number);
        good = good && EndPage(dc) > 0;
    }
    if (!good) {
        const DWORD error = GetLastError();
        AbortDoc(dc);
        throw Failure(static_cast<std::int32_t>(HRESULT_FROM_WIN32(error)),
                      u"Die Liste kann nicht gedruckt werden.\r\n" + SystemText(error));
    }
    EndDoc(dc);
}

} // namespace

ListPrinter::ListPrinter(const host::Project& project, const Culture& culture)
    : project_(project), culture_(culture) {}

std::size_t ListPrinter::DrawSheet(HDC dc, const Sheet& sheet, std::size_t first,
                                   int number) const {
    SheetPen pen(dc, sheet);
    pen.Title(project_.number + (project_.number.empty() ? u"" : u" ") + project_.name +
                  u" – Dokumente",
              u"Seite " + DecimalText(number));
    pen.Captions();
    const OwnedFont font(MakeFont(kTextPoints, sheet.dpi, FW_NORMAL));
    const Chosen chosen(dc, font.Get());
    std::size_t row = first;
    while (row < Rows() &&
           pen.Row(host::PrintedRow(project_.documents[row], culture_), row == first)) {
        ++row;
    }
    return row;
}

void PrintList(HWND owner, const host::Project& project, const Culture& culture) {
    const ChosenPrinter printer(owner);
    if (printer.IsChosen()) {
        Print(printer.Dc(), ListPrinter(project, culture), project.name);
    } else if (printer.Error() == PDERR_NODEFAULTPRN || printer.Error() == PDERR_NODEVICES) {
        throw Failure(failure_number::kUnexpected,
                      u"Es ist kein Drucker eingerichtet. Exportieren Sie die Liste als Seite zum "
                      u"Drucken (.html).");
    } else if (printer.Error() != 0) {
        throw Failure(failure_number::kUnexpected, u"Der Druckdialog kann nicht gezeigt werden.");
    }
}

} // namespace talvix::workbench
