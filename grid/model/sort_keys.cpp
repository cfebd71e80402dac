#include "grid/model/sort_keys.h"

#include "automation/coercion.h"

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>

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

/// The texts of a column, each once. They carry their numbers as marks until their ranks are known.
class DistinctTexts {
public:
    DistinctTexts(CellStore& cells, const Culture& culture) : cells_(cells), culture_(culture) {}
    DistinctTexts(const DistinctTexts&) = delete;
    DistinctTexts& operator=(const DistinctTexts&) = delete;
    ~DistinctTexts() {
        for (const Distinct& distinct : distinct_) {
            distinct.text->mark = 0;
        }
        for (const TextPlace text : own_) {
            if (text != 0) {
                cells_.Texts().Release(text);
            }
        }
    }

    /// Counts from 1.
    std::uint32_t NumberOf(PooledText* text) {
        if (text->mark == 0) {
            distinct_.push_back({0, culture_.SortKey(text->View()), text});
            text->mark = static_cast<std::uint32_t>(distinct_.size());
        }
        return text->mark;
    }
    std::uint32_t NumberOf(std::u16string_view text) {
        own_.push_back(0); // room first: a text that is taken must be let go of
        own_.back() = cells_.Texts().Intern(text);
        return NumberOf(cells_.Texts().At(own_.back()));
    }
    /// Ranks by number, both from 1 on; texts that count as equal have the same rank.
    std::vector<std::uint32_t> Ranks() {
        TakeHeads();
        std::sort(
            distinct_.begin(), distinct_.end(), [](const Distinct& left, const Distinct& right) {
                return left.head != right.head ? left.head < right.head : left.key < right.key;
            });
        std::vector<std::uint32_t> ranks(distinct_.size() + 1);
        std::uint32_t rank = 0;
        for (std::size_t at = 0; at < distinct_.size(); ++at) {
            rank += at == 0 || distinct_[at].key != distinct_[at - 1].key ? 1 : 0;
            ranks[distinct_[at].text->mark] = rank;
        }
        return ranks;
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
    std::vector<TextPlace> own_;
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

/// The key of a cell that is not empty; a text has its number among the column's texts at first.
std::uint64_t FirstKey(CellStore& cells, Slot slot, const Column& column, DistinctTexts& texts,
                       const Culture& culture) {
    PooledText* pooled = cells.Text(slot, column.index);
    const bool byText = column.dataType == DataType::Text;
    if (byText && pooled != nullptr) {
        return kBehindNumbers + texts.NumberOf(pooled);
    }
    const auto real = byText ? std::nullopt : cells.Real(slot, column.index);
    if (real) {
        return NumberKey(*real);
    }
    const Value value = cells.Get(slot, column.index);
    const auto number = byText ? std::nullopt : NumberOf(value, column.dataType, culture);
    if (number) {
        return NumberKey(*number);
    }
    if (pooled != nullptr) {
        return kBehindNumbers + texts.NumberOf(pooled);
    }
    return value.Is<Null>() ? kEmpty : kBehindNumbers + texts.NumberOf(TextOf(value, culture));
}

} // namespace

std::vector<std::uint64_t> SortKeys(CellStore& cells, const Column& column,
                                    std::span<const std::int32_t> ids, const Culture& culture) {
    std::vector<std::uint64_t> keys(ids.size(), kEmpty);
    DistinctTexts texts(cells, culture);
    // In the order in which the cells lie in memory, whatever the display's is.
    for (Slot slot = 0; slot < ids.size(); ++slot) {
        if (ids[slot] != 0 && !cells.IsEmpty(slot, column.index)) {
            keys[slot] = FirstKey(cells, slot, column, texts, culture);
        }
    }
    const std::uint64_t base = column.dataType == DataType::Text ? 0 : kBehindNumbers;
    const std::vector<std::uint32_t> ranks = texts.Ranks();
    for (std::uint64_t& key : keys) {
        if (key >= kBehindNumbers) {
            key = base + ranks[static_cast<std::size_t>(key - kBehindNumbers)];
        }
    }
    return keys;
}

void StableSort(std::vector<Slot>& rows, std::span<const std::uint64_t> keys, bool descending) {
    const std::uint64_t turned = descending ? ~std::uint64_t{0} : 0;
    std::uint64_t all = ~std::uint64_t{0};
    std::uint64_t any = 0;
    std::uint64_t last = 0;
    bool isInOrder = true; // as when sorted rows are grouped
    for (const Slot slot : rows) {
        const std::uint64_t key = keys[slot] ^ turned;
        isInOrder = isInOrder && last <= key;
        last = key;
        all &= key;
        any |= key;
    }
    if (isInOrder) {
        return;
    }
    std::vector<Slot> sorted(rows.size());
    for (unsigned shift = 0; shift < 64; shift += 8) {
        const auto byteOf = [&](Slot slot) {
            return static_cast<std::uint8_t>((keys[slot] ^ turned) >> shift);
        };
        if ((((all ^ any) >> shift) & 0xFFU) == 0) {
            continue; // every key has the same byte here
        }
        std::array<std::uint32_t, 256> places{};
        for (const Slot slot : rows) {
            ++places[byteOf(slot)];
        }
        std::exclusive_scan(places.begin(), places.end(), places.begin(), 0U);
        for (const Slot slot : rows) {
            sorted[places[byteOf(slot)]++] = slot;
        }
        rows.swap(sorted);
    }
}

} // namespace talvix::grid
