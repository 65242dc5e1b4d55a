// The info centre's load, split into its stages, for 10 to 1,000 groups of ten entries and for the largest
// installation known. Runs over the real border; the times of the profile functions and of the trace file are
// taken at the border. Then all nodes of that large tree against bare inserts into the same control.
#include "bench/Comparison.h"
#include "bench/TimedBorder.h"
#include "infocenter/InfoReport.h"
#include "infocenter/IniTree.h"
#include "infocenter/IniTreeView.h"
#include "infocenter/Search.h"
#include "infocenter/SystemProbes.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Runtime.h"
#include "ui/CommonControls.h"

#include <windows.h>

#include <objbase.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

namespace {

using namespace tarv;
using namespace tarv::bench;

enum Stage {
    management,
    profiles,
    trace,
    inserts,
    report,
    tree,
    stages
};
constexpr const char* stageNames[stages]{"WMI",          "profile functions", "trace file",
                                         "tree control", "our report",        "our tree"};
using Times = std::array<double, stages>;

/// A visible window with a tree control, which passes the control's notifications on.
class TreeWindow {
public:
    TreeWindow() {
        const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_TREEVIEW_CLASSES};
        ui::late::InitCommonControlsEx(&controls);
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = answer;
        windowClass.lpszClassName = L"TreeBench";
        RegisterClassW(&windowClass);
        window_ = CreateWindowW(L"TreeBench", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 640, 480, nullptr,
                                nullptr, nullptr, nullptr);
        tree_ = CreateWindowW(WC_TREEVIEWW, L"", WS_CHILD | WS_VISIBLE | TVS_HASLINES | TVS_HASBUTTONS, 0, 0,
                              600, 400, window_, nullptr, nullptr, nullptr);
    }
    TreeWindow(const TreeWindow&) = delete;
    TreeWindow& operator=(const TreeWindow&) = delete;
    ~TreeWindow() { DestroyWindow(window_); }

    HWND tree() const { return tree_; }
    void notify(IniTreeView& view) {
        SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&view));
    }

    /// Without drawing: a person opens one group at a time.
    void expandAll() const {
        SendMessageW(tree_, WM_SETREDRAW, FALSE, 0);
        for (HTREEITEM item = TreeView_GetRoot(tree_); item; item = TreeView_GetNextSibling(tree_, item))
            TreeView_Expand(tree_, item, TVE_EXPAND);
        SendMessageW(tree_, WM_SETREDRAW, TRUE, 0);
    }

private:
    static LRESULT CALLBACK answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (auto* view = reinterpret_cast<IniTreeView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
            view && message == WM_NOTIFY)
            view->onNotify(*reinterpret_cast<const NMHDR*>(lParam));
        return DefWindowProcW(window, message, wParam, lParam);
    }

    HWND window_;
    HWND tree_;
};

std::wstring temporaryFolder() {
    std::array<wchar_t, MAX_PATH> folder{};
    GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    return std::wstring(folder.data()) + L"tarvenik-bench";
}

