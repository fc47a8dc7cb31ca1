#include "console/system_terminal.h"

#include <doctest/doctest.h>

#include "platform/owners.h"
#include "tests/support/call_hook.h"
#include "tests/support/planted_hives.h"
#include "tests/support/scratch_folder.h"

namespace {

template <class Function>
FARPROC Address(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

BOOL WINAPI ReadAborted(HANDLE, LPVOID, DWORD, LPDWORD read, LPOVERLAPPED) {
    *read = 0;
    ::SetLastError(ERROR_OPERATION_ABORTED);
    return TRUE;
}

BOOL WINAPI ReadNothing(HANDLE, LPVOID, DWORD, LPDWORD read, LPOVERLAPPED) {
    *read = 0;
    return TRUE;
}

FARPROC g_readFile = nullptr;
int g_reads = 0;

/// Reads nothing at every other call, as a pipe does whose writer writes nothing; Wine passes such a write
/// over.
BOOL WINAPI ReadEveryOther(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED overlapped) {
    const auto readFile = reinterpret_cast<decltype(&::ReadFile)>(reinterpret_cast<void*>(g_readFile));
    if (g_reads++ % 2 != 0) return readFile(file, buffer, size, read, overlapped);
    *read = 0;
    return TRUE;
}

/// Stands for the end of the program.
struct Ended {
    UINT exitCode;
};

void WINAPI Throw(UINT exitCode) { throw Ended{exitCode}; }

template <class Action>
UINT ExitCodeOf(Action action) {
    const CCallHook end("ExitProcess", Address(&Throw));
    try {
        action();
    } catch (const Ended& ended) {
        return ended.exitCode;
    }
    return 0;
}

/// A pipe in the place of this process's standard input.
class CInputPipe {
public:
    CInputPipe() {
        REQUIRE(::CreatePipe(m_reader.Receive(), m_writer.Receive(), nullptr, 0) != FALSE);
        ::SetStdHandle(STD_INPUT_HANDLE, m_reader.Get());
    }
    CInputPipe(const CInputPipe&) = delete;
    CInputPipe& operator=(const CInputPipe&) = delete;
    ~CInputPipe() { ::SetStdHandle(STD_INPUT_HANDLE, m_before); }

    void Write(std::string_view text) const {
        DWORD written = 0;
        CHECK(::WriteFile(m_writer.Get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) !=
              FALSE);
    }
    void Close() { m_writer.Reset(); }

private:
    HANDLE m_before = ::GetStdHandle(STD_INPUT_HANDLE);
    CUniqueHandle m_reader, m_writer;
};

}  // namespace

TEST_CASE("a read that Ctrl+C ends is a cancel, and no empty answer or input") {
    CSystemTerminal terminal;
    {
        const CCallHook read("ReadFile", Address(&ReadAborted));
        CHECK(ExitCodeOf([&] { (void)terminal.ReadAnswer(); }) == 130);
        CHECK(ExitCodeOf([&] { (void)terminal.ReadInput(); }) == 130);
    }
    const CCallHook read("ReadFile", Address(&ReadNothing));
    ::SetLastError(ERROR_OPERATION_ABORTED);  // of some former call
    CHECK(terminal.ReadAnswer().empty());
    ::SetLastError(ERROR_OPERATION_ABORTED);
    CHECK(terminal.ReadInput() == std::optional<std::string>(""));
}

TEST_CASE("input from a pipe goes on behind a write of nothing, up to the writer's end") {
    CInputPipe pipe;
    pipe.Write("one ");
    pipe.Write("");
    pipe.Write("two ");
    pipe.Write("");
    pipe.Write("");
    pipe.Write("three");
    const CCallHook read("ReadFile", Address(&ReadEveryOther), &g_readFile);
    g_reads = 0;
    pipe.Close();
    CHECK(CSystemTerminal().ReadInput() == std::optional<std::string>("one two three"));
    CHECK(g_reads > 1);
}

TEST_CASE("input from a file ends with the file") {
    const HANDLE before = ::GetStdHandle(STD_INPUT_HANDLE);
    const CScratchFolder folder;
    const std::string path = folder.Path() + "\\input";
    for (const std::string& text : {std::string(), std::string("some text"), std::string(100'000, 'x')}) {
        WriteFileText(path, text);
        const CUniqueFile file(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                             OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        ::SetStdHandle(STD_INPUT_HANDLE, file.Get());
        CHECK(CSystemTerminal().ReadInput() == std::optional(text));
    }
    ::SetStdHandle(STD_INPUT_HANDLE, before);
}
