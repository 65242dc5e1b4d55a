// Any bytes in the configuration files give a tree that shows every group and every entry of a group once,
// and a trace file with a name.
#include "infocenter/IniTree.h"

#include "runtime/modProgDebug.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/World.h"

#include <set>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    World w;
    const std::size_t half = size / 2;
    w.fake.disk.addFile(L"C:\\Windows\\Pexoran.INI", "[Debug]\r\n" + std::string(bytes, bytes + half));
    w.fake.disk.addFile(L"C:\\ProgramData\\TARVENIK\\Q_Machine.INI", std::string(bytes, bytes + half));
    w.fake.disk.addFile(L"C:\\ProgramData\\TARVENIK\\QV.ini", std::string(bytes + half, bytes + size));

    require(!GetDebugFileName(w.rt).empty());
    const IniTree tree = ReadIniTree(w.rt);
    std::set<std::wstring> keys;
    for (const IniGroupNode& group : tree.groups) {
        const auto name = group.text.find(L"  [") + 3;
        require(group.text.ends_with(L']') &&
                (group.text.starts_with(L"Q_Machine.INI  [") || group.text.starts_with(L"QV.INI  [")));
        const std::wstring key = group.text.substr(name, group.text.size() - name - 1);
        require(keys.insert(key).second);
        for (const std::wstring& entry : group.entries)
            require(keys.insert(key + L"|" + entry.substr(0, entry.find(L'='))).second);
    }
    return 0;
}
