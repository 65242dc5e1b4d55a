#pragma once

#include "bench/Stopwatch.h"
#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "platform/ProfileFiles.h"

namespace tarv::bench {

/// Passes every call on and adds up the time it takes.
class TimedProfileFiles : public ProfileFiles {
public:
    TimedProfileFiles(ProfileFiles& inner, double& sum) : inner_(inner), sum_(sum) {}

    std::wstring getString(std::wstring_view group, std::wstring_view entry, std::wstring_view fallback,
                           std::uint32_t size, std::wstring_view file) override {
        const Lap lap(sum_);
        return inner_.getString(group, entry, fallback, size, file);
    }
    bool writeString(std::wstring_view group, std::wstring_view entry, std::wstring_view value,
                     std::wstring_view file) override {
        const Lap lap(sum_);
        return inner_.writeString(group, entry, value, file);
    }
    std::wstring getSectionNames(std::uint32_t size, std::wstring_view file) override {
        const Lap lap(sum_);
        return inner_.getSectionNames(size, file);
    }
    std::wstring getSection(std::wstring_view group, std::uint32_t size, std::wstring_view file) override {
        const Lap lap(sum_);
        return inner_.getSection(group, size, file);
    }

private:
    ProfileFiles& inner_;
    double& sum_;
};

class TimedFileStore : public FileStore {
public:
    TimedFileStore(FileStore& inner, double& sum) : inner_(inner), sum_(sum) {}

    Answer<std::int64_t> length(std::wstring_view path) override {
        const Lap lap(sum_);
        return inner_.length(path);
    }
    Answer<std::uint32_t> attributes(std::wstring_view path) override {
        const Lap lap(sum_);
        return inner_.attributes(path);
    }
    SystemCode refusesReading(std::wstring_view path) override { return inner_.refusesReading(path); }
    std::unique_ptr<DirectorySearch> search(std::wstring_view pattern) override {
        return inner_.search(pattern);
    }
    SystemCode append(std::wstring_view path, std::string_view bytes) override {
        const Lap lap(sum_);
        return inner_.append(path, bytes);
    }
    SystemCode overwrite(std::wstring_view path, std::string_view bytes) override {
        const Lap lap(sum_);
        return inner_.overwrite(path, bytes);
    }
    SystemCode remove(std::wstring_view path) override { return inner_.remove(path); }
    SystemCode replace(std::wstring_view path, std::wstring_view by) override {
        return inner_.replace(path, by);
    }
    SystemCode moveOver(std::wstring_view from, std::wstring_view to) override {
        return inner_.moveOver(from, to);
    }
    std::wstring currentDirectory() override { return inner_.currentDirectory(); }

private:
    FileStore& inner_;
    double& sum_;
};

} // namespace tarv::bench
