// The XML wrapper against bare calls of the same component through its dual interfaces, in one run: loading a
// document of 50 MB, 10,000 reads by path, saving. Both sides work on the same files, turn by turn.
//
// xml_bench [MEGABYTES] [ROUNDS]
//
// Two answers: medians over the rounds, and the shortest times, which other programs on the machine disturb
// least.

#include "platform/windows/ComPtr.h"
#include "platform/windows/Variant.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Runtime.h"
#include "xml/clsXML.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <numeric>
#include <string>
#include <vector>

#include <objbase.h>

#include <msxml2.h>

namespace {

using namespace tarv;

constexpr std::size_t reads = 10000;
constexpr std::size_t slicesOfReads = 500;
constexpr int groups = 100;

/// A tender of groups with positions, each with a short and a long text.
void writeSample(const std::wstring& path, std::size_t bytes) {
    std::FILE* file = _wfopen(path.c_str(), L"wb");
    if (file == nullptr)
        std::exit(1);
    std::fputs("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<lv>", file);
    const std::string longText(200, 'x');
    for (int group = 0; group < groups; ++group) {
        std::fprintf(file, "<titel nr=\"%d\"><kurz>Titel %d</kurz>\n", group, group);
        for (std::size_t written = 0; written < bytes / groups; written += 300)
            std::fprintf(file, "<pos id=\"%zu\"><kurz>Wände verputzen %zu</kurz><lang>%s</lang></pos>\n",
                         written, written, longText.c_str());
        std::fputs("</titel>", file);
    }
    std::fputs("</lv>", file);
    std::fclose(file);
}

std::wstring pathOf(std::size_t read) {
    const std::size_t index = 1 + read % groups;
    return L"titel[" + std::to_wstring(index) + L"]/pos[" + std::to_wstring(1 + read % 7) + L"]/kurz";
}

double milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void check(bool good, const char* what) {
    if (!good) {
        std::printf("failed: %s\n", what);
        std::exit(1);
    }
}

struct Bare {
    ComPtr<IXMLDOMDocument> document;

    void load(const std::wstring& path) {
        CLSID classId;
        document = {};
        check(SUCCEEDED(CLSIDFromProgID(L"Msxml2.DOMDocument.6.0", &classId)) &&
                  SUCCEEDED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                                             document.receiveAny())),
              "create");
        document->put_resolveExternals(VARIANT_FALSE);
        document->put_validateOnParse(VARIANT_TRUE);
        document->put_async(VARIANT_FALSE);
        Variant source;
        source.raw().vt = VT_BSTR;
        source.raw().bstrVal = Bstr(path).detach();
        VARIANT_BOOL loaded = VARIANT_FALSE;
        check(SUCCEEDED(document->load(source.raw(), &loaded)) && loaded != VARIANT_FALSE, "load");
    }

    std::size_t read(const std::wstring& path) {
        ComPtr<IXMLDOMElement> root;
        document->get_documentElement(root.receive());
        ComPtr<IXMLDOMNode> node;
        root->selectSingleNode(Bstr(path).get(), node.receive());
        BSTR text = nullptr;
        node->get_text(&text);
        const std::size_t length = SysStringLen(text);
        SysFreeString(text);
        return length;
    }

    void save(const std::wstring& path) {
        Variant target;
        target.raw().vt = VT_BSTR;
        target.raw().bstrVal = Bstr(path).detach();
        check(SUCCEEDED(document->save(target.raw())), "save");
    }
};

struct Row {
    const char* name;
    std::vector<double> bare{};
    std::vector<double> wrapped{};
    std::vector<double> ratios{};
    /// Shortest time of each slice over all rounds: what is left when other programs take no time away.
    std::vector<double> bestBare{};
    std::vector<double> bestWrapped{};
};

