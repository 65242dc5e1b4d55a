#pragma once

#include <string>

namespace tarv {

struct Runtime;

/// What the report says about computer and installation; a probe that fails leaves its fallback.
struct InfoFacts {
    std::wstring computer;
    std::wstring system;
    /// Build and service pack of the systems that the version call names; else empty.
    std::wstring systemExtra;
    std::wstring systemVersion;
    std::wstring user;
    std::wstring localAddress;
    std::wstring windowsFolder;
    std::wstring programFolder;
    std::wstring programVersion;
};

InfoFacts readInfoFacts(Runtime& rt);

/// The report as fixed-pitch text, lines ended by CR LF.
std::wstring reportText(const InfoFacts& facts);

/// The text of the facts as they are now.
std::wstring BuildInfoReport(Runtime& rt);

} // namespace tarv
