#include "console/output_file.h"

#include "console/write_all.h"

COutputFile::~COutputFile() {
    if (!m_file) return;
    m_file.Reset();
    ::DeleteFileA(m_partial.c_str());
}

bool COutputFile::Open(const std::string& path) {
    // A folder of that name, or a file that must not be written, would be found out only at the end.
    constexpr DWORD kUnreplaceable = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & kUnreplaceable) != 0) return false;
    m_path = path;
    m_partial = path + ".partial";
    m_file.Reset(::CreateFileA(m_partial.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                               FILE_ATTRIBUTE_NORMAL, nullptr));
    return static_cast<bool>(m_file);
}

COutputFile::End COutputFile::Finish(std::string_view text) {
    if (!WriteAll(m_file.Get(), text) || ::FlushFileBuffers(m_file.Get()) == FALSE) return End::Deleted;
    m_file.Reset();
    const BOOL isMoved = ::MoveFileExA(m_partial.c_str(), m_path.c_str(), MOVEFILE_REPLACE_EXISTING);
    return isMoved != FALSE ? End::InPlace : End::Beside;
}

bool ReadWholeFile(const std::string& path, std::string& bytes) {
    const CUniqueFile file(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                         nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return false;
    char chunk[8192];
    for (;;) {
        DWORD read = 0;
        if (::ReadFile(file.Get(), chunk, sizeof chunk, &read, nullptr) == FALSE) return false;
        if (read == 0) return true;
        bytes.append(chunk, read);
    }
}
