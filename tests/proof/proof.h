#pragma once

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <random>
#include <string>

namespace talvix {

/// How often a row of the proof is tried: TALVIX_<name> where it is set, the long form where
/// TALVIX_PROOF is "long", else the short one.
inline std::size_t ProofCount(const std::string& name, std::size_t shortForm,
                              std::size_t longForm) {
    if (const char* wanted = std::getenv(("TALVIX_" + name).c_str())) {
        return static_cast<std::size_t>(std::strtoull(wanted, nullptr, 10));
    }
    const char* form = std::getenv("TALVIX_PROOF");
    return form != nullptr && std::string(form) == "long" ? longForm : shortForm;
}

/// The seed of the first try; TALVIX_SEED repeats a failure that named its seed.
inline unsigned ProofSeed() {
    const char* wanted = std::getenv("TALVIX_SEED");
    return wanted == nullptr ? 1U : static_cast<unsigned>(std::strtoul(wanted, nullptr, 10));
}

/// States a row's figures for build/proof.md.
inline void StateProof(const std::string& row, std::size_t count, const std::string& figures = "") {
    std::printf("[ PROOF    ] %s | %zu | %s\n", row.c_str(), count, figures.c_str());
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
