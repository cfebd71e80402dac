#include "automation/text.h"
#include "grid/model/grid_objects.h"
#include "tests/fakes/fake_culture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <vector>

namespace talvix::grid {

namespace {

/// A plain list of rows that does everything the long way.
struct Reference {
    struct Row {
        std::int32_t id;
        std::u16string name;
        std::int32_t number;
        bool selected;
    };
    bool Passes(const FakeCulture& culture, const Row& row) const {
        return culture.UpperCase(row.name).find(filter) != std::u16string::npos ||
               DecimalText(row.number).find(filter) != std::u16string::npos;
    }
    std::vector<Row> rows;
    std::u16string filter; ///< upper-case; "" for none
};

struct Pair {
    Pair() : model(culture) {
        model.AddColumn(u"Name");
        model.AddColumn(u"Number").dataType = DataType::Long;
    }
    void Compare() {
        ASSERT_EQ(model.rows.Count(), static_cast<std::int32_t>(reference.rows.size()));
        for (std::size_t at = 0; at < reference.rows.size(); ++at) {
            const RowRef row = model.rows.At(static_cast<std::int32_t>(at) + 1);
            ASSERT_EQ(row.id, reference.rows[at].id);
            ASSERT_EQ(model.rows.Get(row, 0), Value(reference.rows[at].name));
            ASSERT_EQ(model.rows.Get(row, 1), Value(reference.rows[at].number));
            ASSERT_EQ(model.rows.IsSelected(row), reference.rows[at].selected);
            ASSERT_EQ(model.rows.NumberOf(row), static_cast<std::int32_t>(at) + 1);
        }
        ASSERT_NO_FATAL_FAILURE(CompareViews());
    }
    /// The ranges of the selection, and what the filter shows.
    void CompareViews() {
        std::vector<Range> ranges;
        std::vector<std::int32_t> shown;
        for (std::size_t at = 0; at < reference.rows.size(); ++at) {
            const auto number = static_cast<std::int32_t>(at) + 1;
            if (reference.Passes(culture, reference.rows[at])) {
                shown.push_back(number);
            }
            if (!reference.rows[at].selected) {
                continue;
            }
            if (ranges.empty() || ranges.back().second != number - 1) {
                ranges.emplace_back(number, number);
            }
            ranges.back().second = number;
        }
        ASSERT_EQ(model.rows.Ranges(), ranges);
        ASSERT_EQ(model.rows.ShownNumbers(), shown);
        ASSERT_EQ(model.rows.PassingCount(), static_cast<std::int32_t>(shown.size()));
    }
    /// The reference's stable sort by what the grid is sorted by.
    void Resort() {
        const auto sorting = model.rows.Sorting();
        if (!sorting) {
            return;
        }
        const auto key = [&](const Reference::Row& row) {
            return sorting->column == 0 ? culture.UpperCase(row.name) : DecimalText(row.number);
        };
        std::stable_sort(reference.rows.begin(), reference.rows.end(),
                         [&](const Reference::Row& left, const Reference::Row& right) {
                             return sorting->descending ? key(left) > key(right)
                                                        : key(left) < key(right);
                         });
    }
    FakeCulture culture;
    GridModel model;
    Reference reference;
};

using Random = std::mt19937;

std::size_t Below(Random& random, std::size_t limit) {
    return random() % limit;
}

void AddRow(Pair& pair, Random& random) {
    const RowRef row = pair.model.rows.Add();
    const std::u16string name = (random() % 2 == 0 ? u"n" : u"N") + DecimalText(random() % 7);
    const auto number = static_cast<std::int32_t>(random() % 5);
    pair.model.rows.Set(row, 0, name);
    pair.model.rows.Set(row, 1, number);
    pair.reference.rows.push_back({row.id, name, number, false});
}

void RemoveRow(Pair& pair, Random& random) {
    if (pair.reference.rows.empty()) {
        return;
    }
    const std::size_t at = Below(random, pair.reference.rows.size());
    pair.model.rows.Remove(pair.model.rows.At(static_cast<std::int32_t>(at) + 1));
    pair.reference.rows.erase(pair.reference.rows.begin() + static_cast<std::ptrdiff_t>(at));
}

void SelectRow(Pair& pair, Random& random) {
    if (pair.reference.rows.empty()) {
        return;
    }
    const std::size_t at = Below(random, pair.reference.rows.size());
    const bool selected = random() % 2 == 0;
    pair.model.rows.Select(pair.model.rows.At(static_cast<std::int32_t>(at) + 1), selected);
    pair.reference.rows[at].selected = selected;
}

void SelectAllOrNone(Pair& pair, Random& random) {
    const bool all = random() % 2 == 0 && pair.model.rows.Count() > 0;
    if (all) {
        pair.model.rows.SelectRange(1, pair.model.rows.Count());
    } else {
        pair.model.rows.ClearSelection();
    }
    for (Reference::Row& row : pair.reference.rows) {
        row.selected = all;
    }
}

void SelectSome(Pair& pair, Random& random) {
    const std::size_t count = pair.reference.rows.size();
    if (count == 0) {
        return;
    }
    const std::size_t first = Below(random, count);
    const std::size_t last = first + Below(random, count - first);
    pair.model.rows.SelectRange(static_cast<std::int32_t>(first) + 1,
                                static_cast<std::int32_t>(last) + 1);
    for (std::size_t at = first; at <= last; ++at) {
        pair.reference.rows[at].selected = true;
    }
}

void FilterRows(Pair& pair, Random& random) {
    static constexpr const char16_t* texts[] = {u"", u"n", u"N3", u"n4", u"2"};
    const char16_t* text = texts[random() % std::size(texts)];
    pair.model.rows.SetFilter(text, std::nullopt);
    pair.reference.filter = pair.culture.UpperCase(text);
    for (Reference::Row& row : pair.reference.rows) {
        row.selected = row.selected && pair.reference.Passes(pair.culture, row);
    }
}

void WriteName(Pair& pair, Random& random) {
    if (pair.reference.rows.empty()) {
        return;
    }
    const std::size_t at = Below(random, pair.reference.rows.size());
    Reference::Row& row = pair.reference.rows[at];
    row.name = u"n" + DecimalText(random() % 7);
    pair.model.rows.Set(pair.model.rows.At(static_cast<std::int32_t>(at) + 1), 0, row.name);
    const bool isFiltered = !pair.reference.filter.empty();
    row.selected = row.selected && (!isFiltered || pair.reference.Passes(pair.culture, row));
}

void SortRows(Pair& pair, Random& random) {
    pair.model.Sort(random() % 2, random() % 2 == 0);
    pair.Resort();
}

void FindRow(Pair& pair, Random& random) {
    const std::u16string name = u"n" + DecimalText(random() % 7);
    const auto start = static_cast<std::int32_t>(Below(random, pair.reference.rows.size() + 1)) + 1;
    std::int32_t expected = 0;
    for (std::size_t at = static_cast<std::size_t>(start) - 1; at < pair.reference.rows.size();
         ++at) {
        if (pair.culture.SameText(pair.reference.rows[at].name, name)) {
            expected = static_cast<std::int32_t>(at) + 1;
            break;
        }
    }
    ASSERT_EQ(pair.model.rows.Find(0, name, start), expected);
}

void GroupAndUngroup(Pair& pair, Random& random) {
    pair.model.ChangeGroups({{random() % 2, random() % 2 == 0}});
    std::int32_t shownRows = 0;
    for (std::int32_t number = 1; number <= pair.model.rows.Count(); ++number) {
        const GroupNode* heading = pair.model.rows.HeadingOf(pair.model.rows.At(number));
        shownRows += heading == nullptr ? 1 : 0;
    }
    ASSERT_EQ(shownRows, static_cast<std::int32_t>(pair.reference.rows.size()));
    pair.model.ChangeGroups({});
    pair.Resort(); // grouping puts everything into place, rows added since the last sort too
}

} // namespace

TEST(GridReference, RandomSequencesAgreeWithAPlainList) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        Pair pair;
        for (int step = 0; step < 80; ++step) {
            switch (random() % 14) {
            case 0:
                RemoveRow(pair, random);
                break;
            case 1:
                SortRows(pair, random);
                break;
            case 2:
                SelectRow(pair, random);
                break;
            case 3:
                FindRow(pair, random);
                break;
            case 4:
                GroupAndUngroup(pair, random);
                break;
            case 5:
                SelectAllOrNone(pair, random);
                break;
            case 6:
                SelectSome(pair, random);
                break;
            case 7:
                FilterRows(pair, random);
                break;
            case 8:
                WriteName(pair, random);
                break;
            default:
                AddRow(pair, random);
            }
            ASSERT_NO_FATAL_FAILURE(pair.Compare());
        }
    }
}

