#include "tests/driver/console_program.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/driver/wait.h"

namespace fs = std::filesystem;

namespace {

constexpr DWORD kEndPatience = 180'000;  // milliseconds

std::string TextIn(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

CUniqueFile OpenInheritable(const std::string& path, DWORD access, DWORD creation) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    CUniqueFile file(::CreateFileA(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                   creation, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) throw CDriverError(path + " cannot be opened: error " + std::to_string(::GetLastError()));
    return file;
}

/// While one lives, a program that is started inherits the pipes that it is to have.
class CInheritedPipes {
public:
    explicit CInheritedPipes(const ConsoleStart& start) : m_start(start) { Set(HANDLE_FLAG_INHERIT); }
    CInheritedPipes(const CInheritedPipes&) = delete;
    CInheritedPipes& operator=(const CInheritedPipes&) = delete;
    ~CInheritedPipes() { Set(0); }

private:
    void Set(DWORD flag) const {
        for (const HANDLE pipe : {m_start.inputPipe, m_start.outputPipe})
            if (pipe != nullptr) ::SetHandleInformation(pipe, HANDLE_FLAG_INHERIT, flag);
    }
    const ConsoleStart& m_start;
};

}  // namespace

CConsoleProgram::CConsoleProgram(const ConsoleStart& start) {
    static int count = 0;
    m_folder = (fs::temp_directory_path() / ("VellumorConsole" + std::to_string(++count))).string();
    fs::remove_all(m_folder);
    fs::create_directories(m_folder);
    STARTUPINFOA startup = OpenStreams(start);
    const CInheritedPipes inherited(start);
    PROCESS_INFORMATION process{};
    std::string line = "\"" + start.executable + "\" " + start.arguments;
    const BOOL isStarted =
        start.token != nullptr
            ? ::CreateProcessAsUserA(start.token, start.executable.c_str(), line.data(), nullptr, nullptr,
                                     TRUE, 0, nullptr, nullptr, &startup, &process)
            : ::CreateProcessA(start.executable.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                               nullptr, &startup, &process);
    if (isStarted == FALSE)
        throw CDriverError(start.executable + " cannot be started: error " +
                           std::to_string(::GetLastError()));
    ::CloseHandle(process.hThread);
    m_process.Reset(process.hProcess);
}

CConsoleProgram::~CConsoleProgram() {
    ::TerminateProcess(m_process.Get(), 1);
    ::WaitForSingleObject(m_process.Get(), kPatience);
    for (CUniqueFile& stream : m_streams) stream.Reset();
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
}

STARTUPINFOA CConsoleProgram::OpenStreams(const ConsoleStart& start) {
    std::ofstream(PathOf("input"), std::ios::binary) << start.input;
    const std::string output = start.output.empty() ? PathOf("output") : start.output;
    constexpr DWORD kBoth = GENERIC_READ | GENERIC_WRITE;  // a terminal's settings are read from its output
    const bool isTerminal = start.hasTerminal;
    m_streams[0] = OpenInheritable(isTerminal ? "CONIN$" : PathOf("input"), isTerminal ? kBoth : GENERIC_READ,
                                   OPEN_EXISTING);
    m_streams[1] = OpenInheritable(isTerminal ? "CONOUT$" : output, isTerminal ? kBoth : GENERIC_WRITE,
                                   isTerminal || !start.output.empty() ? OPEN_EXISTING : CREATE_ALWAYS);
    m_streams[2] =
        OpenInheritable(isTerminal ? "CONOUT$" : PathOf("error"), isTerminal ? kBoth : GENERIC_WRITE,
                        isTerminal ? OPEN_EXISTING : CREATE_ALWAYS);
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = start.inputPipe != nullptr ? start.inputPipe : m_streams[0].Get();
    startup.hStdOutput = start.outputPipe != nullptr ? start.outputPipe : m_streams[1].Get();
    startup.hStdError = m_streams[2].Get();
    return startup;
}

ConsoleResult CConsoleProgram::Wait() const {
    if (::WaitForSingleObject(m_process.Get(), kEndPatience) != WAIT_OBJECT_0)
        FailWaiting("the end of the console program", kEndPatience);
    ConsoleResult result;
    ::GetExitCodeProcess(m_process.Get(), &result.exitCode);
    result.output = TextIn(PathOf("output"));
    result.error = TextIn(PathOf("error"));
    return result;
}
