# What every target of ours is compiled with.
add_library(talvix_flags INTERFACE)
target_include_directories(talvix_flags INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(talvix_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -Wsuggest-override -Wold-style-cast -Wnull-dereference -Werror)
target_compile_options(talvix_flags INTERFACE
    $<$<CXX_COMPILER_ID:Clang>:-Wno-unknown-warning-option>   # clang knows not all of GCC's names
    -Wno-restrict                 # GCC 12 sees overlaps in std::string's own copying (its bug 105651)
    -Wno-maybe-uninitialized)     # GCC 12 takes an empty std::optional's content for a read
if(TALVIX_SANITIZE)
    target_compile_options(talvix_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
        -fno-omit-frame-pointer -D_GLIBCXX_ASSERTIONS) # sanitizers do not see the end of a view
    target_link_options(talvix_flags INTERFACE -fsanitize=address,undefined)
endif()
if(TALVIX_COVERAGE)
    target_compile_options(talvix_flags INTERFACE --coverage)
    target_link_options(talvix_flags INTERFACE --coverage)
endif()
if(TALVIX_FUZZ)
    target_compile_options(talvix_flags INTERFACE -fsanitize=fuzzer-no-link,address,undefined
        -fno-sanitize-recover=all -D_GLIBCXX_ASSERTIONS)
    target_link_options(talvix_flags INTERFACE -fsanitize=address,undefined)
endif()
if(TALVIX_TIDY)
    set(CMAKE_CXX_CLANG_TIDY clang-tidy --extra-arg=-Wno-unknown-warning-option)
endif()
if(WIN32)
    target_compile_definitions(talvix_flags INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
        _WIN32_WINNT=0x0501 WINVER=0x0501 _WIN32_IE=0x0600 STRICT)
    target_compile_options(talvix_flags INTERFACE
        -Wno-non-virtual-dtor     # COM interfaces have no destructor by contract
        # Test programs need not be small nor traced, and link in a fraction of the time without these.
        $<$<NOT:$<BOOL:$<TARGET_PROPERTY:TALVIX_TEST>>>:-ffunction-sections>
        $<$<NOT:$<BOOL:$<TARGET_PROPERTY:TALVIX_TEST>>>:-fdata-sections>
        $<$<NOT:$<BOOL:$<TARGET_PROPERTY:TALVIX_TEST>>>:-g1>
        $<$<NOT:$<BOOL:$<TARGET_PROPERTY:TALVIX_TEST>>>:-gdwarf-4> # the newest that Wine's debugger reads
        # Functions with buffers are guarded, as by the platform's own compiler (/GS).
        -fstack-protector --param=ssp-buffer-size=4)
    target_link_options(talvix_flags INTERFACE -static -fstack-protector)
endif()

# Test programs: quick to build; what a test asserts is no guarantee to the compiler.
add_library(talvix_test_flags INTERFACE)
target_compile_options(talvix_test_flags INTERFACE -O0 -Wno-null-dereference)
function(talvix_test_target)
    set_target_properties(${ARGN} PROPERTIES TALVIX_TEST ON)
    foreach(each ${ARGN})
        target_link_libraries(${each} PRIVATE talvix_test_flags)
    endforeach()
endfunction()
