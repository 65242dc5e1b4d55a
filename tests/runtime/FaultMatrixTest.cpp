// Whatever the system refuses, at whatever moment: every routine comes to its
// end with what it documents.
#include "runtime/Funktionen32/Errors.h"
#include "tests/support/Routines.h"

#include <iostream>
#include <regex>
#include <set>

namespace tarv {
namespace {

std::wstring outcome(const Routine& routine, Workstation& w) {
    const int objects = w.fake.automation.state.objects;
    w.fake.faults.stepsLeft = 50'000;
    std::wstring answer;
    try {
        answer = routine.run(w);
    } catch (const RuntimeError& error) {
        answer = L"raises " + std::to_wstring(error.record().number);
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
    }
    w.fake.automation.log.clear(); // it holds arguments
    EXPECT_TRUE(w.allClosed() && w.fake.automation.state.objects == objects) << "something is left open";
    return answer;
}

TEST(FaultMatrix, EveryRoutineSurvivesEveryFailureOfTheBorder) {
    int cases = 0;
    const std::regex neverSwallowed(
        "XmlNode.(text|xml|putText|appendChild|removeAttribute)|XmlDocument.(xml|createElement)");
    for (const Routine& routine : allRoutines()) {
        Workstation healthy;
        const auto before = healthy.files();
        const std::wstring ordinary = outcome(routine, healthy);
        const auto after = healthy.files();
        EXPECT_FALSE(ordinary.starts_with(L"raises")) << routine.name;
        const std::wregex safe(routine.safe);
        const bool raises = std::wstring_view(routine.safe).ends_with(L"raises (91|4711)");
        for (const auto& [function, recorded] : healthy.fake.faults.plans)
            for (const SystemCode code : failuresOf(function))
                for (const auto& [first, last] : std::set<std::pair<int, int>>{
                         {1, 1}, {2, 2}, {recorded.calls, recorded.calls}, {1, 1'000'000}}) {
                    if (first > recorded.calls)
                        continue;
                    SCOPED_TRACE(testing::Message() << routine.name << ": " << function << " fails with "
                                                    << code << ", calls " << first << " to " << last);
                    Workstation w;
                    w.fake.faults.fail(function, code, first, last);
                    const std::wstring answer = outcome(routine, w);
                    const bool mayGoOn = !raises || !std::regex_match(function, neverSwallowed);
                    EXPECT_TRUE((answer == ordinary && mayGoOn) || std::regex_match(answer, safe))
                        << testing::PrintToString(answer);
                    auto left = w.files();
                    for (const auto& [file, bytes] : before) {
                        const auto same = after.find(file);
                        EXPECT_TRUE(
                            left.contains(file) &&
                            (left[file] == bytes || left[file] == same->second || file.ends_with(L".INI\\")))
                            << testing::PrintToString(file) << " is lost";
                        left.erase(file);
                    }
                    // A document that could not get its name stays whole beside it.
                    for (const auto& [file, bytes] : left)
                        EXPECT_TRUE(after.contains(file) || file.find(L".TXT") != file.npos ||
                                    file.ends_with(L"~RF.TMP\\") || function == "FileStore.remove" ||
                                    (file == L"C:\\T\\NEU.XML.NEU\\" && bytes == "<neu/>" &&
                                     !left.contains(L"C:\\T\\NEU.XML\\")))
                            << testing::PrintToString(file) << " is left behind";
                    ++cases;
                }
    }
    std::cout << "FaultMatrix: " << cases << " cases (routine, function, failure) of " << allRoutines().size()
              << " routines\n";
}

TEST(FaultMatrix, MembersOfXmlDocumentsMissTheirNodes) {
    for (const Routine& routine : allRoutines())
        for (const bool withoutRoot : {false, true}) {
            Workstation w;
            (withoutRoot ? w.fake.xml.hasDocumentElement : w.fake.xml.hasNodes) = false;
            const std::string name = routine.name;
            const std::wstring answer = outcome(routine, w);
            // Saving only looks for the declaration.
            const bool needed =
                w.fake.faults.calls("XmlDocument.documentElement") > 0 && !name.starts_with("Save");
            EXPECT_TRUE(!needed || std::regex_match(answer, std::wregex(routine.safe))) << name;
        }
}

} // namespace
} // namespace tarv
