#include "platform/FileStore.h"
#include "platform/windows/Makers.h"
#include "win/Handle.h"
#include "win/NoSystemBoxes.h"
#include "win/SystemText.h"

namespace tarv {

namespace {

class WindowsDirectorySearch final : public DirectorySearch {
public:
    explicit WindowsDirectorySearch(std::wstring_view pattern) {
        const NoSystemBoxes silence;
        // The basic form leaves out the short names, which cost the most to find.
        search_.reset(FindFirstFileExW(toFileName(pattern).c_str(), FindExInfoBasic, &data_,
                                       FindExSearchNameMatch, nullptr, 0));
        state_ = search_ ? 0 : GetLastError();
    }

    Answer<DirectoryEntry> next() override {
        if (state_ != 0)
            return Failure{state_};
        DirectoryEntry entry{data_.cFileName, data_.dwFileAttributes};
        const NoSystemBoxes silence;
        if (!FindNextFileW(search_.get(), &data_))
            state_ = GetLastError();
        return entry;
    }

private:
    WIN32_FIND_DATAW data_{};
    SearchHandle search_;
    /// Why there is no further entry; 0 while data_ holds one.
    SystemCode state_ = 0;
};

/// One write call for all bytes: only then is an appended line whole among those of other writers.
SystemCode write(HANDLE file, std::string_view bytes) {
    DWORD written = 0;
    if (!WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr))
        return GetLastError();
    return written == bytes.size() ? ERROR_SUCCESS : ERROR_WRITE_FAULT;
}

/// ReplaceFile does not take relative names everywhere.
std::wstring fullFileName(std::wstring_view path) {
    return toFileName(fullName(path));
}

class WindowsFileStore final : public FileStore {
public:
    Answer<std::int64_t> length(std::wstring_view path) override {
        const NoSystemBoxes silence;
        WIN32_FILE_ATTRIBUTE_DATA data{};
        if (!GetFileAttributesExW(toFileName(path).c_str(), GetFileExInfoStandard, &data))
            return Failure{SystemCode{GetLastError()}};
        if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            return 0;
        return static_cast<std::int64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
    }

    Answer<std::uint32_t> attributes(std::wstring_view path) override {
        const NoSystemBoxes silence;
        const DWORD attributes = GetFileAttributesW(toFileName(path).c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES)
            return Failure{SystemCode{GetLastError()}};
        return std::uint32_t{attributes};
    }

    SystemCode refusesReading(std::wstring_view path) override {
        const NoSystemBoxes silence;
        const FileHandle file(CreateFileW(toFileName(path).c_str(), GENERIC_READ,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        return file ? ERROR_SUCCESS : GetLastError();
    }

    std::unique_ptr<DirectorySearch> search(std::wstring_view pattern) override {
        return std::make_unique<WindowsDirectorySearch>(pattern);
    }

    SystemCode append(std::wstring_view path, std::string_view bytes) override {
        const NoSystemBoxes silence;
        // The right to append alone makes the system put every write behind the end, whoever else writes.
        const FileHandle file(CreateFileW(toFileName(path).c_str(), FILE_APPEND_DATA | SYNCHRONIZE,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                          FILE_ATTRIBUTE_NORMAL, nullptr));
        return file ? write(file.get(), bytes) : GetLastError();
    }

    SystemCode overwrite(std::wstring_view path, std::string_view bytes) override {
        const NoSystemBoxes silence;
        // Opened and cut instead of created anew: creating refuses a hidden file and drops its attributes.
        const FileHandle file(CreateFileW(toFileName(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                          OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file || !SetEndOfFile(file.get()))
            return GetLastError();
        return write(file.get(), bytes);
    }

    SystemCode remove(std::wstring_view path) override {
        const NoSystemBoxes silence;
        return DeleteFileW(toFileName(path).c_str()) ? ERROR_SUCCESS : GetLastError();
    }

    SystemCode replace(std::wstring_view path, std::wstring_view by) override {
        const NoSystemBoxes silence;
        const std::wstring target = fullFileName(path);
        const std::wstring source = fullFileName(by);
        const DWORD attributes = GetFileAttributesW(target.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            return ERROR_ACCESS_DENIED; // not every system refuses to put a file in the place of an empty
                                        // folder
        }
        // Who may write the file need not be allowed to set its access rights: that alone must not fail.
        return ReplaceFileW(target.c_str(), source.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                            nullptr)
                   ? ERROR_SUCCESS
                   : GetLastError();
    }

    SystemCode moveOver(std::wstring_view from, std::wstring_view to) override {
        const NoSystemBoxes silence;
        return MoveFileExW(toFileName(from).c_str(), toFileName(to).c_str(), MOVEFILE_REPLACE_EXISTING)
                   ? ERROR_SUCCESS
                   : GetLastError();
    }

    std::wstring currentDirectory() override {
        return filledText([](wchar_t* buffer, DWORD size) { return GetCurrentDirectoryW(size, buffer); });
    }
};

} // namespace

std::unique_ptr<FileStore> makeFileStore() {
    return std::make_unique<WindowsFileStore>();
}

} // namespace tarv
