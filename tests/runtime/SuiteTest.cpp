#include "platform/ErrorDisplay.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Starter.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/ModRkIni.h"
#include "runtime/cls_PathDialog.h"
#include "runtime/modBase64.h"
#include "runtime/modProgDebug.h"
#include "runtime/modSkinOnly.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

constexpr const wchar_t* machineFile = L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini";

struct SuiteCalls : World {
    std::wstring answer(const Row& row) {
        const std::wstring &routine = row[0], &first = row[1];
        const auto ini = [&](std::wstring_view text) { fake.profiles.fill(L"Pexoran.INI", text); };
        fake.profiles.fill(machineFile, L"[Directories]\r\nPROGRAMM=P:\\");
        if (routine == L"description")
            return runtimeErrorRecord(std::stoi(first)).description;
        if (routine == L"GetEXEmitPfad")
            return GetEXEmitPfad(rt, first);
        if (routine == L"GetProgVersion") {
            constexpr const wchar_t* file = L"C:\\Program Files\\TARVENIK\\Version.INI";
            EXPECT_EQ(GetProgVersion(rt), L"2023") << "no file";
            fake.profiles.fill(file, first);
            fake.disk.find(file)->attributes = static_cast<std::uint32_t>(std::stoi(row[2]));
            const std::wstring version = GetProgVersion(rt);
            return std::wstring(untilNul(version)) + L" " + std::to_wstring(version.size());
        }
        if (routine == L"entry") {
            ini(first);
            const Value value = Tarvwin_Eintrag(rt, L"sys", L"EINTRAG", valueOf(row[2]));
            return joined(shown(value), fake.profiles.getString(L"SYS", L"Eintrag", L"-", 99, L"Pexoran.INI"),
                          std::to_wstring(fake.automation.log.size()));
        }
        if (routine == L"machine") {
            fake.facts.setVariable(L"ProgramData", row[2]);
            fake.profiles.fill(machineFile, row[3]);
            EXPECT_EQ(GetMachineDirectoryQuiet(rt, L"none") + shownBoxes(*this), L"");
            const std::wstring folder = GetMachineDirectory(rt, first, false);
            return folder + shownBoxes(*this);
        }
        if (routine == L"WindowsFolder") {
            fake.facts.windows = first;
            return GetWindowsFolder(rt);
        }
        if (routine == L"DebugFileName") {
            fake.facts.program = L"D:\\TarvService.exe";
            ini(L"[Debug]\r\n" + first);
            return GetDebugFileName(rt);
        }
        if (routine == L"switch") {
            const std::wstring text = L"[Debug]\r\nDebugON=" + first + L"\r\nEntwicklung=" + first;
            ini(text);
            EXPECT_TRUE(DebugTraceEnabled(rt));
            std::wstring states = std::to_wstring(bIstEntwicklung(rt));
            const bool written = fake.profiles.text(L"Pexoran.INI") != text;
            ini(L"");
            for (const bool state : {bIstEntwicklung(rt), rt.trace.switchValue, written})
                states += L" " + std::to_wstring(state);
            return states;
        }
        if (routine == L"GetDruckEXE") {
            ini(L"[DRUCKOPT]\r\nPROGRAMM=" + first);
            fake.desktop.answers = {std::stoi(row[2])};
            const std::wstring program = GetDruckEXE(rt);
            return program + shownBoxes(*this);
        }
        if (routine == L"skinStyle") {
            if (row[2] == L"1")
                fake.disk.addFile(L"P:\\Suite\\Styles\\Office2010.cjstyles", "x");
            const SkinStyle style = skinStyle(rt, L"P:\\Suite\\", first);
            return joined(std::wstring(style.file), style.scheme);
        }
        if (routine == L"marker") {
            bool running = first == L"1";
            std::wstring name = row[2];
            EXPECT_EQ(MarkExternalProgram(rt, running, true, name), running);
            running = !running;
            EXPECT_NE(MarkExternalProgram(rt, running, false, name), first == L"0");
            return std::to_wstring(running) + L" " + name;
        }
        if (routine == L"StartExe") {
            std::wstring arguments = row[2], part = L"-";
            EXPECT_EQ(StartExe(rt, first, 0, arguments, row[3], false, part, row[4] == L"1", {}, false), -1);
            EXPECT_TRUE(fake.processes.open.empty());
            EXPECT_EQ(fake.desktop.pumps, 30);
            const ProcessRequest& request = fake.processes.created.at(0);
            EXPECT_TRUE(request.showWindow == 1 && !request.inheritHandles);
            return joined(request.commandLine, request.applicationName, arguments, part);
        }
        if (routine == L"AskErrorMsg") {
            const auto display = fake.automation.object(L"display");
            display->answers(L"EMW", valueOf(first));
            fake.automation.provided.emplace(errorDisplayProgId, display);
            ErrorRecord error;
            return std::to_wstring(AskErrorMsg(rt, error, L"Ort", {}));
        }
        ByteArray in{0, {}}, out;
        for (const wchar_t byte : first)
            in.bytes.push_back(static_cast<std::uint8_t>(byte));
        routine == L"encode" ? Base64EncodeBytes(rt, in, out) : Base64DecodeBytes(rt, in, out);
        return {out.bytes.begin(), out.bytes.end()};
    }
};

