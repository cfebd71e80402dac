#pragma once

#include "automation/member_table.h"
#include "workbench/program/project_session.h"

namespace talvix::workbench {

/// A project as scripts call it (TalvixWorkbench.Project). What cannot be done raises an error
/// whose description says why, and leaves everything as it was.
class ProjectObject : public Tabled<ProjectObject> {
public:
    ProjectObject();
    static const MemberTable<ProjectObject>& Members();
    std::u16string TypeName() const override { return u"Project"; }

    ProjectSession session;
    std::u16string
        messages; ///< what the component would have told a user, each in a line of its own
};

} // namespace talvix::workbench
