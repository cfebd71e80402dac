#include "grid/model/dropped_object.h"

#include "automation/coercion.h"

namespace talvix::grid {

namespace {

// The clipboard's own numbers: CF_TEXT, CF_UNICODETEXT and CF_HDROP.
constexpr std::int32_t kText = 1;
constexpr std::int32_t kUnicodeText = 13;
constexpr std::int32_t kFiles = 15;

std::int32_t FormatOf(const Value& value) {
    const auto number = NumericContent(value);
    for (const std::int32_t known : {kText, kUnicodeText, kFiles}) {
        if (number && *number == known) {
            return known;
        }
    }
    throw Failure(failure_number::kInvalidArgument,
                  u"A format is 1 or 13 for text, or 15 for files");
}

} // namespace

bool DroppedObject::Offers(std::int32_t format) const {
    return format == kFiles ? files_.has_value() : text_.has_value();
}

Value DroppedObject::Files() const {
    std::vector<Value> list;
    if (files_) {
        list.assign(files_->begin(), files_->end());
    }
    return std::make_shared<const std::vector<Value>>(std::move(list));
}

const MemberTable<DroppedObject>& DroppedObject::Members() {
    static const MemberTable<DroppedObject> table({
        {{u"GetData", access::kMethod, u"Format"},
         [](DroppedObject& data, const MemberCall& call) {
             return FormatOf(call.At(0)) == kFiles ? data.Files() : Value(data.Text());
         }},
        {{u"GetFormat", access::kMethod, u"Format"},
         [](DroppedObject& data, const MemberCall& call) {
             return Value(data.Offers(FormatOf(call.At(0))));
         }},
        {{u"Files", access::kGet, u""},
         [](DroppedObject& data, const MemberCall&) { return data.Files(); }},
        {{u"Text", access::kGet, u""},
         [](DroppedObject& data, const MemberCall&) { return Value(data.Text()); }},
    });
    return table;
}

} // namespace talvix::grid
