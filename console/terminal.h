#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Where the program reads from and writes to. All text is UTF-8.
class CTerminal {
public:
    virtual ~CTerminal() = default;

    /// Writes to standard output. @return false when not everything could be written.
    [[nodiscard]] virtual bool WriteOutput(std::string_view text) = 0;
    /// Writes to standard error, whose failures nobody could be told of.
    virtual void WriteError(std::string_view text) = 0;
    /// All of standard input, up to its end; nothing when it cannot be read.
    [[nodiscard]] virtual std::optional<std::string> ReadInput() = 0;
    /// The characters of one line of standard output's terminal; nothing when it is none.
    [[nodiscard]] virtual std::optional<std::size_t> OutputWidth() const = 0;
    /// The same for standard error.
    [[nodiscard]] virtual std::optional<std::size_t> ErrorWidth() const = 0;
    /// Whether somebody can be asked: standard input and standard error are a terminal.
    [[nodiscard]] virtual bool CanAsk() const = 0;
    /// Reads one line that is typed at the terminal, without its end; empty at the end of input.
    [[nodiscard]] virtual std::string ReadAnswer() = 0;
};

/// Asks a question on standard error. @return whether the answer begins with a "y", in either case.
[[nodiscard]] bool Ask(CTerminal& terminal, const std::string& question);

/// Writes one line to standard error; the control characters in it are made visible.
void WriteErrorLine(CTerminal& terminal, std::string_view text);
/// Writes one line to standard output in the same way; where that is refused, to standard error.
/// @return whether standard output took it.
[[nodiscard]] bool WriteOutputLine(CTerminal& terminal, std::string_view text);
/// Writes a whole text to standard output. @return false when it was refused, which is told then.
[[nodiscard]] bool WriteOutputText(CTerminal& terminal, std::string_view text);
