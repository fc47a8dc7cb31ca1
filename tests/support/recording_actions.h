#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/hive_actions.h"

/// Records what the program asks of the system instead of doing it; with hives it does what Windows
/// documents.
class CRecordingActions : public CHiveActions {
public:
    CRecordingActions() { SetSystemActions(this); }
    ~CRecordingActions() override { SetSystemActions(nullptr); }

    [[nodiscard]] std::vector<RunningProgram> ListPrograms() override {
        asked.emplace_back("list");
        if (onList) onList();
        return programs;
    }
    void EndProgram(DWORD processId) override { asked.push_back("end " + std::to_string(processId)); }
    UINT RunProgram(const char* commandLine, int show) override {
        asked.push_back("run " + std::string(commandLine) + " " + std::to_string(show));
        return runAnswer;
    }
    int OpenWithShell(const char* target) override {
        asked.push_back("open " + std::string(target));
        return shellAnswer;
    }
    void Beep() override { asked.emplace_back("beep"); }
    void ShowHelp(const char* file) override { asked.push_back("help " + std::string(file)); }
    int ShowMessage(HWND owner, const char* text, const char* caption, UINT flags) override {
        messages.push_back({owner, text, caption, flags});
        return answer ? answer(messages.back()) : IDOK;
    }
    void EmptyFolder(const std::string& folder) override { emptied.push_back(folder); }

    [[nodiscard]] bool IsAdministrator() override { return isAdministrator; }

    struct Message {
        HWND owner;
        std::string text;
        std::string caption;
        UINT flags;
    };
    std::vector<Message> messages;
    /// The button that a message is answered with; IDOK where this is not set.
    std::function<int(const Message&)> answer;
    std::vector<std::string> emptied;

    int shellAnswer = 33;
    UINT runAnswer = 32;
    bool isAdministrator = true;
    std::vector<RunningProgram> programs;
    std::function<void()> onList;  // before the programs are listed
    std::vector<std::string> asked;
};
