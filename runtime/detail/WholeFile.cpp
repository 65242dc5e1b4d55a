#include "runtime/detail/WholeFile.h"

#include "platform/Desktop.h"
#include "platform/FileStore.h"
#include "platform/Platform.h"

#include <algorithm>
#include <initializer_list>

namespace tarv {
namespace {

bool isOneOf(SystemCode code, std::initializer_list<SystemCode> codes) {
    return std::ranges::find(codes, code) != codes.end();
}

} // namespace

std::wstring freeNameBeside(FileStore& files, std::wstring_view file) {
    constexpr int attempts = 100;
    std::wstring name = std::wstring(file) + L".neu";
    for (int i = 1; i < attempts && files.attributes(name); ++i)
        name = std::wstring(file) + L".neu" + std::to_wstring(i);
    return name;
}

SystemCode putInPlace(const Platform& platform, std::wstring_view file, std::wstring_view fresh) {
    using namespace system_code;
    constexpr int attempts = 50;
    constexpr std::uint32_t pause = 10;
    constexpr auto fixed = attribute::readOnly | attribute::directory;
    // An attempt that took the old file away and failed then is completed by the next one, which finds none.
    for (int attempt = 1;; ++attempt) {
        SystemCode code = platform.files->replace(file, fresh);
        // There is nothing to replace, or the file system knows no replacing.
        if (isOneOf(code, {fileNotFound, invalidFunction, notSupported, invalidParameter}))
            code = platform.files->moveOver(fresh, file);
        const bool mayPass =
            isOneOf(code, {accessDenied, sharingViolation, lockViolation, unableToRemoveReplaced,
                           unableToMoveReplacement, unableToMoveReplacement2}) &&
            (platform.files->attributes(file).valueOr(0) & fixed) == 0;
        if (!mayPass || attempt == attempts)
            return code;
        platform.desktop->sleep(pause);
    }
}

} // namespace tarv
