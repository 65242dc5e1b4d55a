#pragma once

namespace tarv {

class Automation;
class Desktop;
class FileStore;
class Processes;
class ProfileFiles;
class ShellOperations;
class SystemFacts;
class XmlParsers;

/// The whole border to Windows. Each interface mirrors one facility and decides nothing; failures come back
/// as values, never as exceptions. Users include the headers of the interfaces they call.
///
/// It owns nothing and nothing in it is null; a copy may have one member exchanged.
struct Platform {
    ProfileFiles* profiles;
    FileStore* files;
    SystemFacts* facts;
    Processes* processes;
    Desktop* desktop;
    ShellOperations* shell;
    Automation* automation;
    XmlParsers* xml;
};

} // namespace tarv
