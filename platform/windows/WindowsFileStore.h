#pragma once

#include "platform/FileStore.h"

namespace tarv {

class WindowsFileStore final : public FileStore {
public:
    Answer<std::int64_t> length(std::wstring_view path) override;
    Answer<std::uint32_t> attributes(std::wstring_view path) override;
    std::unique_ptr<DirectorySearch> search(std::wstring_view pattern) override;
    SystemCode append(std::wstring_view path, std::string_view bytes) override;
    SystemCode overwrite(std::wstring_view path, std::string_view bytes) override;
    SystemCode remove(std::wstring_view path) override;
    SystemCode replace(std::wstring_view path, std::wstring_view by) override;
    SystemCode moveOver(std::wstring_view from, std::wstring_view to) override;
    std::wstring currentDirectory() override;
};

} // namespace tarv
