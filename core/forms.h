#pragma once

#include "ui/item_dialog.h"

#include <memory>

namespace talvix {

/// What all `Main` objects of one thread share: the one document dialog and the flag of a double
/// click.
class Forms {
public:
    Forms(Platform& platform, Trace& trace) : platform_(platform), trace_(trace) {}

    /// The dialog to be read, made empty at first use. Who writes into it takes it first.
    const ItemDialog& Dialog() { return Made(); }
    /// Forgets the dialog; one that is taken as soon as it is given back.
    void Unload() {
        unloads_ = isTaken_;
        if (!unloads_) {
            dialog_.reset();
        }
    }
    bool isDoubleClick = false;

private:
    friend class TakenDialog;
    ItemDialog& Made() {
        if (dialog_ == nullptr) {
            dialog_ = std::make_unique<ItemDialog>(platform_, trace_);
        }
        return *dialog_;
    }

    Platform& platform_;
    Trace& trace_;
    std::unique_ptr<ItemDialog> dialog_;
    bool isTaken_ = false;
    bool unloads_ = false; ///< when it is given back
};

/// The document dialog in the hands of one user, from the first thing that is written into it to
/// the last that is read. Who comes second gets none: host calls and the open dialog let messages
/// through, and with them other commands and the end of other `Main` objects.
class TakenDialog {
public:
    explicit TakenDialog(Forms& forms)
        : forms_(forms), dialog_(forms.isTaken_ ? nullptr : &forms.Made()) {
        forms_.isTaken_ = true;
    }
    TakenDialog(const TakenDialog&) = delete;
    TakenDialog& operator=(const TakenDialog&) = delete;
    ~TakenDialog() {
        if (dialog_ == nullptr) {
            return;
        }
        forms_.isTaken_ = false;
        if (forms_.unloads_) {
            forms_.Unload();
        }
    }

    /// False when somebody else has it.
    explicit operator bool() const { return dialog_ != nullptr; }
    ItemDialog& operator*() const { return *dialog_; }
    ItemDialog* operator->() const { return dialog_; }

private:
    Forms& forms_;
    ItemDialog* dialog_;
};

} // namespace talvix