TEST(GridReference, OpenedAndClosedGroupsShowWhatAPlainWalkFinds) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        Pair pair;
        for (int row = 0; row < 30; ++row) {
            AddRow(pair, random);
        }
        pair.model.ChangeGroups({{1, false}, {0, true}});
        RowModel& rows = pair.model.rows;
        for (int step = 0; step < 60; ++step) {
            const RowRef row = rows.At(
                static_cast<std::int32_t>(Below(random, static_cast<std::size_t>(rows.Count()))) +
                1);
            if (rows.HeadingOf(row) != nullptr) {
                rows.SetExpanded(row, random() % 2 == 0);
            }
            std::vector<std::int32_t> expected;
            std::vector<bool> open{true, true, true}; // above each level
            for (std::int32_t number = 1; number <= rows.Count(); ++number) {
                const GroupNode* heading = rows.HeadingOf(rows.At(number));
                const std::size_t level =
                    heading == nullptr ? 2 : static_cast<std::size_t>(heading->level);
                if (open[level]) {
                    expected.push_back(number);
                }
                for (std::size_t below = level + 1; heading != nullptr && below <= 2; ++below) {
                    open[below] = open[level] && heading->expanded;
                }
            }
            ASSERT_EQ(rows.ShownNumbers(), expected);
        }
    }
}

