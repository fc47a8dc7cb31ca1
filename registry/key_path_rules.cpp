#include "registry/key_path_rules.h"

#include <cstdio>

SplitPath SplitKeyPathText(std::string_view path) {
    const std::size_t leading = path.find('\\');
    std::string_view root = leading == std::string_view::npos ? path : path.substr(leading + 1);
    SplitPath split;
    if (const std::size_t end = root.find('\\'); end != std::string_view::npos) {
        split.subkey = std::string(root.substr(end + 1));
        root = root.substr(0, end);
    }
    for (const RootKeyRow& row : kRootKeyTable)
        if (row.name == root) {
            split.root = row.handle;
            break;
        }
    return split;
}

std::string JoinKeyPath(std::string_view parent, std::string_view child) {
    std::string path;
    path.reserve(parent.size() + 1 + child.size());
    path.append(parent).append("\\").append(child);
    return path;
}

std::string WriteTimeText(const WriteTime& time) {
    char text[260];
    std::snprintf(text, sizeof text, "%04d/%02d/%02d %02d:%02d:%02d", time.year, time.month, time.day,
                  time.hour, time.minute, time.second);
    return text;
}
