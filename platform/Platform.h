#pragma once

namespace tarv {

class Automation;
class CodePage;
class Desktop;
class Environment;
class FileStore;
class MachineFacts;
class OwnProgram;
class Processes;
class ProfileFiles;
class RegionalSettings;
class ShellOperations;
class XmlParsers;

/// The whole border to Windows. Each interface mirrors one facility and decides nothing; failures come back
/// as values, never as exceptions. Users include the headers of the interfaces they call.
struct Platform {
    ProfileFiles& profiles;
    FileStore& files;
    Environment& environment;
    OwnProgram& program;
    Processes& processes;
    Desktop& desktop;
    RegionalSettings& regional;
    MachineFacts& machine;
    ShellOperations& shell;
    Automation& automation;
    CodePage& codePage;
    XmlParsers& xml;
};

} // namespace tarv