TEST(TextPool, KeepsEachTextOnceThroughRandomUse) {
    Random random(7);
    TextPool pool;
    std::vector<TextPlace> held;
    for (int step = 0; step < 20000; ++step) {
        if (held.empty() || random() % 3 != 0) {
            const std::u16string text = DecimalText(random() % 500);
            const TextPlace pooled = pool.Intern(text);
            ASSERT_EQ(pool.At(pooled)->View(), text);
            held.push_back(pooled);
        } else {
            const std::size_t at = Below(random, held.size());
            pool.Release(held[at]);
            held.erase(held.begin() + static_cast<std::ptrdiff_t>(at));
        }
    }
    std::sort(held.begin(), held.end());
    const auto distinct =
        static_cast<std::size_t>(std::unique(held.begin(), held.end()) - held.begin());
    EXPECT_EQ(pool.Size(), distinct);
}

TEST(TextPool, FindsWhatIsLeftAfterManyWereLetGoOf) {
    constexpr int kTexts = 30000;
    TextPool pool;
    for (int round = 0; round < 3; ++round) {
        std::vector<TextPlace> held;
        for (int number = 0; number < kTexts; ++number) {
            held.push_back(pool.Intern(DecimalText(number)));
        }
        EXPECT_EQ(pool.Size(), kTexts);
        for (int number = 0; number < kTexts; ++number) {
            if (number % 3 != 0) {
                pool.Release(held[static_cast<std::size_t>(number)]);
            }
        }
        EXPECT_EQ(pool.Size(), kTexts / 3);
        for (int number = 0; number < kTexts; number += 3) {
            const TextPlace own = held[static_cast<std::size_t>(number)];
            ASSERT_EQ(pool.At(own)->View(), DecimalText(number));
            ASSERT_EQ(pool.Intern(DecimalText(number)), own);
            pool.Release(own);
            pool.Release(own);
        }
        EXPECT_EQ(pool.Size(), 0U);
    }
}

TEST(TextPool, TextLetGoOfIsTakenUpAgain) {
    TextPool pool;
    const TextPlace text = pool.Intern(u"Bericht");
    pool.Release(text);
    EXPECT_EQ(pool.Size(), 0U);
    EXPECT_EQ(pool.At(pool.Intern(u"Bericht"))->references, 1U);
    EXPECT_EQ(pool.Size(), 1U);
}

TEST(TextMemory, WhatIsGivenBackIsTakenAgain) {
    TextMemory memory;
    for (const std::size_t bytes : {4, 12, 4096, 4100, 10000, 300000}) {
        const TextPlace other = memory.Take(bytes);
        const TextPlace place = memory.Take(bytes);
        memory.GiveBack(place, bytes);
        EXPECT_EQ(memory.Take(bytes), place) << bytes;
        EXPECT_NE(memory.Take(bytes), other) << bytes;
    }
}

TEST(TextMemory, NothingLiesNowhere) {
    TextMemory memory;
    for (int count = 0; count < 100; ++count) {
        EXPECT_NE(memory.Take(4096), 0U);
    }
}

} // namespace talvix::grid
