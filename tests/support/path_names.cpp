#include "tests/support/path_names.h"

Names NamesOf(const std::string& path) {
    Names names;
    std::size_t start = 0;
    for (std::size_t end = path.find('\\'); end != std::string::npos; end = path.find('\\', start)) {
        names.push_back(path.substr(start, end - start));
        start = end + 1;
    }
    names.push_back(path.substr(start));
    return names;
}

std::string PathOf(const Names& names, std::size_t count) {
    std::string path = names[0];
    for (std::size_t index = 1; index < count; ++index) path += "\\" + names[index];
    return path;
}
