#include "tests/console/console_bench.h"

#include <sstream>

#include "console/console.h"

ExitCode CConsoleBench::Run(const std::vector<std::string>& arguments) {
    terminal.output.clear();
    terminal.error.clear();
    std::vector<const char*> line{"vellumor-cli"};
    for (const std::string& argument : arguments) line.push_back(argument.c_str());
    return RunConsole(static_cast<int>(line.size()), line.data(), terminal);
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}
