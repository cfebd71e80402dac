#pragma once

#include "ui/item_dialog.h"

#include <memory>

namespace talvix {

/// What all `Main` objects of one thread share: the one document dialog and the flag of a double
/// click.
class Forms {
public:
    Forms(Platform& platform, Trace& trace) : platform_(platform), trace_(trace) {}

    /// Made empty at first use.
    ItemDialog& Dialog() {
        if (dialog_ == nullptr) {
            dialog_ = std::make_unique<ItemDialog>(platform_, trace_);
        }
        return *dialog_;
    }
    /// Forgets the dialog, once nobody uses it any more.
    void Unload() {
        unloads_ = users_ > 0;
        if (!unloads_) {
            dialog_.reset();
        }
    }
    bool isDoubleClick = false;

private:
    friend class DialogInUse;
    Platform& platform_;
    Trace& trace_;
    std::unique_ptr<ItemDialog> dialog_;
    int users_ = 0;
    bool unloads_ = false; ///< as soon as the last user has ended
};

/// Keeps the dialog for the length of a block, from being filled to being read.
class DialogInUse {
public:
    explicit DialogInUse(Forms& forms) : forms_(forms) { ++forms_.users_; }
    DialogInUse(const DialogInUse&) = delete;
    DialogInUse& operator=(const DialogInUse&) = delete;
    ~DialogInUse() {
        if (--forms_.users_ == 0 && forms_.unloads_) {
            forms_.Unload();
        }
    }

private:
    Forms& forms_;
};

} // namespace talvix
