# What runs natively: the portable suites under sanitizers, checks of the sources, and the rows of the proof that need no Windows.
set(tests $<TARGET_FILE:talvix_tests>)
talvix_suite(portable LABELS fast SECONDS 120 KIND gtest COMMAND ${tests})
talvix_suite(structure LABELS fast SECONDS 60 KIND whole COMMAND python3 tests/structure/structure_check.py .)
talvix_suite(late-order LABELS fast SECONDS 60 KIND whole COMMAND python3 tests/structure/late_order_check.py .)
talvix_suite(format LABELS fast SECONDS 60 KIND whole COMMAND tools/format --check)
talvix_suite(reference LABELS fast SECONDS 30 KIND whole COMMAND tools/make-reference --check)
talvix_suite(docs LABELS fast SECONDS 30 KIND whole COMMAND python3 tests/structure/docs_check.py .)
talvix_suite(analysis LABELS fast SECONDS 120 KIND cases COMMAND tools/analyse)

# The rules as another implementation has them.
add_executable(talvix_answers second/answers.cpp)
target_link_libraries(talvix_answers PRIVATE talvix_fakes)
talvix_test_target(talvix_answers)
talvix_suite(second-rules LABELS fast SECONDS 120 KIND cases COMMAND tests/second/compare $<TARGET_FILE:talvix_answers>)

# The proof. Each row can be run alone: tools/prove [brief|short|long] NAME.
talvix_suite(fault-sweep LABELS proof SECONDS 1800 KIND gtest COMMAND ${tests} --gtest_filter=FaultSweep*)
talvix_suite(hostile-names LABELS proof SECONDS 1800 KIND gtest COMMAND ${tests} --gtest_filter=HostileNames*)
talvix_suite(hostile-lists LABELS proof SECONDS 1800 KIND gtest COMMAND ${tests} --gtest_filter=HostileLists*)
talvix_suite(sequences LABELS proof SECONDS 1800 KIND gtest COMMAND ${tests} --gtest_filter=Sequences*)
talvix_suite(reentrancy LABELS proof SECONDS 1800 KIND gtest COMMAND ${tests} --gtest_filter=Reentrancy*)
talvix_suite(second LABELS proof SECONDS 1800 KIND cases ALONE COMMAND tests/second/compare $<TARGET_FILE:talvix_answers>)
talvix_suite(analysers LABELS proof SECONDS 1800 KIND cases ALONE COMMAND tools/analyse)
talvix_suite(fuzzers LABELS proof SECONDS 2700 KIND cases ALONE COMMAND tools/fuzz)
talvix_suite(coverage LABELS proof SECONDS 3600 KIND cases COMMAND tools/coverage)
talvix_suite(mutants LABELS proof SECONDS 1800 KIND cases COMMAND tools/mutate)
