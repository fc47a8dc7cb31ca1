#pragma once

#include <functional>
#include <string>
#include <vector>

#include "console/exit_code.h"
#include "console/terminal.h"
#include "tests/support/recording_actions.h"

/// Keeps what a command writes, and reads what the test wants it to.
class CRecordingTerminal : public CTerminal {
public:
    [[nodiscard]] bool WriteOutput(std::string_view text) override {
        if (refusesOutput) return false;
        output += text;
        return true;
    }
    void WriteError(std::string_view text) override {
        error += text;
        if (onError) onError(std::string(text));
    }
    [[nodiscard]] std::optional<std::string> ReadInput() override {
        if (onReadInput) onReadInput();
        return input;
    }
    [[nodiscard]] std::optional<std::size_t> OutputWidth() const override { return outputWidth; }
    [[nodiscard]] std::optional<std::size_t> ErrorWidth() const override { return errorWidth; }
    [[nodiscard]] bool CanAsk() const override { return canAsk; }
    [[nodiscard]] std::string ReadAnswer() override { return answer; }

    std::string output;
    std::string error;
    bool refusesOutput = false;
    std::function<void(const std::string& text)> onError;
    std::function<void()> onReadInput;
    std::optional<std::string> input = "";
    std::optional<std::size_t> outputWidth, errorWidth;
    bool canAsk = false;
    std::string answer;
};

/// Runs commands, with a terminal and a system of the test's own.
class CConsoleBench {
public:
    /// Runs a command line, of which the program's name is left out. What former ones wrote is forgotten.
    ExitCode Run(const std::vector<std::string>& arguments);

    CRecordingTerminal terminal;
    CRecordingActions actions;
};

/// The lines of a text, without their ends.
[[nodiscard]] std::vector<std::string> LinesOf(const std::string& text);
