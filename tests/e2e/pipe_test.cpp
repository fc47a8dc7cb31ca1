#include <doctest/doctest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/folder_tree.h"
#include "tests/driver/console_program.h"
#include "tests/driver/wait.h"
#include "tests/e2e/gone_modules.h"
#include "tests/e2e/program.h"

namespace {

constexpr std::size_t kMany = 4000;  // rows, of more than 1 MiB in every form
// Each cleaned row copies its key, which all rows share here, so the cost grows with the square of this.
constexpr std::size_t kCleaned = 300;
// What a pipe holds before its writer waits is a fraction of this.
constexpr std::size_t kManyPipesFull = 64 << 10;
constexpr std::size_t kMebibyte = 1 << 20;

struct Pipe {
    Pipe() {
        // The desktop process, which the first window starts, must not be started by a program with a pipe.
        REQUIRE(::GetDesktopWindow() != nullptr);
        REQUIRE(::CreatePipe(reader.Receive(), writer.Receive(), nullptr, 0) != FALSE);
    }
    CUniqueHandle reader, writer;
};

std::string ConsoleExe() { return TestFolder() + "\\vellumor-cli.exe"; }

ConsoleStart Start(const std::string& arguments, const CUniqueHandle* input, const CUniqueHandle* output) {
    ConsoleStart start{ConsoleExe(), arguments};
    if (input != nullptr) start.inputPipe = input->Get();
    if (output != nullptr) start.outputPipe = output->Get();
    return start;
}

constexpr char kAnalyze[] = "analyze --only shared-modules --format json";

/// All that a pipe brings until its writer has ended.
std::string TextOf(const Pipe& pipe) {
    std::string text;
    char chunk[65536];
    for (DWORD read = 0; ::ReadFile(pipe.reader.Get(), chunk, sizeof chunk, &read, nullptr) != FALSE;)
        text.append(chunk, read);
    return text;
}

void Write(const Pipe& pipe, std::string_view text) {
    DWORD written = 0;
    CHECK(::WriteFile(pipe.writer.Get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) !=
          FALSE);
    CHECK(written == text.size());
}

std::size_t CountLines(const std::string& text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

}  // namespace

TEST_CASE("an analysis piped into a cleaning cleans what it found, however much that is") {
    DeleteFolderContents(TestFolder() + "\\Undo");
    const CGoneModules modules(kCleaned);
    Pipe rows, lines;
    const CConsoleProgram analysis(Start(kAnalyze, nullptr, &rows.writer));
    const CConsoleProgram cleaning(Start("clean --rows - --yes", &rows.reader, &lines.writer));
    rows.writer.Reset();
    rows.reader.Reset();
    lines.writer.Reset();
    const std::string told = TextOf(lines);
    CHECK(told.size() > kManyPipesFull);
    CHECK(CountLines(told) == kCleaned + 1);  // and the undo file
    CHECK(analysis.Wait().exitCode == 1);
    const ConsoleResult result = cleaning.Wait();
    CHECK(result.exitCode == 0);
    CHECK(result.error == "");
    CHECK(modules.CountLeft() == 0);
    DeleteFolderContents(TestFolder() + "\\Undo");
}

TEST_CASE("rows that come in pieces, with nothing between them, are read to their end") {
    const CGoneModules modules(kMany);
    const std::string text = CConsoleProgram({ConsoleExe(), kAnalyze}).Wait().output;
    REQUIRE(text.size() > kMebibyte);
    Pipe pipe;
    const CConsoleProgram cleaning(Start("clean --rows - --dry-run", &pipe.reader, nullptr));
    pipe.reader.Reset();
    Write(pipe, "");
    Write(pipe, text.substr(0, 100));
    Write(pipe, "");
    ::Sleep(200);  // the program waits for more
    Write(pipe, text.substr(100));
    Write(pipe, "");
    pipe.writer.Reset();
    const ConsoleResult result = cleaning.Wait();
    CHECK(result.exitCode == 1);
    CHECK(result.error == "");
    CHECK(CountLines(result.output) == kMany);
}

TEST_CASE("a reader that ends early is told as a failure") {
    const CGoneModules modules(kMany);
    Pipe pipe;
    const CConsoleProgram analysis(Start(kAnalyze, nullptr, &pipe.writer));
    pipe.writer.Reset();
    char first = '\0';
    DWORD read = 0;
    CHECK(::ReadFile(pipe.reader.Get(), &first, 1, &read, nullptr) != FALSE);
    pipe.reader.Reset();
    const ConsoleResult result = analysis.Wait();
    CHECK(result.exitCode == 3);
    CHECK(result.error == "The rows could not all be written.\n");
}