void writeInstallation(const std::wstring& folder, int groups, int entries) {
    CreateDirectoryW(folder.c_str(), nullptr);
    CreateDirectoryW((folder + L"\\TARVENIK").c_str(), nullptr);
    std::string text;
    for (int group = 0; group < groups; ++group) {
        text += "[Gruppe" + std::to_string(group) + "]\r\n";
        for (int entry = 0; entry < entries; ++entry)
            text +=
                "Eintrag" + std::to_string(entry) + "=N:\\TARVENIK\\Daten\\" + std::to_string(entry) + "\r\n";
    }
    const HANDLE file = CreateFileW((folder + L"\\TARVENIK\\Q_Machine.INI").c_str(), GENERIC_WRITE, 0,
                                    nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(file);
    DeleteFileW((folder + L"\\TARVENIK\\QV.ini").c_str());
}

Times measureOnce(const Platform& border, IniTreeView& view) {
    Times times{};
    TimedProfileFiles timedProfiles(*border.profiles, times[profiles]);
    TimedFileStore timedFiles(*border.files, times[trace]);
    Platform timed = border;
    timed.profiles = &timedProfiles;
    timed.files = &timedFiles;
    Runtime rt{timed};

    std::wstring name, version;
    {
        const Lap lap(times[management]);
        GetOSFromWMI(rt, name, version);
    }
    double whole = 0;
    {
        const Lap lap(whole);
        BuildInfoReport(rt);
    }
    times[report] = std::max(0.0, whole - times[management] - times[profiles] - times[trace]);
    const double before = times[profiles] + times[trace];
    IniTree read;
    whole = 0;
    {
        const Lap lap(whole);
        read = ReadIniTree(rt);
    }
    times[tree] = whole - (times[profiles] + times[trace] - before);
    {
        const Lap lap(times[inserts]);
        view.fill(std::move(read));
    }
    return times;
}

Times measure(const Platform& border, IniTreeView& view) {
    std::array<std::vector<double>, stages> all;
    for (int round = 0; round < 15; ++round) {
        const Times once = measureOnce(border, view);
        for (std::size_t i = 0; i < stages; ++i)
            all[i].push_back(once[i]);
    }
    Times medians{};
    std::ranges::transform(all, medians.begin(), [](auto& times) { return median(times); });
    return medians;
}

double sum(const Times& times, std::initializer_list<Stage> which) {
    double total = 0;
    for (const Stage stage : which)
        total += times[stage];
    return total;
}

/// What the largest installation known holds.
constexpr int mostGroups = 1700, mostEntries = 14;
constexpr const char* largest = "23,800 entries in 1,700 groups";

void compareLoads(const Platform& border, const std::wstring& folder, IniTreeView& view) {
    double perGroup = 0;
    const auto compare = [&](const std::string& name, int groups, int entries, bool everyStage,
                             const char* aim) {
        writeInstallation(folder, groups, entries);
        Sleep(3000); // until then Wine takes the file for one that may still be written, and parses it at
                     // every call
        const Times times = measure(border, view);
        const std::string load = "Info centre, " + name + ": ";
        const double whole = sum(times, {management, profiles, trace, inserts, report, tree});
        for (std::size_t i = 0; everyStage && i < stages; ++i)
            printRow((load + stageNames[i]).c_str(), "whole load", "ms", perCall({times[i], whole}, 1000),
                     "");
        printRow((load + "our share (report and tree)").c_str(), "whole load", "ms",
                 perCall({sum(times, {report, tree}), whole}, 1000), aim);
        return sum(times, {profiles, trace, inserts, tree}) / groups;
    };
    for (const int groups : {10, 100, 1000}) {
        const std::string name = std::to_string(groups) + " groups";
        const double growing = compare(name, groups, 10, groups == 1000, "<= 0.1");
        if (perGroup == 0)
            perGroup = growing;
        else
            printRow(("Info centre, " + name + ": growth, per group").c_str(), "10 groups", "us",
                     {growing, perGroup}, "<= 1.2");
    }
    compare(largest, mostGroups, mostEntries, true, "");
}

IniTree largeTree() {
    IniTree tree;
    for (int group = 0; group < mostGroups; ++group)
        tree.groups.push_back({L"Q_Machine.INI  [Gruppe" + std::to_wstring(group) + L"]",
                               std::vector<std::wstring>(mostEntries, L"Eintrag=N:\\TARVENIK\\Daten")});
    return tree;
}

/// The farthest match, found and shown: all entries are looked at, and its group opens.
void measureFind() {
    TreeWindow window;
    IniTreeView view;
    view.attach(window.tree());
    window.notify(view);
    IniTree tree = largeTree();
    tree.groups.back().entries.back() = L"Eintrag=Prüfung";
    std::vector<double> times;
    for (int round = 0; round < 15; ++round) {
        view.fill(tree);
        times.push_back(0);
        const Lap lap(times.back());
        bool wrapped = false;
        if (const auto found = findInTree(view.tree(), L"PRÜF", {}, {.further = true}, wrapped))
            view.select(*found);
    }
    printRow((std::string("Finding the last one of ") + largest).c_str(), "limit of 50 ms", "ms",
             perCall({median(times), 50000}, 1000), "<= 1");
}

HTREEITEM insertBare(HWND control, HTREEITEM parent, const std::wstring& text) {
    TVINSERTSTRUCTW item{};
    item.hParent = parent;
    item.hInsertAfter = TVI_LAST;
    item.item.mask = TVIF_TEXT;
    item.item.pszText = const_cast<wchar_t*>(text.c_str());
    return TreeView_InsertItem(control, &item);
}

/// The tree as our window fills it, where the entries of a group enter when it is first
/// opened, against everything at once. Then the same with every group opened, which nobody does by hand.
void compareInserts() {
    const IniTree tree = largeTree();
    TreeWindow ownWindow, bareWindow;
    IniTreeView view;
    view.attach(ownWindow.tree());
    ownWindow.notify(view);
    const auto fillBare = [&] {
        const HWND control = bareWindow.tree();
        SendMessageW(control, WM_SETREDRAW, FALSE, 0);
        TreeView_DeleteAllItems(control);
        for (const IniGroupNode& group : tree.groups) {
            const HTREEITEM parent = insertBare(control, TVI_ROOT, group.text);
            for (const std::wstring& entry : group.entries)
                insertBare(control, parent, entry);
        }
        SendMessageW(control, WM_SETREDRAW, TRUE, 0);
    };
    const Pair filled = byTurns(15, [&] { view.fill(tree); }, fillBare);
    printRow((std::string("Tree filled with ") + largest).c_str(), "bare inserts, redraw off", "ms",
             perCall(filled, 1000), "<= 1.2");
    const Pair opened = byTurns(
        3,
        [&] {
            view.fill(tree);
            ownWindow.expandAll();
        },
        [&] {
            fillBare();
            bareWindow.expandAll();
        });
    printRow((std::string("Tree filled and all opened, ") + largest).c_str(), "bare inserts, redraw off",
             "ms", perCall(opened, 1000), "<= 1.2");
}

} // namespace

int main() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
        const std::wstring folder = temporaryFolder();
        SetEnvironmentVariableW(L"ProgramData", folder.c_str());
        WindowsPlatform windows;
        TreeWindow window;
        IniTreeView view;
        view.attach(window.tree());
        compareLoads(windows, folder, view);
        measureFind();
        compareInserts();
    }
    CoUninitialize();
    return 0;
}
