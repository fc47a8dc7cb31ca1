#include "repair/undo_companion.h"

#include <windows.h>

#include <memory>
#include <string_view>

#include "platform/owners.h"
#include "repair/branch_list_rules.h"
#include "repair/export_check_rules.h"
#include "repair/undo_name_rules.h"

namespace {

constexpr DWORD kPieceBytes = 64 * 1024;
// Whoever looks at a new file, as scanners do, must not keep us from it.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// The text in the capital letters by which the registry compares names; as it is where the system cannot
/// turn it into them: an empty text would be that of every key.
std::string InCapitals(std::string_view text) {
    const auto bytes = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int length = ::MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, wide.data(), bytes);
    if (length == 0) return std::string(text);
    wide.resize(static_cast<std::size_t>(length));
    ::CharUpperBuffW(wide.data(), static_cast<DWORD>(length));
    return {reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t)};
}

CUniqueFile OpenToRead(const std::string& fileName) {
    return CUniqueFile(::CreateFileA(fileName.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                     FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
}

/// Hands a file's bytes on, piece by piece.
/// @return whether all of it has been read.
template <class Take>
bool ReadPieces(HANDLE file, Take take) {
    const auto piece = std::make_unique<char[]>(kPieceBytes);
    DWORD count = 0;
    do {
        if (::ReadFile(file, piece.get(), kPieceBytes, &count, nullptr) == FALSE) return false;
        take(std::string_view(piece.get(), count));
    } while (count != 0);
    return true;
}

bool HoldsOnly(const std::string& undoFile, const CBranchList& branches) {
    const CUniqueFile file = OpenToRead(undoFile);
    CExportCheck check(branches);
    return file && ReadPieces(file.Get(), [&](std::string_view piece) { check.Feed(piece); }) &&
           check.Finish();
}

/// Opens an undo file's companion for writing, and makes it if need be; nothing for a file that has none.
CUniqueFile OpenCompanion(const std::string& undoFile, DWORD opening) {
    const std::string companion = CompanionName(undoFile);
    if (companion.empty()) return CUniqueFile();
    return CUniqueFile(::CreateFileA(companion.c_str(), GENERIC_WRITE, kShareAll, nullptr, opening,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// Appends a text whole or not at all.
bool Append(HANDLE file, std::string_view text) {
    LARGE_INTEGER end{};
    if (::SetFilePointerEx(file, {}, &end, FILE_END) == FALSE) return false;
    const auto bytes = static_cast<DWORD>(text.size());
    DWORD written = 0;
    if (::WriteFile(file, text.data(), bytes, &written, nullptr) != FALSE && written == bytes) return true;
    // Part of a line would spoil the next one.
    if (::SetFilePointerEx(file, end, nullptr, FILE_BEGIN) != FALSE) ::SetEndOfFile(file);
    return false;
}

}  // namespace

bool IsMissing(const std::string& fileName) {
    return ::GetFileAttributesA(fileName.c_str()) == INVALID_FILE_ATTRIBUTES &&
           ::GetLastError() == ERROR_FILE_NOT_FOUND;
}

bool MakeCompanion(const std::string& undoFile) {
    return static_cast<bool>(OpenCompanion(undoFile, CREATE_ALWAYS));
}

bool AddToCompanion(const std::string& undoFile, const std::string& branch) {
    const CUniqueFile file = OpenCompanion(undoFile, OPEN_ALWAYS);
    return file && Append(file.Get(), BranchLine(branch));
}

bool MayReplay(const std::string& undoFile) {
    const std::string companion = CompanionName(undoFile);
    if (companion.empty() || IsMissing(companion)) return true;
    const CUniqueFile file = OpenToRead(companion);
    std::string text;
    if (!file || !ReadPieces(file.Get(), [&](std::string_view piece) { text += piece; })) return false;
    CBranchList branches(InCapitals);
    return branches.Read(text) && HoldsOnly(undoFile, branches);
}
