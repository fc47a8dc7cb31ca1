#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "tests/driver/console_program.h"
#include "tests/driver/wait.h"
#include "tests/e2e/program.h"

namespace {

BOOL WINAPI IgnoreEvent(DWORD) { return TRUE; }

/// A terminal of the test's own, which programs that it starts share.
class CTestTerminal {
public:
    CTestTerminal() {
        ::FreeConsole();
        REQUIRE(::AllocConsole() != FALSE);
        ::SetConsoleCtrlHandler(&IgnoreEvent, TRUE);
        m_screen.Reset(::CreateFileA("CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
        REQUIRE(static_cast<bool>(m_screen));
    }
    CTestTerminal(const CTestTerminal&) = delete;
    CTestTerminal& operator=(const CTestTerminal&) = delete;
    ~CTestTerminal() {
        m_screen.Reset();
        ::SetConsoleCtrlHandler(&IgnoreEvent, FALSE);
        ::FreeConsole();
    }

    [[nodiscard]] CONSOLE_SCREEN_BUFFER_INFO Info() const {
        CONSOLE_SCREEN_BUFFER_INFO info{};
        REQUIRE(::GetConsoleScreenBufferInfo(m_screen.Get(), &info) != FALSE);
        return info;
    }
    /// One line of the screen, without the blanks at its end.
    [[nodiscard]] std::string Line(SHORT row) const {
        std::string line(static_cast<std::size_t>(Info().dwSize.X), ' ');
        DWORD read = 0;
        ::ReadConsoleOutputCharacterA(m_screen.Get(), line.data(), static_cast<DWORD>(line.size()), {0, row},
                                      &read);
        line.resize(read);
        return line.substr(0, line.find_last_not_of(' ') + 1);
    }
    [[nodiscard]] std::string CurrentLine() const { return Line(Info().dwCursorPosition.Y); }
    [[nodiscard]] std::string AllLines() const {
        std::string lines;
        for (SHORT row = 0; row <= Info().dwCursorPosition.Y; ++row) lines += Line(row) + "\n";
        return lines;
    }

private:
    CUniqueFile m_screen;
};

std::string ConsoleExe() { return TestFolder() + "\\vellumor-cli.exe"; }

}  // namespace

TEST_CASE("on a terminal a table fits into its lines") {
    const CTestTerminal terminal;
    const CConsoleProgram program({ConsoleExe(), "checks", "", "", nullptr, true});
    CHECK(program.Wait().exitCode == 0);
    const std::string screen = terminal.AllLines();
    CHECK(screen.find("programs-started-at-logon") != std::string::npos);
    CHECK(screen.find("...") != std::string::npos);
    // 45 checks, the headings, and the line that the cursor is in: none has run over.
    CHECK(terminal.Info().dwCursorPosition.Y == 46);
}

TEST_CASE("on a terminal an analysis tells how far it is, and Ctrl+C ends it") {
    const CTestTerminal terminal;
    const CConsoleProgram program({ConsoleExe(), "analyze", "", "", nullptr, true});
    WaitFor("the progress line", [&] { return terminal.CurrentLine().starts_with("Stage 1 of 10, "); });
    CHECK(terminal.CurrentLine().find(" rows, 0:") != std::string::npos);
    CHECK(terminal.CurrentLine().find(R"(\HKEY_LOCAL_MACHINE)") != std::string::npos);
    REQUIRE(::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) != FALSE);
    CHECK(program.Wait().exitCode == 130);
    CHECK(terminal.AllLines().find("found by then; the analysis was canceled.") != std::string::npos);
    CHECK(terminal.AllLines().find("Stage ") == std::string::npos);
}
