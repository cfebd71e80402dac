#pragma once

#include "tests/fakes/fake_mail.h"
#include "tests/fakes/main_rig.h"
#include "tests/proof/failing_memory.h"

#include <functional>
#include <span>

namespace talvix {

/// A rig with three files in a folder and its sub-folder.
struct SweepRig : MainRig {
    SweepRig();
    void File(std::int32_t operation);
    /// Every row shows a file that is there, and nothing that was there before has changed.
    void ExpectNothingHarmed();
    /// The next normal operations work as if nothing had been.
    void ExpectWorksAsIfNothingHadBeen();
    /// What the user does in the document dialog before OK.
    void Confirms(std::function<void(ItemForm&)> user) {
        fakes.dialogs.onItemForm = [user = std::move(user)](ItemForm& form) {
            user(form);
            form.Click(ItemControl::btnOK);
        };
    }
    /// A row of its own to work on.
    void SelectFirst() {
        const int steps = std::exchange(fakes.journal.failAt, 0);
        AddRow(0, u"P:\\Proj\\a.doc");
        Late(gridObject).Set(u"CurrentRow", 1);
        fakes.journal.failAt = steps;
    }
    void Raise(std::u16string_view name, std::vector<Value> arguments) const {
        const CountedMemory counted;
        model->events.Raise(name, arguments);
    }
    FakeMail mail{fakes};
};

/// One thing that a user or a host does, for trying it under all conditions.
struct Operation {
    const char* name;
    bool attached; ///< runs on a component that is attached already
    std::function<void(SweepRig&)> run;
};

/// Every public method, grid event, menu command and dialog path.
std::span<const Operation> Operations();

} // namespace talvix
