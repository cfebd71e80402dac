// Every call out of the component fails once, and everything from there on; memory runs out in the
// same two ways. Nothing escapes, nothing is harmed, and the next operation works.
#include "tests/proof/failing_memory.h"
#include "tests/proof/operations.h"
#include "tests/proof/proof.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace talvix {

namespace {

constexpr int kFiles = 3;

void RunOn(SweepRig& rig, const Operation& operation) {
    rig.fakes.journal.steps = 0;
    ASSERT_NO_THROW(operation.run(rig));
}

int StepsOf(const Operation& operation) {
    SweepRig rig;
    if (operation.attached) {
        rig.Attach();
    }
    RunOn(rig, operation);
    return rig.fakes.journal.steps;
}

void ExpectUnharmed(SweepRig& rig) {
    if (rig.main == nullptr) {
        return;
    }
    rig.ExpectNothingHarmed();
    ASSERT_FALSE(testing::Test::HasFailure());
    ASSERT_NO_FATAL_FAILURE(rig.ExpectWorksAsIfNothingHadBeen());
}

void RunWithFault(const Operation& operation, int failAt, bool failOn, int failAlso = 0) {
    SweepRig rig;
    if (operation.attached) {
        rig.Attach();
    }
    Journal& journal = rig.fakes.journal;
    journal.failAt = failAt;
    journal.failOn = failOn;
    journal.failAlso = failAlso;
    ASSERT_NO_FATAL_FAILURE(RunOn(rig, operation));
    ASSERT_FALSE(journal.failed.empty());
    if (!failOn && failAlso == 0) { // two faults may hit both tries to switch it on
        ASSERT_TRUE(rig.model->Redraw());
    }
    journal.failAt = journal.failAlso = 0;
    ExpectUnharmed(rig);
}

/// The number of pieces of memory that an operation asks for.
std::size_t PiecesOf(const Operation& operation) {
    SweepRig rig;
    if (operation.attached) {
        rig.Attach();
    }
    const FailingMemory memory(0, false);
    RunOn(rig, operation);
    return memory.Asked();
}

void RunWithoutMemory(const Operation& operation, std::size_t failAt, bool failOn) {
    SweepRig rig;
    if (operation.attached) {
        rig.Attach();
    }
    {
        const FailingMemory memory(failAt, failOn);
        ASSERT_NO_FATAL_FAILURE(RunOn(rig, operation));
    }
    if (!failOn) {
        ASSERT_TRUE(rig.model->Redraw());
    }
    ExpectUnharmed(rig);
}

} // namespace

TEST(FaultSweep, NoFailingCallOutsideHarmsAnything) {
    std::size_t faults = 0;
    std::size_t place = 0;
    for (const Operation& operation : Operations()) {
        const int steps = StepsOf(operation);
        for (int failAt = 1; failAt <= steps; ++failAt) {
            for (const bool failOn : {false, true}) {
                if (place++ % ProofStep() != 0) {
                    continue;
                }
                SCOPED_TRACE(std::string(operation.name) + ", call " + std::to_string(failAt) +
                             (failOn ? " and on" : ""));
                ASSERT_NO_FATAL_FAILURE(RunWithFault(operation, failAt, failOn));
                ++faults;
            }
        }
    }
    StateProof("fault sweep, calls", faults, "calls of 17 operations, once and from there on");
}

TEST(FaultSweep, NoTwoFailingCallsHarmAnything) {
    const std::size_t pairs = ProofCount(1000, 40000);
    ProofRandom random(ProofSeed());
    std::vector<std::pair<const Operation*, int>> calling; // those that call out at all
    for (const Operation& operation : Operations()) {
        const int steps = StepsOf(operation);
        if (steps > 0) {
            calling.emplace_back(&operation, steps);
        }
    }
    for (std::size_t pair = 0; pair < pairs; ++pair) {
        const auto& [operation, steps] = random.Of(calling);
        const int first = 1 + random.Below(steps);
        const int second = first + 1 + random.Below(steps);
        SCOPED_TRACE(std::string(operation->name) + ", calls " + std::to_string(first) + " and " +
                     std::to_string(second));
        ASSERT_NO_FATAL_FAILURE(RunWithFault(*operation, first, false, second));
    }
    StateProof("fault sweep, pairs", pairs,
               "of calls that fail in one operation, seed " + std::to_string(ProofSeed()));
}

TEST(FaultSweep, NoMemoryThatRunsOutHarmsAnything) {
    const std::size_t wanted = ProofCount(60, 100000);
    std::size_t faults = 0;
    for (const Operation& operation : Operations()) {
        const std::size_t pieces = PiecesOf(operation);
        const std::size_t step = std::max<std::size_t>(1, pieces / wanted);
        for (std::size_t failAt = 1; failAt <= pieces; failAt += step) {
            for (const bool failOn : {false, true}) {
                SCOPED_TRACE(std::string(operation.name) + ", memory " + std::to_string(failAt) +
                             (failOn ? " and on" : ""));
                ASSERT_NO_FATAL_FAILURE(RunWithoutMemory(operation, failAt, failOn));
                ++faults;
            }
        }
    }
    StateProof("fault sweep, memory", faults, "pieces of memory, once and from there on");
}

TEST(FaultSweep, TheImportCountsEveryFileOnceWithoutFaults) {
    SweepRig rig;
    rig.Attach();
    rig.main->AddFilesFromProjectFolderEvent();
    EXPECT_EQ(rig.RowCount(), kFiles);
}

} // namespace talvix