TEST(Tables, Suite) {
    checkTable<SuiteCalls>("Suite.txt");
}

using Suite = Scripted;

TEST_F(Suite, FoldersAndTextsAreCutAtTheirBuffers) {
    fake.profiles.fill(machineFile, L"[Directories]\r\nX=" + std::wstring(300, L'x'));
    EXPECT_EQ(GetMachineDirectoryQuiet(rt, L"X"), std::wstring(254, L'x') + L"\\");
    fake.profiles.fill(L"Pexoran.INI", L"[SYS]\r\nX=" + std::wstring(3000, L'x'));
    EXPECT_EQ(suiteText(rt, L"SYS", L"X", L""), std::wstring(1999, L'x'));
    // Windows writes nothing of a folder that does not fit.
    fake.facts.windows = std::wstring(254, L'w');
    EXPECT_EQ(GetWindowsFolder(rt), fake.facts.windows + L"\\");
    fake.facts.windows += L'w';
    EXPECT_EQ(GetWindowsFolder(rt), L"\\");
    EXPECT_EQ(GetWinDir(rt), fake.facts.windows);
    fake.facts.windows += L'w';
    EXPECT_EQ(GetWinDir(rt), L"");
}

TEST_F(Suite, TraceLinesAreNumberedForTheWholeProcess) {
    const auto content = [&] { return fake.disk.bytes(L"C:\\Program Files\\TARVENIK\\rkZAL_Debug.txt"); };
    fake.faults.fail("FileStore.overwrite", system_code::sharingViolation, 1, 1);
    DebugTrace(rt, L"verloren");
    DebugTrace(rt, L"Ölstand 5 €, ж");
    DebugTrace(rt, L"");
    EXPECT_EQ(content(), "2 - TarvService\t\xD6lstand 5 \x80, ?\r\n3 - TarvService\t\r\n");
    DebugTrace(rt, L"neu", true);
    EXPECT_EQ(content(), "4 - TarvService\tneu\r\n");
    // The file's name is kept only where asked.
    for (const wchar_t* name : {L"a", L"b"}) {
        fake.profiles.fill(L"Pexoran.INI", std::wstring(L"[Debug]\r\nSaveDebugIN=C:\\") + name);
        DebugTrace(rt, L"", *name == L'a', true);
    }
    DebugTrace(rt, L"", true, true);
    EXPECT_EQ(fake.disk.bytes(L"C:\\a"), "5 - TarvService\t\r\n6 - TarvService\t\r\n");
    EXPECT_EQ(fake.disk.bytes(L"C:\\b"), "7 - TarvService\t\r\n");
}

TEST_F(Suite, PathDialogKeepsTheOutcomeOfTheLastDialog) {
    cls_PathDialog dialog(rt);
    dialog.StartPathDialog();
    EXPECT_EQ(fake.shell.folderRequests.back().owner, fake.shell.desktop) << "no owner was given";
    dialog.sTitel(L"Ordner wählen");
    const std::tuple<std::int32_t, std::intptr_t, std::optional<std::wstring>, const wchar_t*> cases[]{
        {0, 0x10010, L"C:\\", L"C:\\"},
        {0x20, 0x20, L"C:\\Daten", L"C:\\Daten\\"},
        {-2, -2, std::nullopt, L"\\"}};
    for (const auto& [owner, window, chosen, expected] : cases) {
        fake.shell.chosenFolder = chosen;
        dialog.hHande(owner);
        dialog.StartPathDialog();
        EXPECT_EQ(dialog.bCancel(), !chosen);
        EXPECT_EQ(dialog.sDriveDir(), expected);
        const FolderRequest& request = fake.shell.folderRequests.back();
        EXPECT_EQ(static_cast<std::intptr_t>(request.owner), window);
        EXPECT_EQ(request.title + std::to_wstring(request.flags), L"Ordner wählen1");
    }
}

