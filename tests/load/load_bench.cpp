#include "tests/load/load_bench.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "platform/folder_tree.h"
#include "platform/owners.h"
#include "tests/driver/wait.h"

namespace {

constexpr UINT kAnalyzeCommand = 32828;
constexpr UINT kCleanCommand = 32807;
constexpr UINT kUndoCommand = 32830;
constexpr int kUndoList = 1027;
constexpr DWORD kEndPatience = 600'000;  // milliseconds

void CALLBACK PressCancel(HWND, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(nullptr, timer);
    ::SendMessageA(AnalyzeDialog().GetSafeHwnd(), WM_COMMAND, IDCANCEL, 0);
}

HWND UndoDialog() { return ::FindWindowA("#32770", "Undo repair"); }

}  // namespace

int LoadOf(int whole) {
    const char* load = std::getenv("VELLUMOR_LOAD");
    return load != nullptr && std::strcmp(load, "full") == 0 ? whole : whole / 20;
}

UINT CLoadBench::Actions::RunProgram(const char* commandLine, int show) {
    constexpr UINT kStarted = 33;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = static_cast<WORD>(show);
    PROCESS_INFORMATION process{};
    std::string line = commandLine;
    if (::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                         &process) == FALSE)
        return ERROR_FILE_NOT_FOUND;
    const CUniqueHandle thread(process.hThread);
    const CUniqueHandle program(process.hProcess);
    return ::WaitForSingleObject(program.Get(), kEndPatience) == WAIT_OBJECT_0 ? kStarted : ERROR_TIMEOUT;
}

CLoadBench::CLoadBench() {
    m_actions.answer = [](const CRecordingActions::Message& message) {
        return (message.flags & MB_TYPEMASK) == MB_YESNO ? IDYES : IDOK;
    };
}

std::string CLoadBench::Analyze(UINT cancelAfter) {
    m_actions.messages.clear();
    const UINT_PTR timer = cancelAfter != INFINITE ? ::SetTimer(nullptr, 0, cancelAfter, &PressCancel) : 0;
    m_shell.Command(kAnalyzeCommand);
    // The timer of an analysis that was over before must not cancel the next one.
    if (timer != 0) ::KillTimer(nullptr, timer);
    return WaitForMessage();
}

std::string CLoadBench::WaitForMessage() {
    WaitFor(
        "the message",
        [this] {
            PumpMessages();
            return !m_actions.messages.empty();
        },
        kEndPatience);
    return m_actions.messages.back().text;
}

ListRow CLoadBench::RowAt(int row) const {
    return {m_shell.Cell(row, 0), m_shell.Cell(row, 1), m_shell.Cell(row, 2), m_shell.Cell(row, 3)};
}

void CLoadBench::Check(int row) const { m_shell.View().SetCheck(row, true); }

std::string CLoadBench::Clean() {
    m_actions.messages.clear();
    m_shell.Command(kCleanCommand);
    return WaitForMessage();
}

std::string CLoadBench::UndoAll() {
    m_actions.messages.clear();
    After(50, [] {
        ListView_SetCheckState(::GetDlgItem(UndoDialog(), kUndoList), 0, TRUE);
        ::SendMessageA(UndoDialog(), WM_COMMAND, IDOK, 0);
    });
    m_shell.Command(kUndoCommand);
    return WaitForMessage();
}

void CLoadBench::DeleteUndoFiles() const { DeleteFolderContents(m_undo.Path()); }

void CheckFlat(const Resources& before, const Resources& after, std::size_t heapSlack) {
    CAPTURE(before.Text());
    CAPTURE(after.Text());
    CHECK(after.handles <= before.handles + 3);
    CHECK(after.threads <= before.threads);
    CHECK(after.gdiObjects <= before.gdiObjects + 3);
    CHECK(after.windows <= before.windows);
    CHECK(after.menus <= before.menus);
    CHECK(after.icons <= before.icons);
    CHECK(after.heapBytes <= before.heapBytes + heapSlack);
}
