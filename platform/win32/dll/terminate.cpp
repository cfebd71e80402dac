#include <cstdlib>

// What the C++ library does when nobody has caught something: its own handler writes the failure's
// name to a console that a library has not, and brings 60 KB into each DLL to spell that name
// (libstdc++, vterminate.cc). Nothing gets as far in ours: every entry point catches.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
namespace __gnu_cxx {

void __verbose_terminate_handler(); // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

void __verbose_terminate_handler() { // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
    std::abort();
}

} // namespace __gnu_cxx