TEST_F(Suite, SkinIsLoadedAppliedAndSetInThisOrderUntilSomethingFails) {
    const auto skin = fake.automation.object(L"skin");
    for (const wchar_t* member : {L"#2", L"#3", L"#1=", L"#5="})
        skin->answers(member, Empty{});
    fake.profiles.fill(machineFile, L"[Directories]\r\nProgrammDirectory=P:\\Suite");
    SkinControl control{skin, WindowHandle{0x77}};
    const auto uses = [&](std::optional<WindowHandle> target, bool option) {
        fake.automation.log.clear();
        ApplySkin(rt, control, target, true, false, option);
        std::wstring all;
        for (const Invocation& use : fake.automation.log)
            for (all += use.what.substr(use.what.find(L' ') + 1); const Value& argument : use.arguments)
                all += L" " + shown(argument);
        return all;
    };
    const std::wstring load = L"skin.#2 \"P:\\Suite\\Styles\\Windows8.cjstyles\" \"NormalAero.ini\"";
    EXPECT_EQ(uses({}, false), load + L"skin.#3 119 Longskin.#1= 15 Longskin.#5= True");
    EXPECT_EQ(uses(WindowHandle{0x99}, true), load + L"skin.#3 153 Longskin.#1= 15 Longskin.#5= False");
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

TEST_F(Suite, Base64ArraysKeepTheirLowerBound) {
    const auto run = [&](auto convert, ByteArray in, ByteArray out = {}) {
        convert(rt, in, out);
        return out;
    };
    const auto highest = std::numeric_limits<std::int32_t>::max();
    for (const std::int32_t bound : {1, -7, std::numeric_limits<std::int32_t>::min(), highest - 3}) {
        const ByteArray digits = run(Base64EncodeBytes, {bound, {'M', 'a', 'n'}}, {5, {1, 2}});
        EXPECT_EQ(digits, (ByteArray{bound, {'T', 'W', 'F', 'u'}}));
        EXPECT_EQ(run(Base64DecodeBytes, digits), (ByteArray{bound, {'M', 'a', 'n'}}));
    }
    EXPECT_THROW(run(Base64EncodeBytes, {highest - 2, {1, 2, 3}}), RuntimeError);
    EXPECT_THROW(run(Base64DecodeBytes, {highest, {'T', 'Q'}}), RuntimeError);
    const ByteArray untouched{3, {1, 2, 3}};
    EXPECT_EQ(run(Base64EncodeBytes, {1, {}}, untouched), untouched);
    EXPECT_EQ(run(Base64DecodeBytes, {1, {}}, untouched), untouched);
    const auto mixed = [](std::size_t size) {
        ByteArray bytes{0, std::vector<std::uint8_t>(size)};
        for (std::size_t i = 0; i < size; ++i)
            bytes.bytes[i] = static_cast<std::uint8_t>((i + size) * 2654435761u >> 7);
        return bytes;
    };
    for (std::size_t size = 1; size <= 1000; ++size) {
        const ByteArray bytes = mixed(size);
        ByteArray both = run(Base64EncodeBytes, bytes);
        EXPECT_EQ(both.bytes.size(), (size + 2) / 3 * 4);
        Base64DecodeBytes(rt, both, both);
        EXPECT_EQ(both, bytes);
    }
    const ByteArray large = mixed(64u << 20);
    EXPECT_TRUE(run(Base64DecodeBytes, run(Base64EncodeBytes, large)) == large);
}

TEST_F(Suite, Base64TablesFollowTheCodePage) {
    BuildBase64Tables(rt);
    EXPECT_EQ(rt.base64->encode16[62], '+');
    EXPECT_EQ(rt.base64->decode16['9'], 61);
    EXPECT_EQ(rt.base64->characterOfByte[0x80], 0x20AC);
    EXPECT_EQ(rt.base64->byteOfCharacter[0x20AC], 0x80);
    EXPECT_EQ(rt.base64->byteOfCharacter[0xE4], 0xE4);
    EXPECT_EQ(rt.base64->byteOfCharacter.size(), 16384u) << "others index it, too";
}

} // namespace
} // namespace tarv
