#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "platform/folder_tree.h"
#include "tests/driver/console_program.h"
#include "tests/driver/wait.h"
#include "tests/e2e/gone_modules.h"
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

    /// Types a line at the keyboard.
    static void Type(const std::string& line) {
        const CUniqueFile keyboard(::CreateFileA("CONIN$", GENERIC_READ | GENERIC_WRITE,
                                                 FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                                 0, nullptr));
        REQUIRE(static_cast<bool>(keyboard));
        for (const char key : line + "\r") {
            INPUT_RECORD record{};
            record.EventType = KEY_EVENT;
            record.Event.KeyEvent.bKeyDown = TRUE;
            record.Event.KeyEvent.wRepeatCount = 1;
            record.Event.KeyEvent.wVirtualKeyCode = key == '\r' ? VK_RETURN : 0;
            record.Event.KeyEvent.uChar.AsciiChar = key;
            DWORD written = 0;
            CHECK(::WriteConsoleInputA(keyboard.Get(), &record, 1, &written) != FALSE);
        }
    }

private:
    CUniqueFile m_screen;
};

std::string ConsoleExe() { return TestFolder() + "\\vellumor-cli.exe"; }

ConsoleStart OnTerminal(const std::string& arguments) {
    return {ConsoleExe(), arguments, "", "", nullptr, true};
}

constexpr char kAskedClean[] = "clean --all --only shared-modules";

void WaitForQuestion(const CTestTerminal& terminal) {
    WaitFor("the question", [&] { return terminal.CurrentLine() == "Clean 2 entries? [y/N]"; });
}

}  // namespace

TEST_CASE("on a terminal a table fits into its lines") {
    const CTestTerminal terminal;
    const CConsoleProgram program(OnTerminal("checks"));
    CHECK(program.Wait().exitCode == 0);
    const std::string screen = terminal.AllLines();
    CHECK(screen.find("programs-started-at-logon") != std::string::npos);
    CHECK(screen.find("...") != std::string::npos);
    // 45 checks, the headings, and the line that the cursor is in: none has run over.
    CHECK(terminal.Info().dwCursorPosition.Y == 46);
}

TEST_CASE("on a terminal an analysis tells how far it is, and Ctrl+C ends it") {
    const CTestTerminal terminal;
    const CConsoleProgram program(OnTerminal("analyze"));
    WaitFor("the progress line", [&] { return terminal.CurrentLine().starts_with("Stage 1 of 10, "); });
    CHECK(terminal.CurrentLine().find(" rows, 0:") != std::string::npos);
    CHECK(terminal.CurrentLine().find(R"(\HKEY_LOCAL_MACHINE)") != std::string::npos);
    REQUIRE(::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) != FALSE);
    CHECK(program.Wait().exitCode == 130);
    CHECK(terminal.AllLines().find("found by then; the analysis was canceled.") != std::string::npos);
    CHECK(terminal.AllLines().find("Stage ") == std::string::npos);
}

TEST_CASE("on a terminal a cleaning asks, and does what is answered") {
    DeleteFolderContents(TestFolder() + "\\Undo");
    const CGoneModules modules(2);
    const CTestTerminal terminal;
    for (const char* answer : {"n", "", "x y"}) {
        CAPTURE(std::string(answer));
        const CConsoleProgram program(OnTerminal(kAskedClean));
        WaitForQuestion(terminal);
        CTestTerminal::Type(answer);
        CHECK(program.Wait().exitCode == 130);
        CHECK(modules.CountLeft() == 2);
    }
    CHECK(terminal.AllLines().find("Nothing was cleaned.") != std::string::npos);
    const CConsoleProgram program(OnTerminal(kAskedClean));
    WaitForQuestion(terminal);
    CTestTerminal::Type("yes");
    CHECK(program.Wait().exitCode == 0);
    CHECK(modules.CountLeft() == 0);
    CHECK(terminal.AllLines().find("Undo file: ") != std::string::npos);
    DeleteFolderContents(TestFolder() + "\\Undo");
}

TEST_CASE("Ctrl+C at the question cleans nothing") {
    const CGoneModules modules(2);
    const CTestTerminal terminal;
    const CConsoleProgram program(OnTerminal(kAskedClean));
    WaitForQuestion(terminal);
    REQUIRE(::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) != FALSE);
    CHECK(program.Wait().exitCode == 130);
    CHECK(modules.CountLeft() == 2);
}
