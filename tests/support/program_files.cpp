#include "tests/support/program_files.h"

#include <windows.h>

#include <doctest/doctest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "platform/folder_tree.h"
#include "platform/owners.h"
#include "platform/program_folder.h"

CProgramSubfolder::CProgramSubfolder(const char* name) : m_path(ProgramFolder() + "\\" + name) { Remove(); }

CProgramSubfolder::~CProgramSubfolder() { Remove(); }

void CProgramSubfolder::Remove() const {
    DeleteFolderContents(m_path);
    ::RemoveDirectoryA(m_path.c_str());
    ::DeleteFileA(m_path.c_str());
}

bool CProgramSubfolder::Exists() const {
    return ::GetFileAttributesA(m_path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void CProgramSubfolder::Make() const { REQUIRE(::CreateDirectoryA(m_path.c_str(), nullptr) != FALSE); }

void CProgramSubfolder::AddFile(const std::string& name, const std::string& text) const {
    std::ofstream file(m_path + "\\" + name, std::ios::binary);
    file << text;
    file.close();
    REQUIRE(file.good());
}

bool CProgramSubfolder::HasFile(const std::string& name) const {
    return ::GetFileAttributesA((m_path + "\\" + name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::vector<std::string> CProgramSubfolder::Files() const {
    std::vector<std::string> names;
    WIN32_FIND_DATAA entry;
    const CUniqueFind search(::FindFirstFileA((m_path + "\\*.*").c_str(), &entry));
    if (!search) return names;
    do {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.emplace_back(entry.cFileName);
    } while (::FindNextFileA(search.Get(), &entry) != FALSE);
    std::ranges::sort(names);
    return names;
}

std::string TextOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
