#include "benchmark/programs.h"

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <stdexcept>

#include "benchmark/registry_maker.h"
#include "benchmark/series.h"
#include "platform/owners.h"
#include "platform/program_folder.h"
#include "repair/reg_file.h"
#include "tests/driver/app_driver.h"

namespace {

constexpr DWORD kEndPatience = 3'600'000;  // milliseconds
constexpr DWORD kMemoryPeriod = 100;
constexpr char kEmptyKey[] = "HKEY_CURRENT_USER\\Software\\VellumorBenchEmpty";

std::string OutputFile(const char* name) { return ProgramFolder() + "\\bench-" + name; }

std::size_t PeakMemoryOf(HANDLE process) {
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    return ::GetProcessMemoryInfo(process, &counters, sizeof counters) != FALSE ? counters.PeakWorkingSetSize
                                                                                : 0;
}

/// A process that runs, with its output in a file.
class CProcess {
public:
    explicit CProcess(const std::string& commandLine) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        const CUniqueFile output(::CreateFileA(OutputFile("output.txt").c_str(), GENERIC_WRITE,
                                               FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0, nullptr));
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = startup.hStdError = output.Get();
        PROCESS_INFORMATION process{};
        std::string line = commandLine;
        if (::CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                             &process) == FALSE)
            throw std::runtime_error("cannot start " + commandLine);
        ::CloseHandle(process.hThread);
        m_process.Reset(process.hProcess);
    }
    /// Waits for its end. @return the most memory that it had, in bytes.
    [[nodiscard]] std::size_t Wait() const {
        // Asked while it runs, since Wine forgets the number with the process.
        std::size_t peakMemory = 0;
        while (::WaitForSingleObject(m_process.Get(), kMemoryPeriod) == WAIT_TIMEOUT)
            peakMemory = std::max(peakMemory, PeakMemoryOf(m_process.Get()));
        return peakMemory;
    }

private:
    CUniqueHandle m_process;
};

/// The time of an export by a program, without what it takes for a key that holds nothing.
double TimeExportBy(const std::string& before, const std::string& behind) {
    CUniqueKey empty;
    ::RegCreateKeyA(HKEY_CURRENT_USER, "Software\\VellumorBenchEmpty", empty.Receive());
    const auto time = [&](const std::string& key) {
        ::DeleteFileA(OutputFile("other.reg").c_str());
        return TimeProgram(before + key + behind);
    };
    const double start = time(kEmptyKey);
    return std::max(time(kScratchPath + 1) - start, 0.0);
}

}  // namespace

double TimeProgram(const std::string& commandLine) {
    return SecondsOf([&commandLine] { (void)CProcess(commandLine).Wait(); });
}

double TimeRegQuery() {
    double seconds = 0;
    for (const char* root : {"HKLM", "HKCU", "HKU"})
        seconds += TimeProgram(std::string("reg.exe query ") + root + " /s");
    return seconds;
}

AnalysisCost TimeAnalysisInWindow() {
    const CAppDriver app(ProgramFolder() + "\\vellumor.exe");
    const double seconds = SecondsOf([&app] {
        app.Post(commands::kAnalyze);
        (void)app.WaitForMessageBox(kEndPatience);
    });
    return {seconds, PeakMemoryOf(app.Process())};
}

bool HasConsole() { return FileSizeOf(ProgramFolder() + "\\vellumor-cli.exe") > 0; }

AnalysisCost TimeAnalysisInConsole() {
    AnalysisCost cost{};
    cost.seconds = SecondsOf([&cost] {
        const CProcess process("\"" + ProgramFolder() + "\\vellumor-cli.exe\" analyze --format csv");
        cost.peakMemory = process.Wait();
    });
    return cost;
}

double TimeStart() {
    return SecondsOf([] {
        const CAppDriver app(ProgramFolder() + "\\vellumor.exe");
        ::WaitForInputIdle(app.Process(), kEndPatience);
    });
}

double TimeExport() {
    const std::string file = OutputFile("ours.reg");
    ::DeleteFileA(file.c_str());
    return SecondsOf([&file] {
        CRegFile writer;
        (void)writer.ExportKey(file.c_str(), kScratchPath + 1);
    });
}

double TimeRegeditExport() {
    return TimeExportBy("regedit.exe /e \"" + OutputFile("other.reg") + "\" \"", "\"");
}

double TimeRegExport() {
    return TimeExportBy("reg.exe export \"", "\" \"" + OutputFile("other.reg") + "\" /y");
}

std::size_t FileSizeOf(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data) == FALSE) return 0;
    return data.nFileSizeLow;
}
