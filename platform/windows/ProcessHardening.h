#pragma once

namespace tarv {

/// Narrows what an attacker can do with a program that administrators start from arbitrary folders: DLLs
/// named without a path come from the system folder only, and a damaged heap ends the process at once.
/// Belongs first into the program's entry point.
void hardenProcess();

} // namespace tarv
