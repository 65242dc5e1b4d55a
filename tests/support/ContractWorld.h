#pragma once

#include "platform/Platform.h"
#include "platform/Processes.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarv {

/// What the contract tests need besides the border itself: a world that a test
/// may change. One test program makes it of the fakes, the other of the running
/// Windows, so that a fake cannot drift from what it stands for.
class ContractWorld {
public:
    static std::unique_ptr<ContractWorld> make();
    virtual ~ContractWorld() = default;

    virtual Platform& border() = 0;

    /// An empty folder with a trailing "\"; it goes with the world.
    virtual std::wstring folder() = 0;
    virtual void putFile(const std::wstring& path, std::string_view bytes) = 0;
    virtual void putFolder(const std::wstring& path) = 0;
    virtual void setAttributes(const std::wstring& path, std::uint32_t attributes) = 0;
    /// None when there is no such file.
    virtual std::optional<std::string> bytes(const std::wstring& path) = 0;

    /// Whether files of the tests may come into the Windows folder.
    virtual bool ownsWindowsFolder() { return true; }

    virtual void setVariable(const std::wstring& name, const std::wstring& text) = 0;

    /// A program that runs until it is ended.
    virtual ProcessRequest sleeper() = 0;
    virtual void endSleeper(KernelHandle process) = 0;
    /// A file that no start finds.
    virtual std::wstring missingProgram() = 0;
};

/// A world of its own.
struct ContractCase {
    std::wstring path(std::wstring_view name) const { return world->folder() + std::wstring(name); }

    std::unique_ptr<ContractWorld> world = ContractWorld::make();
    Platform& border = world->border();
};

struct Contract : testing::Test, ContractCase {};

} // namespace tarv
