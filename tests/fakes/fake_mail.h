#pragma once

#include "tests/fakes/expando.h"
#include "tests/fakes/fake_platform.h"

namespace talvix {

/// A mail with attachments; saving one of them puts a file onto the fake disk.
class FakeMail {
public:
    explicit FakeMail(FakePlatform& fakes);
    Value Item() const { return mail_; }
    /// Registers a class of safe wrappers; each wraps what its Item is set to.
    void RegisterWrapper();

    Lines names{u"a.doc", u"b.xls"}; ///< of the attachments
    bool saveFails = false;

private:
    void SavesTo(Expando& object, std::u16string_view member, std::int64_t length);
    Value MakeAttachment(std::int32_t number);

    FakePlatform& fakes_;
    std::shared_ptr<Expando> mail_;
    std::shared_ptr<Expando> attachments_;
    int wrappers_ = 0;
};

} // namespace talvix
