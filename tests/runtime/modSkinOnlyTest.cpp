#include "runtime/modSkinOnly.h"

#include "tests/support/Table.h"

namespace tarv {
namespace {

constexpr const wchar_t* machineFile = L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini";

TEST(Tables, modSkinOnly) {
    checkTable<World>("modSkinOnly.txt",
                      {{L"skinStyle", [](auto& w, const Row& row) {
                            if (row.on(1))
                                w.fake.disk.addFile(L"P:\\Suite\\Styles\\Office2010.cjstyles", "x");
                            const auto style = skinStyle(w.rt, L"P:\\Suite\\", row[0]);
                            return joined(std::wstring(style.file), style.scheme);
                        }}});
}

using modSkinOnly = Scripted;

TEST_F(modSkinOnly, SkinIsLoadedAppliedAndSetInThisOrderUntilSomethingFails) {
    const auto skin =
        fake.automation.object({{2, Empty{}}, {3, Empty{}}, {L"#1=", Empty{}}, {L"#5=", Empty{}}});
    fake.profiles.fill(machineFile, L"[Directories]\r\nProgrammDirectory=P:\\Suite");
    SkinControl control{skin, WindowHandle{0x77}};
    const auto uses = [&](std::optional<WindowHandle> target, bool option) {
        fake.automation.log.clear();
        ApplySkin(rt, control, target, true, false, option);
        std::wstring all;
        for (const Invocation& use : fake.automation.log) {
            all += use.member;
            for (const Value& argument : use.arguments)
                all += L" " + shown(argument);
        }
        return all;
    };
    const std::wstring load = L"#2 \"P:\\Suite\\Styles\\Windows8.cjstyles\" \"NormalAero.ini\"";
    EXPECT_EQ(uses({}, false), load + L"#3 119 Long#1= 15 Long#5= True");
    EXPECT_EQ(uses(WindowHandle{0x99}, true), load + L"#3 153 Long#1= 15 Long#5= False");
    const std::tuple<const char*, int, std::size_t> refused[]{
        {"AutomationObject.call", 1, 1}, {"AutomationObject.call", 2, 2}, {"AutomationObject.put", 1, 3}};
    for (const auto& [function, use, lastUse] : refused) {
        fake.faults.fail(function, 5, use, use);
        uses({}, false);
        EXPECT_EQ(fake.automation.log.size(), lastUse) << "what is refused ends the routine";
    }
    control.parent = WindowHandle::none;
    EXPECT_EQ(uses({}, false), load) << "no window to skin";
    EXPECT_EQ(shownBoxes(*this), L"");
    control.object = nullptr;
    fake.disk.remove(machineFile);
    EXPECT_EQ(uses({}, false), L"");
    EXPECT_EQ(fake.desktop.boxes.size(), 1u) << "a missing entry shows without a control, too";
}

} // namespace
} // namespace tarv
