// Any bytes in the configuration files give a tree: every key once, no entry lost but those of a name that
// was there before, the marked groups without entries.
#include "infocenter/IniTree.h"
#include "tests/fuzz/FuzzInput.h"
#include "scripted/FakePlatform.h"

#include <set>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    FakePlatform fake;
    Runtime rt{fake.border};
    const std::size_t half = size / 2;
    fake.disk.addFile(L"C:\\ProgramData\\TARVENIK\\Q_Machine.INI", std::string(bytes, bytes + half));
    fake.disk.addFile(L"C:\\ProgramData\\TARVENIK\\QV.ini", std::string(bytes + half, bytes + size));

    const IniTree tree = ReadIniTree(rt);
    std::set<std::wstring> keys;
    for (const IniGroupNode& group : tree.groups) {
        require(keys.insert(group.key).second && group.key.starts_with(L"K"));
        require(group.text == L"Q_Machine.INI  [" + group.key.substr(1) + L"]" ||
                group.text == L"QV.INI  [" + group.key.substr(1) + L"]");
        for (const IniEntryNode& entry : group.entries)
            require(keys.insert(entry.key).second &&
                    entry.key == group.key + L"|" + entry.text.substr(0, entry.text.find(L'=')));
    }
    return 0;
}