/// One round: both sides take turns slice by slice, so that a busy machine hits both, and change the first
/// place, so that neither always meets the warmer memory.
void measure(Row& row, std::size_t slices, const std::function<void(std::size_t)>& bare,
             const std::function<void(std::size_t)>& wrapped) {
    constexpr double never = 1e300;
    row.bestBare.resize(slices, never);
    row.bestWrapped.resize(slices, never);
    double bareTime = 0;
    double wrappedTime = 0;
    const auto take = [](double& sum, double& best, double time) {
        sum += time;
        best = std::min(best, time);
    };
    for (std::size_t slice = 0; slice < slices; ++slice) {
        for (const bool turn : {false, true}) {
            if (turn == ((row.bare.size() + slice) % 2 == 0))
                take(bareTime, row.bestBare[slice], milliseconds([&] { bare(slice); }));
            else
                take(wrappedTime, row.bestWrapped[slice], milliseconds([&] { wrapped(slice); }));
        }
    }
    row.bare.push_back(bareTime);
    row.wrapped.push_back(wrappedTime);
    row.ratios.push_back(wrappedTime / bareTime);
}

double sum(const std::vector<double>& times) {
    return std::accumulate(times.begin(), times.end(), 0.0);
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void run(std::size_t megabytes, int rounds) {
    const std::wstring sample = L"xml_bench.xml", bareOut = L"xml_bench_1.xml",
                       wrapperOut = L"xml_bench_2.xml";
    writeSample(sample, megabytes * 1000000);
    WindowsPlatform windows;
    Runtime rt(windows.border());
    clsXML xml(rt);
    xml.Initialize(6);
    Bare bare;
    std::vector<std::wstring> paths;
    for (std::size_t i = 0; i < reads; ++i)
        paths.push_back(pathOf(i));

    const auto readSlice = [&](std::size_t slice, const auto& read) {
        std::size_t total = 0;
        for (std::size_t i = slice * reads / slicesOfReads; i < (slice + 1) * reads / slicesOfReads; ++i)
            total += read(paths[i]);
        return total;
    };
    std::array rows{Row{"load"}, Row{"10,000 reads by path"}, Row{"save"}};
    for (int round = 0; round < rounds; ++round) {
        std::size_t bareLength = 0;
        std::size_t length = 0;
        measure(
            rows[0], 1, [&](std::size_t) { bare.load(sample); },
            [&](std::size_t) { check(xml.OpenFromFile(sample, false), "OpenFromFile"); });
        measure(
            rows[1], slicesOfReads,
            [&](std::size_t slice) {
                bareLength += readSlice(slice, [&](auto& path) { return bare.read(path); });
            },
            [&](std::size_t slice) {
                length += readSlice(slice, [&](auto& path) { return xml.ReadNode(path).size(); });
            });
        check(length == bareLength && length > 0, "same texts");
        measure(
            rows[2], 1, [&](std::size_t) { bare.save(bareOut); }, [&](std::size_t) { xml.Save(wrapperOut); });
    }
    std::printf("%zu MB, %d rounds\n%-22s %12s %12s %8s %12s %12s %8s\n", megabytes, rounds, "", "bare ms",
                "clsXML ms", "ratio", "bare best", "clsXML best", "ratio");
    for (const Row& row : rows) {
        const double bestBare = sum(row.bestBare);
        const double bestWrapped = sum(row.bestWrapped);
        std::printf("%-22s %12.2f %12.2f %8.3f %12.2f %12.2f %8.3f\n", row.name, median(row.bare),
                    median(row.wrapped), median(row.ratios), bestBare, bestWrapped, bestWrapped / bestBare);
    }
    for (const std::wstring& file : {sample, bareOut, wrapperOut})
        DeleteFileW(file.c_str());
}

} // namespace

int main(int count, char** arguments) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    run(count > 1 ? std::strtoul(arguments[1], nullptr, 10) : 50, count > 2 ? std::atoi(arguments[2]) : 7);
    CoUninitialize();
    return 0;
}
