#include <windows.h>

#include <algorithm>
#include <set>

#include "console/code_page.h"
#include "console/commands.h"
#include "console/dated_names.h"
#include "console/rights.h"
#include "platform/host_services.h"
#include "repair/undo_files.h"
#include "repair/undo_name_rules.h"

namespace {

constexpr char kEditor[] = "regedit.exe";
constexpr DWORD kPollPeriod = 100;  // milliseconds

const DatedNames kUndoFiles{&FindUndoFiles, &ShownUndoDate, &DeleteUndoFile, "undo file"};

/// The editors that this process started; a user's own is no business of ours.
std::set<DWORD> RunningEditors() {
    std::set<DWORD> editors;
    for (const RunningProgram& program : SystemActions().ListPrograms())
        if (program.parentId == ::GetCurrentProcessId() &&
            ::lstrcmpiA(program.fileName.c_str(), kEditor) == 0)
            editors.insert(program.processId);
    return editors;
}

/// Waits until the editors that were started since then have ended; a former one has its parent's number by
/// chance. The engine does not wait; a script that goes on has to find the registry as it will be.
void WaitForNewEditors(const std::set<DWORD>& former) {
    const auto isNew = [&former](DWORD editor) { return !former.contains(editor); };
    while (std::ranges::any_of(RunningEditors(), isNew)) ::Sleep(kPollPeriod);
}

}  // namespace

ExitCode RunUndoList(CTerminal& terminal) { return ListNames(terminal, kUndoFiles); }

ExitCode RunUndoReplay(CTerminal& terminal, const std::string& name) {
    if (!HasRights(terminal)) return ExitCode::RightsMissing;
    if (!IsName(terminal, kUndoFiles, name)) return ExitCode::Failed;
    const std::set<DWORD> former = RunningEditors();
    if (!ReplayUndoFile(name)) {
        WriteErrorLine(terminal, "The undo file " + ToUtf8(name) + " was not replayed.");
        return ExitCode::Failed;
    }
    WaitForNewEditors(former);
    return WriteOutputLine(terminal, "replayed: " + ToUtf8(name)) ? ExitCode::Done : ExitCode::Failed;
}

ExitCode RunUndoDelete(CTerminal& terminal, const std::vector<std::string>& names) {
    if (!HasRights(terminal)) return ExitCode::RightsMissing;
    return DeleteNames(terminal, kUndoFiles, names);
}
