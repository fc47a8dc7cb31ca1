#include "tests/support/file_text.h"

#include <fstream>
#include <iterator>

std::string FileText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
