#pragma once

#include <filesystem>
#include <string>

namespace tarv::kit {

std::string toUtf8(const std::wstring& text);

/// What may make a test come out differently on this machine, a line for each fact, German.
std::string describeMachine();

/// Why the program must not be tested here, since it would use the settings of the installed suite; else
/// empty.
std::string obstacleForTheProgram();

/// The file with the settings of all users. The program writes defaults into it where it may.
std::filesystem::path suiteSettings();

} // namespace tarv::kit
