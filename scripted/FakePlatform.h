#pragma once

#include "platform/Platform.h"
#include "scripted/FakeAutomation.h"
#include "scripted/FakeDesktop.h"
#include "scripted/FakeProcesses.h"
#include "scripted/FakeProfileFiles.h"
#include "scripted/FakeShellOperations.h"
#include "scripted/FakeSystemFacts.h"
#include "scripted/FakeXmlDom.h"

namespace tarv {

/// The whole border, scripted: `FakePlatform fake; Runtime rt{fake.border};`. It starts as a quiet German
/// workstation without configuration; a test changes what it is about.
struct FakePlatform {
    FaultPlan faults;
    FakeDisk disk;
    FakeProfileFiles profiles{faults, disk};
    FakeFileStore files{faults, disk};
    FakeSystemFacts facts{faults};
    FakeProcesses processes{faults};
    FakeDesktop desktop{faults};
    FakeShellOperations shell{faults};
    FakeAutomation automation{faults};
    FakeXmlParsers xml{faults, disk};

    Platform border{&profiles, &files, &facts, &processes, &desktop, &shell, &automation, &xml};

    FakePlatform() = default;
    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;
};

} // namespace tarv
