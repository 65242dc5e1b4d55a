// The XML wrapper against bare calls of the same component through its dual interfaces, in one run: loading a
// document of 50 MB, 10,000 reads by path, saving. Both sides work on the same files, turn by turn.
//
// bench_xml [MEGABYTES] [ROUNDS]

#include "bench/Comparison.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Runtime.h"
#include "win/ComPtr.h"
#include "win/Variant.h"
#include "xml/clsXML.h"

#include <cstdio>
#include <cstdlib>
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
    if (!file)
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

void run(std::size_t megabytes, int rounds) {
    using namespace tarv::bench;
    const std::wstring sample = L"bench_xml.xml", bareOut = L"bench_xml_1.xml",
                       wrapperOut = L"bench_xml_2.xml";
    writeSample(sample, megabytes * 1000000);
    WindowsPlatform windows;
    Runtime rt(windows);
    clsXML xml(rt);
    xml.Initialize(6);
    Bare bare;
    std::vector<std::wstring> paths;
    for (std::size_t i = 0; i < reads; ++i)
        paths.push_back(pathOf(i));

    // Both keep a document loaded throughout, so that each always meets the memory of the other.
    const Pair loads = byTurns(
        rounds, [&] { check(xml.OpenFromFile(sample, false), "OpenFromFile"); }, [&] { bare.load(sample); });
    std::size_t slice = 0, bareLength = 0, length = 0;
    // A slice each by turns: the reads of a round are few against the load, and shall meet the same pace.
    const auto sliceOf = [&](std::size_t& sum, auto read) {
        for (std::size_t i = slice / 2 % slicesOfReads; i < reads; i += slicesOfReads)
            sum += read(paths[i]);
        ++slice;
    };
    const Pair reading = byTurns(
        rounds * static_cast<int>(slicesOfReads),
        [&] { sliceOf(length, [&](auto& path) { return xml.ReadNode(path).size(); }); },
        [&] { sliceOf(bareLength, [&](auto& path) { return bare.read(path); }); });
    check(length == bareLength && length > 0, "same texts");
    const Pair saves = byTurns(rounds, [&] { xml.Save(wrapperOut); }, [&] { bare.save(bareOut); });

    const auto row = [&](const char* what, Pair measured, const char* aim) {
        const std::string name = std::string("XML, ") + std::to_string(megabytes) + " MB: " + what;
        printRow(name.c_str(), "bare MSXML 6", "ms", perCall(measured, 1000), aim);
    };
    const Pair allReads{reading.own * slicesOfReads, reading.yardstick * slicesOfReads};
    row("load", loads, "<= 1.05");
    row("10,000 reads by path", allReads, "<= 1.05");
    // Ours writes a neighbour and puts it in the old file's place, which only then goes: what that takes is
    // the price of never losing the old file, and depends on the disk.
    row("save", saves, "");
    row("all three",
        {loads.own + allReads.own + saves.own, loads.yardstick + allReads.yardstick + saves.yardstick},
        "<= 1.05");
    for (const std::wstring& file : {sample, bareOut, wrapperOut})
        DeleteFileW(file.c_str());
}

} // namespace

int main(int count, char** arguments) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    run(count > 1 ? std::strtoul(arguments[1], nullptr, 10) : 50, count > 2 ? std::atoi(arguments[2]) : 5);
    CoUninitialize();
    return 0;
}
