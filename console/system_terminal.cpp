#include "console/system_terminal.h"

#include <algorithm>
#include <span>

#include "console/interruption.h"
#include "console/write_all.h"

namespace {

constexpr DWORD kChunk = 8192;  // more characters at once are refused by consoles of old systems

/// Whether a stream is a pipe at whose other end somebody may still write. One who writes nothing, which is
/// no end, has a read return with nothing.
bool IsOpenPipe(HANDLE stream) {
    return ::PeekNamedPipe(stream, nullptr, 0, nullptr, nullptr, nullptr) != FALSE;
}

bool IsConsole(HANDLE stream) {
    DWORD mode = 0;
    return ::GetConsoleMode(stream, &mode) != FALSE;
}

std::optional<std::size_t> WidthOf(HANDLE stream) {
    CONSOLE_SCREEN_BUFFER_INFO info;
    if (!IsConsole(stream) || ::GetConsoleScreenBufferInfo(stream, &info) == FALSE) return std::nullopt;
    // The last column stays free: a character there moves the cursor to the next line.
    return static_cast<std::size_t>(std::max(info.srWindow.Right - info.srWindow.Left, 1));
}

bool WriteConsoleText(HANDLE console, std::string_view text) {
    std::wstring wide(text.size(), L'\0');  // never longer than the bytes
    const int length = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                             wide.data(), static_cast<int>(wide.size()));
    wide.resize(static_cast<std::size_t>(length));
    for (std::size_t at = 0; at < wide.size();) {
        DWORD written = 0;
        const auto count = static_cast<DWORD>(std::min<std::size_t>(wide.size() - at, kChunk));
        if (::WriteConsoleW(console, wide.data() + at, count, &written, nullptr) == FALSE || written == 0)
            return false;
        at += written;
    }
    return true;
}

bool WriteText(HANDLE stream, std::string_view text) {
    if (IsConsole(stream)) return WriteConsoleText(stream, text);
    return WriteAll(stream, text);
}

/// Reads once. Ctrl+C wakes a read from a terminal with nothing read, before or while the system calls the
/// handler: what the program would make of an end of input must not overtake that.
BOOL ReadSome(HANDLE stream, std::span<char> buffer, DWORD& read) {
    ::SetLastError(ERROR_SUCCESS);
    const BOOL isRead = ::ReadFile(stream, buffer.data(), static_cast<DWORD>(buffer.size()), &read, nullptr);
    if (read == 0 && ::GetLastError() == ERROR_OPERATION_ABORTED) EndAsCanceled();
    return isRead;
}

}  // namespace

CSystemTerminal::CSystemTerminal()
    : m_input(::GetStdHandle(STD_INPUT_HANDLE)),
      m_output(::GetStdHandle(STD_OUTPUT_HANDLE)),
      m_error(::GetStdHandle(STD_ERROR_HANDLE)) {}

bool CSystemTerminal::WriteOutput(std::string_view text) { return WriteText(m_output, text); }

void CSystemTerminal::WriteError(std::string_view text) {
    if (!WriteText(m_error, text)) return;  // there is no third stream to tell it
}

std::optional<std::string> CSystemTerminal::ReadInput() {
    std::string text;
    char chunk[kChunk];
    for (;;) {
        DWORD read = 0;
        if (ReadSome(m_input, chunk, read) == FALSE) {
            // The other end of a pipe is closed: that is its end.
            return ::GetLastError() == ERROR_BROKEN_PIPE ? std::optional(text) : std::nullopt;
        }
        if (read == 0 && !IsOpenPipe(m_input)) return text;
        text.append(chunk, read);
    }
}

std::optional<std::size_t> CSystemTerminal::OutputWidth() const { return WidthOf(m_output); }

std::optional<std::size_t> CSystemTerminal::ErrorWidth() const { return WidthOf(m_error); }

bool CSystemTerminal::CanAsk() const { return IsConsole(m_input) && IsConsole(m_error); }

std::string CSystemTerminal::ReadAnswer() {
    char answer[256] = "";
    DWORD read = 0;
    if (ReadSome(m_input, answer, read) == FALSE) return {};
    std::string line(answer, read);
    return line.substr(0, line.find_first_of("\r\n"));
}
