#include "tests/support/call_hook.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace {

/// Finds the place from which this program calls an imported function; null: it imports none of that name.
/// @param library  null: of whichever library.
FARPROC* FindImport(std::string_view function, const char* library = nullptr) {
    const auto base = reinterpret_cast<char*>(::GetModuleHandleA(nullptr));
    const auto dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
    const auto headers = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto module = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports); module->Name != 0;
         ++module) {
        if (library != nullptr && ::lstrcmpiA(base + module->Name, library) != 0) continue;
        auto name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->OriginalFirstThunk);
        auto slot = reinterpret_cast<FARPROC*>(base + module->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto entry = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (function == reinterpret_cast<const char*>(entry->Name)) return slot;
        }
    }
    return nullptr;
}

}  // namespace

bool CCallHook::IsImported(const char* function) { return FindImport(function) != nullptr; }

bool CCallHook::IsImportedFrom(const char* function, const char* library) {
    return FindImport(function, library) != nullptr;
}

CCallHook::CCallHook(const char* function, FARPROC replacement, FARPROC* before)
    : m_slot(FindImport(function)), m_before(nullptr) {
    if (m_slot == nullptr) throw std::logic_error(std::string("not imported: ") + function);
    m_before = *m_slot;
    if (before != nullptr) *before = m_before;
    Write(replacement);
}

void CCallHook::Write(FARPROC function) {
    DWORD protection = 0;
    ::VirtualProtect(m_slot, sizeof *m_slot, PAGE_READWRITE, &protection);
    *m_slot = function;
    ::VirtualProtect(m_slot, sizeof *m_slot, protection, &protection);
}
