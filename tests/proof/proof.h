#pragma once

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <random>
#include <string>

namespace talvix {

/// How often a row of the proof is tried: TALVIX_<name> where it is set, the long form where
/// TALVIX_PROOF is "long", a tenth of the short form where it is "brief", else the short form.
inline std::size_t ProofCount(const std::string& name, std::size_t shortForm,
                              std::size_t longForm) {
    if (const char* count = std::getenv(("TALVIX_" + name).c_str())) {
        return static_cast<std::size_t>(std::strtoull(count, nullptr, 10));
    }
    const char* wanted = std::getenv("TALVIX_PROOF");
    const std::string form = wanted == nullptr ? "" : wanted;
    return form == "long" ? longForm : form == "brief" ? shortForm / 10 + 1 : shortForm;
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
