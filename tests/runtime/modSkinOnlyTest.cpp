#include "runtime/modSkinOnly.h"

#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

struct ModSkinOnly : testing::Test {
    FakePlatform fake;
    Runtime rt{fake.border};
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
    for (const bool option : {false, true}) {
        for (const std::int32_t target : {0, 0x99}) {
            const auto& log = apply(target ? std::optional(WindowHandle{0x99}) : std::nullopt, option);
            EXPECT_EQ(fake.automation.uses(), (std::vector<std::wstring>{L"call skin.#2", L"call skin.#3",
                                                                         L"put skin.#1", L"put skin.#5"}));
            EXPECT_EQ(log[0].arguments[0], Value(std::wstring(L"P:\\Suite\\Styles\\Windows8.cjstyles")));
            EXPECT_EQ(log[0].arguments[1], Value(std::wstring(L"NormalAero.ini")));
            EXPECT_EQ(log[1].arguments[0], Value(target ? target : 0x77));
            EXPECT_EQ(log[2].arguments[0], Value(std::int32_t{15}));
            EXPECT_EQ(log[3].arguments[0], Value(!option));
        }
    }
}

TEST_F(ModSkinOnly, AnyFailureEndsSilently) {
    for (const int failing : {1, 2, 3, 4}) {
        fake.faults.fail(failing < 3 ? "AutomationObject.call" : "AutomationObject.put", 5,
                         {(failing - 1) % 2 + 1});
        EXPECT_EQ(apply().size(), static_cast<std::size_t>(failing));
        fake.faults.heal();
    }
    control.parent = WindowHandle::none;
    EXPECT_EQ(apply().size(), 1U) << "no window to skin";
    EXPECT_TRUE(fake.desktop.boxes.empty());

    control.object = nullptr;
    fake.disk.remove(L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini");
    EXPECT_TRUE(apply().empty());
    ASSERT_EQ(fake.desktop.boxes.size(), 1U) << "a missing entry shows without a control, too";
    EXPECT_EQ(fake.desktop.boxes[0].title, L"INSTALLATIONS-FEHLER");
}

TEST_F(ModSkinOnly, StyleFollowsTheColourKey) {
    constexpr const wchar_t* office2007 = L"Styles\\Office2007_neu.cjstyles";
    constexpr const wchar_t* office2010 = L"Styles\\Office2010.cjstyles";
    const struct {
        const wchar_t *key, *file, *scheme;
    } cases[] = {
        {L"BLUE", office2007, L"LightBlue.ini"},    {L"SILVER", office2007, L"NormalSilver.ini"},
        {L"BLACK", office2007, L"NormalBlack.ini"}, {L"", L"Styles\\Windows8.cjstyles", L"NormalAero.ini"},
        {L"blue", office2010, L"NormalAero.ini"},
    };
    EXPECT_EQ(skinStyle(rt, L"P:\\Suite\\", L"GREEN").file, office2007);
    fake.disk.addFile(L"P:\\Suite\\Styles\\Office2010.cjstyles", "x");
    for (const auto& c : cases) {
        EXPECT_EQ(skinStyle(rt, L"P:\\Suite\\", c.key).file, c.file) << c.key;
        EXPECT_EQ(skinStyle(rt, L"P:\\Suite\\", c.key).scheme, c.scheme) << c.key;
    }
}

} // namespace
} // namespace tarv
