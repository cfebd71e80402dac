#include "tests/fakes/full_path.h"

#include "platform/literal_path.h"

#include <algorithm>

namespace talvix {

namespace {

/// Length of the part that no ".." leads out of.
std::size_t RootLength(std::u16string_view path) {
    if (!path.starts_with(u"\\\\")) {
        return 2; // a drive
    }
    const std::size_t share = path.find(u'\\', 2);
    return share == std::u16string_view::npos ? path.size()
                                              : std::min(path.find(u'\\', share + 1), path.size());
}

std::u16string Rooted(std::u16string_view path, std::u16string_view currentFolder) {
    const std::u16string drive(currentFolder.substr(0, 2));
    if (path.starts_with(u"\\\\") || path.substr(1, 2) == u":\\") {
        return std::u16string(path);
    }
    if (path.starts_with(u'\\')) {
        return drive + std::u16string(path);
    }
    if (path.size() > 1 && path[1] == u':') {
        const bool isCurrent = path.substr(0, 2) == drive;
        return (isCurrent ? std::u16string(currentFolder) : std::u16string(path.substr(0, 2))) +
               u"\\" + std::u16string(path.substr(2));
    }
    return std::u16string(currentFolder) + u"\\" + std::u16string(path);
}

/// One more component; `rest` is what follows it.
void Append(std::u16string& full, std::size_t root, std::u16string_view component,
            std::u16string_view rest) {
    if (component == u"..") {
        full.resize(full.size() > root ? full.find_last_of(u'\\') : root);
        return;
    }
    if (rest.empty()) {
        const std::size_t end = component.find_last_not_of(u". ");
        component = component.substr(0, end == std::u16string_view::npos ? 0 : end + 1);
    } else if (component.ends_with(u'.') && !component.ends_with(u"..")) {
        component.remove_suffix(1);
    }
    if (!component.empty()) {
        full += u'\\';
        full += component;
    }
}

std::u16string OneStep(std::u16string_view path, std::u16string_view currentFolder) {
    std::u16string form(path);
    std::replace(form.begin(), form.end(), u'/', u'\\');
    form = Rooted(form, currentFolder);
    const std::size_t root = RootLength(form);
    std::u16string_view rest = std::u16string_view(form).substr(root);
    while (rest.ends_with(u'\\')) {
        rest.remove_suffix(1);
    }
    std::u16string full = form.substr(0, root);
    while (!rest.empty()) {
        rest.remove_prefix(rest.front() == u'\\' ? 1 : 0);
        const std::u16string_view component = rest.substr(0, rest.find(u'\\'));
        rest.remove_prefix(component.size());
        Append(full, root, component, rest);
    }
    return full.size() == 2 ? full + u'\\' : full;
}

} // namespace

std::u16string FullPathOf(std::u16string_view path, std::u16string_view currentFolder) {
    if (path.empty() || path.starts_with(kLiteralMark)) {
        return std::u16string(path);
    }
    std::u16string full = OneStep(path, currentFolder);
    // What is taken off an end can bare another one.
    for (std::u16string next = OneStep(full, currentFolder); next != full;
         next = OneStep(full, currentFolder)) {
        full = std::move(next);
    }
    return full;
}

} // namespace talvix
