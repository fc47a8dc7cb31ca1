#include "tests/e2e/program_copy.h"

#include <fstream>

#include "tests/e2e/program.h"

namespace fs = std::filesystem;

CProgramCopy::CProgramCopy() {
    fs::remove_all(m_folder);
    fs::create_directories(m_folder);
    fs::copy_file(VellumorExe(), Executable());
}

CProgramCopy::~CProgramCopy() {
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
}

fs::path CProgramCopy::MakeFile(const std::string& name, const std::string& text) const {
    const fs::path file = m_folder / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    return file;
}
