#pragma once

#include <cstddef>
#include <string>

/// Runs a program to its end, with its output in a file. @return seconds.
/// @throws std::runtime_error when it cannot be started.
[[nodiscard]] double TimeProgram(const std::string& commandLine);

/// `reg query ROOT /s` of the three hives that an analysis scans. @return seconds for all.
[[nodiscard]] double TimeRegQuery();

/// What an analysis takes, and the most memory that its process had, in bytes.
struct AnalysisCost {
    double seconds;
    std::size_t peakMemory;
};
/// From the Analyze command to the message box, in the window.
[[nodiscard]] AnalysisCost TimeAnalysisInWindow();
/// By the program for scripts, its start included.
[[nodiscard]] AnalysisCost TimeAnalysisInConsole();
/// Whether that program is built.
[[nodiscard]] bool HasConsole();

/// From a process's start until its main window is shown and idle. @return seconds.
[[nodiscard]] double TimeStart();

/// Our export of the scratch registry's key. @return seconds.
[[nodiscard]] double TimeExport();
/// The registry editor's, and the reg program's, of the same key. What each takes for an empty key, its start
/// above all, is taken off.
[[nodiscard]] double TimeRegeditExport();
[[nodiscard]] double TimeRegExport();

/// A file's size in bytes; 0 where there is none.
[[nodiscard]] std::size_t FileSizeOf(const std::string& path);
