#include <doctest/doctest.h>

#include <algorithm>

#include "platform/host_services.h"
#include "platform/worker_thread.h"
#include "tests/faults/fault_runs.h"
#include "tests/support/scratch_key.h"

namespace {

/// A program that has run, and whose identifier is not given to another one yet.
class CEndedProgram {
public:
    CEndedProgram() {
        char command[] = R"(C:\windows\system32\cmd.exe /c exit)";
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION started{};
        REQUIRE(::CreateProcessA(nullptr, command, nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                                 nullptr, &startup, &started) != FALSE);
        const CUniqueHandle thread(started.hThread);
        m_process.Reset(started.hProcess);
        m_id = started.dwProcessId;
        REQUIRE(::WaitForSingleObject(m_process.Get(), 60'000) == WAIT_OBJECT_0);
    }
    [[nodiscard]] DWORD Id() const { return m_id; }

private:
    CUniqueHandle m_process;
    DWORD m_id = 0;
};

}  // namespace

TEST_CASE("what starts and ends programs tells the truth, whichever call fails") {
    const CEndedProgram ended;
    RunWithFaults("actions", [&ended](CFaultRun& run) {
        CSystemActions actions;
        std::vector<RunningProgram> programs;
        UINT started = 0;
        int opened = 0;
        const CScratchKey hive;
        LSTATUS replaced = ERROR_SUCCESS;
        bool isAdministrator = false;
        bool isRestarting = false;
        run.During([&] {
            programs = actions.ListPrograms();
            actions.EndProgram(ended.Id());
            started = actions.RunProgram(R"("C:\windows\regedit.exe" /s "x")", SW_HIDE);
            opened = actions.OpenWithShell("x");
            (void)actions.ShowMessage(nullptr, "text", "caption", MB_OK);
            (void)actions.DeviceOfDrive("C:");
            replaced = actions.ReplaceHive(hive.Get(), R"(C:\gone\new)", R"(C:\gone\old)");
            isAdministrator = actions.IsAdministrator();
            isRestarting = actions.RestartSystem();
        });
        const auto isOurs = [](const RunningProgram& program) {
            return program.processId == ::GetCurrentProcessId();
        };
        run.Demand(run.HasFault() || std::ranges::any_of(programs, isOurs), "this program is not listed");
        run.Demand((started > 31) == !run.IsFaultOf({"WinExec"}), "a start was told wrongly");
        run.Demand((opened > 32) == !run.IsFaultOf({"ShellExecuteA"}), "an opening was told wrongly");
        if (run.IsFaultOf({"RegReplaceKeyA"}))
            run.Demand(replaced != ERROR_SUCCESS, "a replacement was told wrongly");
        run.Demand(isRestarting == !run.IsFaultOf({"ExitWindowsEx"}), "a restart was told wrongly");
        if (run.IsFaultOf({"CheckTokenMembership", "AllocateAndInitializeSid"}))
            run.Demand(!isAdministrator, "rights were told that are not known");
    });
}

namespace {

UINT Answer(void* parameter) {
    *static_cast<int*>(parameter) = 42;
    return 0;
}

}  // namespace

TEST_CASE("a worker that is told to be started does its work and ends, whichever call fails") {
    RunWithFaults("worker", [](CFaultRun& run) {
        int answer = 0;
        CUniqueHandle thread;
        run.During([&] { thread = BeginThread(&Answer, &answer, THREAD_PRIORITY_BELOW_NORMAL); });
        run.Demand(run.HasFault() || thread, "it was not started");
        if (!thread) return;
        run.Demand(::WaitForSingleObject(thread.Get(), 5000) == WAIT_OBJECT_0 && answer == 42,
                   "it has not done its work");
    });
}
