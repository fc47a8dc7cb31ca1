#pragma once

#include <string>

#include "tests/driver/remote_list.h"
#include "tests/load/resources.h"
#include "tests/support/program_files.h"
#include "tests/ui/shell.h"

/// How often a load test does what it does: all of it where the environment variable VELLUMOR_LOAD says
/// "full" (tools/load does), otherwise a twentieth.
[[nodiscard]] int LoadOf(int whole);

/// The window of the program on this thread, over the real registry and with the real registry editor. Every
/// message is agreed to.
class CLoadBench {
public:
    CLoadBench();

    /// Runs an analysis. @param cancelAfter  milliseconds until its Cancel is pressed. @return its message.
    std::string Analyze(UINT cancelAfter = INFINITE);
    [[nodiscard]] int Rows() const { return m_shell.View().GetItemCount(); }
    [[nodiscard]] ListRow RowAt(int row) const;
    /// Takes all rows off the list.
    void Clear() const { m_shell.View().DeleteAllItems(); }
    void Check(int row) const;
    /// Cleans the checked rows. @return the last message.
    std::string Clean();
    /// Undoes the only undo file. @return the last message.
    std::string UndoAll();
    void DeleteUndoFiles() const;

private:
    /// Starts programs and waits for their end. By itself, because Wine's own start waits until a program is
    /// idle, and that leaves a handle open each time.
    struct Actions : CRecordingActions {
        UINT RunProgram(const char* commandLine, int show) override;
    };

    std::string WaitForMessage();

    Actions m_actions;
    CProgramSubfolder m_undo{"Undo"};
    CShell m_shell;
};

/// Checks that no more is held than before, but for what the system itself keeps now and then.
/// @param heapSlack  bytes that the heap may have grown by.
void CheckFlat(const Resources& before, const Resources& after, std::size_t heapSlack);
