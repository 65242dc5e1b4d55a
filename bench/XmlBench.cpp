// The XML wrapper against bare calls of the same component through its dual interfaces, in one run: loading a
// document of 50 MB, 10,000 reads by path, saving. Both sides work on the same files, turn by turn.
//
// xml_bench [MEGABYTES] [ROUNDS]

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
#include <string>
#include <vector>

#include <objbase.h>

#include <msxml2.h>

namespace {

using namespace tarv;

constexpr int reads = 10000;
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

std::wstring pathOf(int read) {
    const int index = 1 + read % groups;
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
    std::vector<double> bare, wrapped, ratios;
};

/// One round: both sides take turns slice by slice, so that a busy machine hits both, and change the first
/// place, so that neither always meets the warmer memory.
void measure(Row& row, int slices, const std::function<void(int)>& bare,
             const std::function<void(int)>& wrapped) {
    double bareTime = 0;
    double wrappedTime = 0;
    for (int slice = 0; slice < slices; ++slice) {
        if ((row.bare.size() + static_cast<std::size_t>(slice)) % 2 == 0) {
            bareTime += milliseconds([&] { bare(slice); });
            wrappedTime += milliseconds([&] { wrapped(slice); });
        } else {
            wrappedTime += milliseconds([&] { wrapped(slice); });
            bareTime += milliseconds([&] { bare(slice); });
        }
    }
    row.bare.push_back(bareTime);
    row.wrapped.push_back(wrappedTime);
    row.ratios.push_back(wrappedTime / bareTime);
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
    for (int i = 0; i < reads; ++i)
        paths.push_back(pathOf(i));

    const auto readSlice = [&](int slice, const auto& read) {
        std::size_t total = 0;
        for (int i = slice * reads / 100; i < (slice + 1) * reads / 100; ++i)
            total += read(paths[static_cast<std::size_t>(i)]);
        return total;
    };
    std::array rows{Row{"load", {}, {}, {}}, Row{"10,000 reads by path", {}, {}, {}},
                    Row{"save", {}, {}, {}}};
    for (int round = 0; round < rounds; ++round) {
        std::size_t bareLength = 0;
        std::size_t length = 0;
        measure(
            rows[0], 1, [&](int) { bare.load(sample); },
            [&](int) { check(xml.OpenFromFile(sample, false), "OpenFromFile"); });
        measure(
            rows[1], 100,
            [&](int slice) { bareLength += readSlice(slice, [&](auto& path) { return bare.read(path); }); },
            [&](int slice) {
                length += readSlice(slice, [&](auto& path) { return xml.ReadNode(path).size(); });
            });
        check(length == bareLength && length > 0, "same texts");
        measure(
            rows[2], 1, [&](int) { bare.save(bareOut); }, [&](int) { xml.Save(wrapperOut); });
    }
    std::printf("%zu MB, medians of %d rounds\n%-22s %12s %12s %8s\n", megabytes, rounds, "", "bare ms",
                "clsXML ms", "ratio");
    for (const Row& row : rows)
        std::printf("%-22s %12.2f %12.2f %8.3f\n", row.name, median(row.bare), median(row.wrapped),
                    median(row.ratios));
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
