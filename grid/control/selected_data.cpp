#include "grid/control/row_data.h"
#include "grid/model/rows_as_text.h"
#include "platform/win32/wide.h"

namespace talvix::grid {

RowData SelectedData(GridModel& model) {
    RowData data{SelectedRowsAsText(model), {}};
    for (std::u16string& file : SelectedFiles(model)) {
        if (GetFileAttributesW(Wide(file)) != INVALID_FILE_ATTRIBUTES) {
            data.files.push_back(std::move(file));
        }
    }
    return data;
}

} // namespace talvix::grid
