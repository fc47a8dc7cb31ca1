#include "console/dated_names.h"

#include <windows.h>

#include <algorithm>

#include "console/code_page.h"
#include "console/text_table_rules.h"

ExitCode ListNames(CTerminal& terminal, const DatedNames& names) {
    std::vector<std::vector<std::string>> lines;
    for (const std::string& name : names.find())
        lines.push_back({Printable(ToUtf8(name)), Printable(ToUtf8(names.date(name).value_or("")))});
    return WriteOutputText(terminal, TextTable(lines, kAnyWidth)) ? ExitCode::Done : ExitCode::Failed;
}

bool IsName(CTerminal& terminal, const DatedNames& names, const std::string& name) {
    const auto isSame = [&name](const std::string& other) {
        return ::lstrcmpiA(other.c_str(), name.c_str()) == 0;
    };
    if (std::ranges::any_of(names.find(), isSame)) return true;
    WriteErrorLine(terminal, std::string("There is no ") + names.kind + " named " + ToUtf8(name) + ".");
    return false;
}

ExitCode DeleteNames(CTerminal& terminal, const DatedNames& names, const std::vector<std::string>& wanted) {
    ExitCode result = ExitCode::Done;
    for (const std::string& name : wanted) {
        if (!IsName(terminal, names, name)) {
            result = ExitCode::Failed;
        } else if (!names.erase(name)) {
            WriteErrorLine(terminal,
                           std::string("The ") + names.kind + " " + ToUtf8(name) + " could not be deleted.");
            result = ExitCode::Failed;
        } else if (!WriteOutputLine(terminal, "deleted: " + ToUtf8(name))) {
            result = ExitCode::Failed;
        }
    }
    return result;
}
