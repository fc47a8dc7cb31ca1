#include "platform/command_line_rules.h"

bool NamesProgramInFull(std::string_view commandLine) {
    if (!commandLine.starts_with('"')) return false;
    const std::string_view rest = commandLine.substr(1);
    const std::size_t end = rest.find('"');
    if (end == std::string_view::npos) return false;
    const std::string_view path = rest.substr(0, end);
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    return path.size() > 3 && isLetter(path[0]) && path.substr(1, 2) == ":\\" && path.back() != '\\';
}
