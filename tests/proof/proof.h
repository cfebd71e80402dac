#pragma once

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <random>
#include <string>

namespace talvix {

/// How often a row of the proof is tried: as often as TALVIX_AMOUNT says. "short" and "long" are
/// the forms given here, "brief" is a tenth of the short one, a number is taken as it is, and
/// without any a hundredth of the short form is tried, which takes seconds.
inline std::size_t ProofCount(std::size_t shortForm, std::size_t longForm) {
    const char* wanted = std::getenv("TALVIX_AMOUNT");
    const std::string amount = wanted == nullptr ? "" : wanted;
    if (!amount.empty() && amount.find_first_not_of("0123456789") == std::string::npos) {
        return static_cast<std::size_t>(std::strtoull(amount.c_str(), nullptr, 10));
    }
    return amount == "long"    ? longForm
           : amount == "short" ? shortForm
           : amount == "brief" ? shortForm / 10 + 1
                               : shortForm / 100 + 1;
}

/// Where a row tries each of a known number of cases: one of so many is tried. Only the short and
/// the long form try all of them.
inline std::size_t ProofStep(std::size_t inSeconds = 97) {
    const char* wanted = std::getenv("TALVIX_AMOUNT");
    const std::string amount = wanted == nullptr ? "" : wanted;
    return amount.empty() ? inSeconds : amount == "brief" ? 5 : 1;
}

/// The seed of the first try; TALVIX_SEED repeats a failure that named its seed.
inline unsigned ProofSeed() {
    const char* wanted = std::getenv("TALVIX_SEED");
    return wanted == nullptr ? 1U : static_cast<unsigned>(std::strtoul(wanted, nullptr, 10));
}

/// States what was reached of a row: in a file of its own in the folder that TALVIX_RESULTS names
/// (tests/proof/collect reads it), else on the screen. Neither text holds quotation marks.
inline void StateProof(const std::string& row, std::size_t count, const std::string& figures = "") {
    const char* results = std::getenv("TALVIX_RESULTS");
    std::FILE* file = results == nullptr
                          ? nullptr
                          : std::fopen((std::string(results) + "/" + row + ".row").c_str(), "w");
    std::fprintf(file == nullptr ? stdout : file,
                 "{\"row\": \"%s\", \"count\": %zu, \"figures\": \"%s\"}\n", row.c_str(), count,
                 figures.c_str());
    if (file != nullptr) {
        std::fclose(file);
    }
}

/// Small choices of a seeded try.
class ProofRandom {
public:
    explicit ProofRandom(unsigned seed) : engine_(seed) {}
    int Below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
    bool OneIn(int count) { return Below(count) == 0; }
    template <typename List>
    const auto& Of(const List& list) {
        return std::data(list)[static_cast<std::size_t>(Below(static_cast<int>(std::size(list))))];
    }
    template <typename Element>
    Element Of(std::initializer_list<Element> list) {
        return list.begin()[Below(static_cast<int>(list.size()))];
    }

private:
    std::mt19937 engine_;
};

} // namespace talvix
