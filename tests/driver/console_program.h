#pragma once

#include <windows.h>

#include <string>

#include "platform/owners.h"

/// What a console program left behind.
struct ConsoleResult {
    DWORD exitCode = 0;
    std::string output;
    std::string error;
};

/// How a console program is started.
struct ConsoleStart {
    std::string executable;
    std::string arguments;
    std::string input = {};    // what it reads from standard input
    std::string output = {};   // file in the place of standard output; empty: one of the test's own
    HANDLE token = nullptr;    // what it runs as; null: like the test. Borrowed
    bool hasTerminal = false;  // its streams are the test's console, which must be there
    // Pipes in the place of standard input and output; null: none. Borrowed; only this program inherits them,
    // and the test closes its own as soon as it is started.
    HANDLE inputPipe = nullptr;
    HANDLE outputPipe = nullptr;
};

/// A console program that runs. Files are in the place of its streams, unless a test wants pipes: those would
/// be kept open by the desktop process that the first window of a prefix starts.
class CConsoleProgram {
public:
    /// @throws CDriverError when it cannot be started.
    explicit CConsoleProgram(const ConsoleStart& start);
    CConsoleProgram(const CConsoleProgram&) = delete;
    CConsoleProgram& operator=(const CConsoleProgram&) = delete;
    /// Ends it, where it still runs.
    ~CConsoleProgram();

    /// Waits for its end. @throws CDriverError when that takes too long.
    [[nodiscard]] ConsoleResult Wait() const;

private:
    [[nodiscard]] std::string PathOf(const char* stream) const { return m_folder + "\\" + stream; }
    [[nodiscard]] STARTUPINFOA OpenStreams(const ConsoleStart& start);

    std::string m_folder;
    CUniqueFile m_streams[3];
    CUniqueHandle m_process;
};
