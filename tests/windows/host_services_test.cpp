#include "platform/host_services.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "platform/program_folder.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_folder.h"

namespace {

/// A process of this very program that never gets to run.
class CSuspendedProgram {
public:
    CSuspendedProgram() {
        STARTUPINFOA start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION process{};
        std::string command = "\"" + ProgramFolder() + "\\windows_tests.exe\"";
        REQUIRE(::CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr,
                                 nullptr, &start, &process) != FALSE);
        m_process.Reset(process.hProcess);
        m_thread.Reset(process.hThread);
        m_id = process.dwProcessId;
    }
    ~CSuspendedProgram() { ::TerminateProcess(m_process.Get(), 99); }

    [[nodiscard]] HANDLE Get() const { return m_process.Get(); }
    [[nodiscard]] DWORD Id() const { return m_id; }

private:
    CUniqueHandle m_process;
    CUniqueHandle m_thread;
    DWORD m_id = 0;
};

class CRecordingActions : public CSystemActions {
public:
    [[nodiscard]] std::vector<RunningProgram> ListPrograms() override { return {{"asked.exe", 42}}; }
    void EndProgram(DWORD processId) override { ended.push_back(processId); }

    std::vector<DWORD> ended;
};

const RunningProgram* FindProgram(const std::vector<RunningProgram>& programs, DWORD processId) {
    for (const RunningProgram& program : programs)
        if (program.processId == processId) return &program;
    return nullptr;
}

}  // namespace

TEST_CASE("the list of programs names each running process without its folder") {
    const CSuspendedProgram second;
    const std::vector<RunningProgram> programs = SystemActions().ListPrograms();
    CHECK(programs.size() >= 3);  // at least a service of the system besides
    for (DWORD id : {::GetCurrentProcessId(), second.Id()}) {
        const RunningProgram* program = FindProgram(programs, id);
        REQUIRE(program != nullptr);
        CHECK(program->fileName == "windows_tests.exe");
    }
    CHECK(FindProgram(programs, second.Id())->parentId == ::GetCurrentProcessId());
}

TEST_CASE("a program is ended at once with exit code 0, and only the one that is meant") {
    const CSuspendedProgram first;
    const CSuspendedProgram second;
    SystemActions().EndProgram(first.Id());
    REQUIRE(::WaitForSingleObject(first.Get(), 5'000) == WAIT_OBJECT_0);
    DWORD exitCode = 1;
    ::GetExitCodeProcess(first.Get(), &exitCode);
    CHECK(exitCode == 0);
    CHECK(::WaitForSingleObject(second.Get(), 0) == WAIT_TIMEOUT);
}

TEST_CASE("ending a process that does not exist changes nothing") {
    const CSuspendedProgram program;
    SystemActions().EndProgram(0xFFFFFFF0);
    CHECK(::WaitForSingleObject(program.Get(), 0) == WAIT_TIMEOUT);
}

TEST_CASE("a started program runs, and one that is not there answers with the system's error") {
    const CScratchFolder scratch;
    const std::string proof = scratch.Path() + "\\proof";
    const std::string shell = "\"" + TheWindowsFolder() + "\\system32\\cmd.exe\"";
    CHECK(SystemActions().RunProgram((shell + " /c mkdir " + proof).c_str(), SW_HIDE) > 31);
    for (int round = 0; round < 500 && !Exists(proof); ++round) ::Sleep(10);
    CHECK(Exists(proof));
    CHECK(SystemActions().RunProgram("\"C:\\gone\\app.exe\"", SW_HIDE) == ERROR_FILE_NOT_FOUND);
}

TEST_CASE("a program without its full path is not looked for, in our own folder or anywhere else") {
    const CScratchFolder scratch;
    const std::string proof = scratch.Path() + "\\proof";
    const std::string command = TheWindowsFolder() + "\\system32\\cmd.exe";
    REQUIRE(::CopyFileA(command.c_str(), (ProgramFolder() + "\\vellumor_bait.exe").c_str(), FALSE) != FALSE);
    for (const char* program : {"vellumor_bait.exe", "\"vellumor_bait.exe\"", "cmd.exe", "\"cmd.exe\""})
        CHECK(SystemActions().RunProgram((program + (" /c mkdir " + proof)).c_str(), SW_HIDE) <= 31);
    CHECK(SystemActions().RunProgram((command + " /c mkdir " + proof).c_str(), SW_HIDE) <= 31);
    ::Sleep(1000);
    CHECK_FALSE(Exists(proof));
    ::DeleteFileA((ProgramFolder() + "\\vellumor_bait.exe").c_str());
}

TEST_CASE("listing and ending programs leaves no handle open") {
    (void)SystemActions().ListPrograms();
    const std::size_t before = OwnHandles().size();
    (void)SystemActions().ListPrograms();
    {
        const CSuspendedProgram program;
        SystemActions().EndProgram(program.Id());
    }
    CHECK(OwnHandles().size() == before);
}

TEST_CASE("other actions can be put in force, and null brings the system's own back") {
    CSystemActions* const own = &SystemActions();
    CRecordingActions recording;
    SetSystemActions(&recording);
    CHECK(&SystemActions() == &recording);
    SystemActions().EndProgram(7);
    CHECK(SystemActions().ListPrograms().at(0).fileName == "asked.exe");
    CHECK(recording.ended == std::vector<DWORD>{7});
    SetSystemActions(nullptr);
    CHECK(&SystemActions() == own);
}
