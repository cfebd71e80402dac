#pragma once

#include "automation/member_table.h"
#include "core/main.h"

#include <memory>

namespace talvix {

/// `Main` as automation clients call it. Whatever it is given, every member answers; what cannot be
/// read counts as left out.
class MainObject : public Tabled<MainObject> {
public:
    explicit MainObject(std::shared_ptr<Main> target) : main(std::move(target)) {}
    static const MemberTable<MainObject>& Members();
    std::u16string TypeName() const override { return u"Main"; }
    /// Arguments too many are passed over. Only a member that does not exist raises Failure.
    Value Invoke(MemberId member, unsigned access, const Arguments& arguments) override;

    const std::shared_ptr<Main> main;
};

} // namespace talvix
