#include "runtime/Funktionen32/PlainFiles.h"

#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "runtime/Runtime.h"

#include <utility>

namespace tarv {
namespace {

constexpr std::uint32_t notPlain = attribute::hidden | attribute::system | attribute::directory;

bool meansNoName(SystemCode code) {
    return code == system_code::fileNotFound || code == system_code::pathNotFound ||
           code == system_code::noMoreFiles;
}

} // namespace

PlainFiles::PlainFiles(Runtime& rt, std::wstring_view pattern)
    : search_(rt.platform.files->search(pattern)) {}

PlainFiles::~PlainFiles() = default;

std::optional<std::wstring> PlainFiles::next() {
    while (search_) {
        auto entry = search_->next();
        if (!entry) {
            if (!meansNoName(entry.error()))
                failure_ = entry.error();
            search_.reset();
        } else if ((entry->attributes & notPlain) == 0) {
            return std::move(entry->name);
        }
    }
    return std::nullopt;
}

} // namespace tarv
