#pragma once

#include "automation/late.h"

#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

namespace talvix::bench {

constexpr int kRows = 100000;
constexpr int kWidth = 900;
constexpr int kHeight = 600;
constexpr int kColumns = 7;
constexpr const char16_t* kKeys[kColumns] = {u"ID",     u"Subject", u"Type", u"Creator",
                                             u"Status", u"Date",    u"Path"};
constexpr int kSubject = 1;
constexpr int kType = 2; ///< followed by the creator and the status
constexpr int kDate = 5;

struct Row {
    std::u16string cells[kColumns];
    double date = 0;
};

std::vector<Row> MakeRows();
/// Negative, 0 or positive: by the user's locale, without case.
int CompareTexts(const std::u16string& left, const std::u16string& right);

/// The grid in a window of its own.
struct GridInWindow {
    explicit GridInWindow(const std::vector<Row>& rows);
    GridInWindow(const GridInWindow&) = delete;
    GridInWindow& operator=(const GridInWindow&) = delete;
    ~GridInWindow() { DestroyWindow(frame); }

    /// Brings what has changed to the screen.
    void ShowNow() const;
    /// Seconds of painting all of it.
    double Repaint() const;
    /// The cells of a column in display order, headings left out.
    std::vector<Value> Column(int column) const;

    HWND frame;
    HWND window = nullptr;
    Late grid;
};

/// The system's list view with the same rows; an item's parameter leads to its row.
struct ListInWindow {
    explicit ListInWindow(const std::vector<Row>& rows);
    ListInWindow(const ListInWindow&) = delete;
    ListInWindow& operator=(const ListInWindow&) = delete;
    ~ListInWindow() { DestroyWindow(list); }

    double Sort(PFNLVCOMPARE compare, LPARAM way) const;
    double Repaint() const;
    std::vector<const Row*> Order() const;

    HWND list;
};

void CompareSorting(const std::vector<Row>& rows, const GridInWindow& grid,
                    const ListInWindow& list);
void CompareGrouping(const std::vector<Row>& rows, const GridInWindow& grid);

} // namespace talvix::bench
