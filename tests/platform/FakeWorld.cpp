#include "scripted/FakePlatform.h"
#include "tests/support/ContractWorld.h"

namespace tarv {
namespace {

class FakeWorld : public ContractWorld {
public:
    FakeWorld() { fake_.disk.addFolder(folder()); }

    Platform& border() override { return fake_.border; }
    std::wstring folder() override { return L"C:\\Vertrag\\"; }
    void putFile(const std::wstring& path, std::string_view bytes) override {
        fake_.disk.addFile(path, std::string(bytes));
    }
    void putFolder(const std::wstring& path) override { fake_.disk.addFolder(path); }
    void setAttributes(const std::wstring& path, std::uint32_t attributes) override {
        fake_.disk.find(path)->attributes = attributes;
    }
    std::optional<std::string> bytes(const std::wstring& path) override {
        const FakeEntry* entry = fake_.disk.find(path);
        return entry ? std::optional(entry->bytes) : std::nullopt;
    }
    void setVariable(const std::wstring& name, const std::wstring& text) override {
        fake_.facts.setVariable(name, text);
    }
    ProcessRequest sleeper() override {
        fake_.processes.waits = {wait_result::timeout};
        return {};
    }
    void endSleeper(KernelHandle) override {}
    std::wstring missingProgram() override {
        fake_.faults.fail("Processes.create", system_code::fileNotFound);
        fake_.faults.fail("Processes.startThroughShell", system_code::fileNotFound);
        return L"C:\\none.exe";
    }

private:
    FakePlatform fake_;
};

} // namespace

std::unique_ptr<ContractWorld> ContractWorld::make() {
    return std::make_unique<FakeWorld>();
}

} // namespace tarv
