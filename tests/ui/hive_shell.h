#pragma once

#include <utility>

#include "tests/support/hive_bench.h"
#include "tests/ui/shell.h"

/// The program's window over planted hives, with no backup beside it yet.
class CHiveShell {
public:
    CHiveShell();

    /// Plants machine hives of these names.
    void AddMachines(std::initializer_list<const char*> names);
    /// Runs a command to its end, and handles what it has posted.
    void Run(UINT command) const;

    /// The texts of the messages that were shown.
    [[nodiscard]] std::vector<std::string> Texts() const;
    /// Checks that a message is as the program shows all those that are not told otherwise.
    void CheckMessage(std::size_t index, const std::string& text, UINT flags) const;

    std::function<void()> onMessage;  // runs while a message is open
    int yesOrNo = IDYES;              // to a question

    CBackupsFolder backups;
    CPlantedHives hives;
    CRecordingActions actions;
    CShell shell;
};

inline constexpr UINT kInformation = MB_OK | MB_ICONINFORMATION;
inline constexpr UINT kQuestion = MB_YESNO | MB_ICONQUESTION;

/// Holds a worker thread up, so that the test can look at what it has done so far.
class CGate {
public:
    CGate() : m_passes(::CreateSemaphoreA(nullptr, 0, 100, nullptr)) {}
    /// For the worker: waits until it is let through.
    void Pass() const { ::WaitForSingleObject(m_passes.Get(), 10'000); }
    void Open(LONG count = 1) const { ::ReleaseSemaphore(m_passes.Get(), count, nullptr); }

private:
    CUniqueHandle m_passes;
};

/// One column's heading and width in pixels.
using Column = std::pair<std::string, int>;
[[nodiscard]] std::vector<Column> ColumnsOf(HWND list);
/// The texts of a column, from the top.
[[nodiscard]] std::vector<std::string> TextsIn(HWND list, int column);

[[nodiscard]] LRESULT BarPosition(HWND bar);
/// Checks that a bar goes from 0 to so much.
void CheckBarRange(HWND bar, int end);

/// Checks that neither Enter nor Escape nor another program's request ends a dialog.
void CheckStaysOpen(HWND dialog);
/// Checks that the hourglass is shown, and that it stays when the mouse comes over a dialog.
void CheckShowsWaitCursor(HWND dialog);
