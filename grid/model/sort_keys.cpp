#include "grid/model/sort_keys.h"

#include "automation/coercion.h"

#include <algorithm>
#include <array>
#include <bit>

namespace talvix::grid {

namespace {

constexpr std::uint64_t kSignBit = 0x8000000000000000ULL;
/// Above every number's key: what cannot be read as a number or date follows here.
constexpr std::uint64_t kBehindNumbers = 0xFFF8000000000000ULL;
constexpr std::uint64_t kEmpty = 0;

std::uint64_t NumberKey(double number) {
    const auto bits = std::bit_cast<std::uint64_t>(number == 0 ? 0.0 : number);
    const std::uint64_t key = (bits & kSignBit) != 0 ? ~bits : bits | kSignBit;
    return std::clamp<std::uint64_t>(key, 1, kBehindNumbers - 1);
}

/// Texts that wait for their rank among all texts of the column.
class TextRanks {
public:
    TextRanks(CellStore& cells, const Culture& culture) : cells_(cells), culture_(culture) {}
    TextRanks(const TextRanks&) = delete;
    TextRanks& operator=(const TextRanks&) = delete;
    ~TextRanks() {
        for (PooledText* text : own_) {
            cells_.Texts().Release(text);
        }
    }

    void Add(Slot slot, PooledText* text) {
        if (text->mark == 0) {
            distinct_.push_back({0, culture_.SortKey(text->View()), text});
            text->mark = 1;
        }
        waiting_.emplace_back(slot, text);
    }
    void Add(Slot slot, std::u16string_view text) {
        PooledText* pooled = cells_.Texts().Intern(text);
        own_.push_back(pooled);
        Add(slot, pooled);
    }
    /// Writes base + rank for every text; ranks count from 1.
    void Rank(std::vector<std::uint64_t>& keys, std::uint64_t base) {
        TakeHeads();
        std::sort(
            distinct_.begin(), distinct_.end(), [](const Distinct& left, const Distinct& right) {
                return left.head != right.head ? left.head < right.head : left.key < right.key;
            });
        std::uint32_t rank = 0;
        for (std::size_t at = 0; at < distinct_.size(); ++at) {
            rank += at == 0 || distinct_[at].key != distinct_[at - 1].key ? 1 : 0;
            distinct_[at].text->mark = rank;
        }
        for (const auto& [slot, text] : waiting_) {
            keys[slot] = base + text->mark;
        }
        for (const Distinct& distinct : distinct_) {
            distinct.text->mark = 0;
        }
    }

private:
    struct Distinct {
        std::uint64_t head; ///< the bytes behind those that all keys begin with
        std::string key;
        PooledText* text;
    };
    /// Most keys differ in the first bytes that differ at all, and those are compared at once.
    void TakeHeads() {
        if (distinct_.empty()) {
            return;
        }
        const std::string& first = distinct_.front().key;
        std::size_t same = first.size();
        for (const Distinct& each : distinct_) {
            const std::size_t both = std::min(same, each.key.size());
            same = static_cast<std::size_t>(
                std::mismatch(first.begin(), first.begin() + static_cast<std::ptrdiff_t>(both),
                              each.key.begin())
                    .first -
                first.begin());
        }
        for (Distinct& each : distinct_) {
            for (std::size_t at = same; at < same + sizeof each.head; ++at) {
                const auto byte =
                    at < each.key.size() ? static_cast<unsigned char>(each.key[at]) : 0U;
                each.head = each.head << 8U | byte;
            }
        }
    }
    CellStore& cells_;
    const Culture& culture_;
    std::vector<Distinct> distinct_;
    std::vector<std::pair<Slot, PooledText*>> waiting_;
    std::vector<PooledText*> own_;
};

/// What a value counts as in a column of numbers or dates.
std::optional<double> NumberOf(const Value& value, DataType type, const Culture& culture) {
    if (const auto number = NumericContent(value)) {
        return number;
    }
    const auto* text = value.If<std::u16string>();
    if (text == nullptr) {
        return std::nullopt;
    }
    if (type != DataType::Date) {
        return culture.ReadNumber(*text);
    }
    const auto date = culture.ReadDate(*text);
    return date ? std::optional(date->days) : std::nullopt;
}

std::u16string TextOf(const Value& value, const Culture& culture) {
    return value.Is<Object>() || value.Is<List>() || value.Is<ErrorCode>() ? u""
                                                                           : ToText(value, culture);
}

} // namespace

std::vector<std::uint64_t> SortKeys(CellStore& cells, const Column& column,
                                    std::span<const Slot> rows, std::size_t slots,
                                    const Culture& culture) {
    std::vector<std::uint64_t> keys(slots, kEmpty);
    TextRanks ranks(cells, culture);
    const bool byText = column.dataType == DataType::Text;
    std::vector<bool> wanted(slots);
    for (const Slot slot : rows) {
        wanted[slot] = true;
    }
    // In the order in which the cells lie in memory, whatever the display's is.
    for (Slot slot = 0; slot < slots; ++slot) {
        if (!wanted[slot] || cells.IsEmpty(slot, column.index)) {
            continue;
        }
        PooledText* pooled = cells.Text(slot, column.index);
        if (byText && pooled != nullptr) {
            ranks.Add(slot, pooled);
            continue;
        }
        const Value value = cells.Get(slot, column.index);
        const auto number = byText ? std::nullopt : NumberOf(value, column.dataType, culture);
        if (number) {
            keys[slot] = NumberKey(*number);
        } else if (pooled != nullptr) {
            ranks.Add(slot, pooled);
        } else if (!value.Is<Null>()) {
            ranks.Add(slot, TextOf(value, culture));
        }
    }
    ranks.Rank(keys, byText ? 0 : kBehindNumbers);
    return keys;
}

void StableSort(std::vector<Slot>& rows, std::span<const std::uint64_t> keys, bool descending) {
    struct Item {
        std::uint64_t key;
        Slot slot;
    };
    std::vector<Item> items;
    items.reserve(rows.size());
    std::uint64_t all = ~std::uint64_t{0};
    std::uint64_t any = 0;
    bool isInOrder = true; // as when sorted rows are grouped
    for (const Slot slot : rows) {
        const std::uint64_t key = descending ? ~keys[slot] : keys[slot];
        isInOrder = isInOrder && (items.empty() || items.back().key <= key);
        all &= key;
        any |= key;
        items.push_back({key, slot});
    }
    if (isInOrder) {
        return;
    }
    std::vector<Item> sorted(items.size());
    for (unsigned shift = 0; shift < 64; shift += 8) {
        if ((((all ^ any) >> shift) & 0xFFU) == 0) {
            continue; // every key has the same byte here
        }
        std::array<std::size_t, 257> starts{};
        for (const Item& item : items) {
            ++starts[((item.key >> shift) & 0xFFU) + 1];
        }
        for (std::size_t byte = 1; byte < starts.size(); ++byte) {
            starts[byte] += starts[byte - 1];
        }
        for (const Item& item : items) {
            sorted[starts[(item.key >> shift) & 0xFFU]++] = item;
        }
        items.swap(sorted);
    }
    std::transform(items.begin(), items.end(), rows.begin(),
                   [](const Item& item) { return item.slot; });
}

} // namespace talvix::grid
