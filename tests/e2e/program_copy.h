#pragma once

#include <filesystem>
#include <string>

/// A folder of its own with a copy of the program in it; removed with all that is in it.
class CProgramCopy {
public:
    CProgramCopy();
    CProgramCopy(const CProgramCopy&) = delete;
    CProgramCopy& operator=(const CProgramCopy&) = delete;
    ~CProgramCopy();

    [[nodiscard]] std::string Executable() const { return (m_folder / "vellumor.exe").string(); }
    [[nodiscard]] std::filesystem::path operator/(const std::string& name) const { return m_folder / name; }

    /// Makes a file with a text, and the folders above it.
    std::filesystem::path MakeFile(const std::string& name, const std::string& text = "old") const;

private:
    std::filesystem::path m_folder = std::filesystem::temp_directory_path() / "VellumorE2E copy";
};
