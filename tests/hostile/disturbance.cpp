#include "tests/hostile/disturbance.h"

#include <random>

#include "tests/hostile/hostile_registry.h"

namespace {

constexpr DWORD kPause = 20;  // milliseconds; without one, what is disturbed would hardly get on

/// Gives a key another name by deleting and creating it: the platform's own call for that ends its server.
void Rename(HKEY area, const std::wstring& name, const std::wstring& newName) {
    if (const CUniqueKey key = OpenRaw(area, name, KEY_ALL_ACCESS)) DeleteRawTree(key.Get());
    if (const CUniqueKey key = CreateRaw(area, newName))
        SetRaw(key.Get(), TextValue({}, LR"(C:\VmHost\gone.dll)"));
}

class CDisturbance {
public:
    void DisturbSubkeys(const SubkeyList& list) {
        const HKEY area = m_registry.Area(list.root, list.area);
        const std::wstring name = L"VmHostBusy" + std::to_wstring(m_random() % 8);
        switch (m_random() % 4) {
            case 0:
                if (const CUniqueKey key = OpenRaw(area, name, KEY_ALL_ACCESS)) DeleteRawTree(key.Get());
                break;
            case 1:
                Rename(area, name, L"VmHostBusy" + std::to_wstring(m_random() % 8));
                break;
            default:
                Fill(area, name, list);
        }
    }

    void DisturbValues(const ValueList& list) {
        const HKEY area = m_registry.Area(list.root, list.area);
        const std::wstring name = L"VmHostBusy" + std::to_wstring(m_random() % 8);
        if (m_random() % 3 == 0)
            DeleteRawValue(area, name);
        else
            SetRaw(area, AnyText(name));
    }

private:
    RawValue AnyText(const std::wstring& name) {
        return TextValue(name, L"C:\\VmHost\\" + std::wstring(m_random() % 600, L'x'));
    }

    void Fill(HKEY area, const std::wstring& name, const SubkeyList& list) {
        CUniqueKey key = CreateRaw(area, name);
        if (key && *list.inner != L'\0' && std::wstring(list.inner).find(L'\\') == std::wstring::npos) {
            CUniqueKey inner = CreateRaw(key.Get(), list.inner);
            key = std::move(inner);
        }
        if (!key) return;
        SetRaw(key.Get(), AnyText(list.valueName));
        for (unsigned count = m_random() % 8; count > 0; --count)
            SetRaw(key.Get(), AnyText(L"v" + std::to_wstring(count)));
    }

    CHostileRegistry m_registry;
    std::mt19937 m_random{1};
};

}  // namespace

void DisturbForEver() {
    CDisturbance disturbance;
    const CUniqueHandle disturbed(::CreateEventA(nullptr, FALSE, FALSE, kDisturbedEvent));
    for (;;) {
        for (const SubkeyList& list : SubkeyLists()) disturbance.DisturbSubkeys(list);
        for (const ValueList& list : ValueLists()) disturbance.DisturbValues(list);
        ::SetEvent(disturbed.Get());
        ::Sleep(kPause);
    }
}
