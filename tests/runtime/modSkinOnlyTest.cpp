#include "runtime/modSkinOnly.h"

#include "tests/support/FakePlatform.h"

namespace tarv {
namespace {

struct ModSkinOnly : Scripted {
    std::shared_ptr<FakeObject> skin = fake.automation.object(L"skin");
    SkinControl control{skin, WindowHandle{0x77}};

    ModSkinOnly() {
        fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini",
                           L"[Directories]\r\nProgrammDirectory=P:\\Suite\r\n");
        skin->answers(2, Empty{}).answers(3, Empty{}).property(1).property(5);
    }
    const std::vector<Invocation>& apply(std::optional<WindowHandle> target = {}, bool option = false) {
        fake.automation.log.clear();
        ApplySkin(rt, control, target, true, false, option);
        return fake.automation.log;
    }
};

TEST_F(ModSkinOnly, LoadsAppliesAndSetsOptionsInThisOrder) {
    const std::tuple<std::optional<WindowHandle>, std::int32_t, bool> cases[] = {
        {{}, 0x77, false}, {WindowHandle{0x99}, 0x99, true}};
    for (const auto& [target, handle, option] : cases) {
        const auto& log = apply(target, option);
        EXPECT_EQ(fake.automation.uses(), (std::vector<std::wstring>{L"call skin.#2", L"call skin.#3",
                                                                     L"put skin.#1", L"put skin.#5"}));
        EXPECT_EQ(log[0].arguments[0], Value(std::wstring(L"P:\\Suite\\Styles\\Windows8.cjstyles")));
        EXPECT_EQ(log[0].arguments[1], Value(std::wstring(L"NormalAero.ini")));
        EXPECT_EQ(log[1].arguments[0], Value(handle));
        EXPECT_EQ(log[2].arguments[0], Value(std::int32_t{15}));
        EXPECT_EQ(log[3].arguments[0], Value(!option));
    }
}

TEST_F(ModSkinOnly, AnyFailureEndsSilently) {
    for (const int failing : {1, 2, 3, 4}) {
        fake.faults.fail(failing < 3 ? "AutomationObject.call" : "AutomationObject.put", 5,
                         {2 - failing % 2});
        EXPECT_EQ(apply().size(), static_cast<std::size_t>(failing));
        fake.faults.heal();
    }
    control.parent = WindowHandle::none;
    EXPECT_EQ(apply().size(), 1U) << "no window to skin";
    EXPECT_TRUE(fake.desktop.boxes.empty());

    control.object = nullptr;
    fake.disk.remove(L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini");
    EXPECT_TRUE(apply().empty());
    EXPECT_EQ(fake.desktop.boxes.size(), 1U) << "a missing entry shows without a control, too";
}

TEST_F(ModSkinOnly, StyleFollowsTheColourKey) {
    const auto style = [&](std::wstring_view key) {
        const SkinStyle chosen = skinStyle(rt, L"P:\\Suite\\", key);
        return std::wstring(chosen.file) + L'|' + std::wstring(chosen.scheme);
    };
    EXPECT_EQ(style(L"BLUE"), L"Styles\\Office2007_neu.cjstyles|LightBlue.ini");
    EXPECT_EQ(style(L"SILVER"), L"Styles\\Office2007_neu.cjstyles|NormalSilver.ini");
    EXPECT_EQ(style(L"BLACK"), L"Styles\\Office2007_neu.cjstyles|NormalBlack.ini");
    EXPECT_EQ(style(L""), L"Styles\\Windows8.cjstyles|NormalAero.ini");
    EXPECT_EQ(style(L"blue"), L"Styles\\Office2007_neu.cjstyles|NormalAero.ini");
    fake.disk.addFile(L"P:\\Suite\\Styles\\Office2010.cjstyles", "x");
    EXPECT_EQ(style(L"blue"), L"Styles\\Office2010.cjstyles|NormalAero.ini");
}

} // namespace
} // namespace tarv
