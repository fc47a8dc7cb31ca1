#pragma once

#include <windows.h>

#include "console/terminal.h"

/// The standard streams of this process.
class CSystemTerminal : public CTerminal {
public:
    CSystemTerminal();

    [[nodiscard]] bool WriteOutput(std::string_view text) override;
    void WriteError(std::string_view text) override;
    [[nodiscard]] std::optional<std::string> ReadInput() override;
    [[nodiscard]] std::optional<std::size_t> OutputWidth() const override;
    [[nodiscard]] std::optional<std::size_t> ErrorWidth() const override;
    [[nodiscard]] bool CanAsk() const override;
    [[nodiscard]] std::string ReadAnswer() override;

private:
    // Borrowed from the process.
    HANDLE m_input;
    HANDLE m_output;
    HANDLE m_error;
};
