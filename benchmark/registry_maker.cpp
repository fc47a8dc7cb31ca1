#include "benchmark/registry_maker.h"

#include <cstdio>
#include <random>
#include <stdexcept>
#include <string>

#include "benchmark/tree_walk.h"
#include "platform/owners.h"

namespace {

/// Makes one key, with values that depend on its number alone.
class CKeyMaker {
public:
    explicit CKeyMaker(std::size_t number) : m_number(number), m_random(static_cast<unsigned>(number)) {}

    void Make() {
        const std::size_t kind = m_number % 100;
        if (kind < 16)
            MakeClass();
        else if (kind < 28)
            MakeInterface();
        else if (kind < 34)
            MakeProgId();
        else if (kind < 44)
            MakeSoftware(HKEY_CURRENT_USER);
        else
            MakeSoftware(HKEY_LOCAL_MACHINE);
    }

private:
    [[nodiscard]] std::string Guid(std::size_t number) const {
        char text[48];
        std::snprintf(text, sizeof text, "{BE4C%04X-%04X-4000-8000-00%010X}",
                      static_cast<unsigned>(number >> 16 & 0xFFFF), static_cast<unsigned>(number & 0xFFFF),
                      static_cast<unsigned>(number));
        return text;
    }

    void Open(HKEY root, const std::string& path) {
        if (::RegCreateKeyA(root, path.c_str(), m_key.Receive()) != ERROR_SUCCESS)
            throw std::runtime_error("cannot make " + path);
    }
    void SetText(const std::string& name, const std::string& text, DWORD type = REG_SZ) {
        const auto* bytes = reinterpret_cast<const BYTE*>(text.c_str());
        if (::RegSetValueExA(m_key.Get(), name.c_str(), 0, type, bytes,
                             static_cast<DWORD>(text.size() + 1)) != ERROR_SUCCESS)
            throw std::runtime_error("cannot set " + name);
    }
    void SetNumber(const std::string& name) { SetText(name, std::string(3, 'n'), REG_DWORD); }

    /// A path to a file, which exists but for one in fifty.
    std::string FilePath() {
        return m_random() % 50 == 0 ? R"(C:\Program Files\Gone\module)" + std::to_string(m_number) + ".dll"
                                    : R"(C:\windows\system32\kernel32.dll)";
    }

    /// Every fourth key of this kind is a class of its own, the others are its subkeys.
    void MakeClass() {
        const std::size_t part = m_number % 4;
        const std::string path = "CLSID\\" + Guid(m_number - part);
        static constexpr const char* kParts[] = {"", "\\InprocServer32", "\\ProgID", "\\TypeLib"};
        Open(HKEY_CLASSES_ROOT, path + kParts[part]);
        if (part == 0) SetText("", "Bench class " + std::to_string(m_number));
        if (part == 1) {
            SetText("", FilePath());
            SetText("ThreadingModel", "Both");
        }
        if (part == 2) SetText("", "Bench.Prog" + std::to_string(m_number / 100));
        if (part == 3) SetText("", Guid(1));
        for (int extra = 0; extra < 2; ++extra) SetNumber("Flags" + std::to_string(extra));
    }

    void MakeInterface() {
        const std::size_t part = m_number % 4;
        const std::string path = "Interface\\" + Guid(m_number - part);
        static constexpr const char* kParts[] = {"", "\\ProxyStubClsid32", "\\TypeLib", "\\NumMethods"};
        Open(HKEY_CLASSES_ROOT, path + kParts[part]);
        SetText("", part == 0 ? "IBench" : part == 3 ? "7" : Guid(1));
        for (int extra = 0; extra < 2; ++extra) SetText("Version" + std::to_string(extra), "1.0");
    }

    void MakeProgId() {
        const std::size_t part = m_number % 3;
        static constexpr const char* kParts[] = {"", "\\CLSID", "\\shell\\open\\command"};
        Open(HKEY_CLASSES_ROOT, "Bench.Prog" + std::to_string(m_number / 100) + kParts[part]);
        SetText("", part == 0 ? "Bench document" : part == 1 ? Guid(m_number / 100 * 100) : FilePath());
        for (int extra = 0; extra < 2; ++extra) SetText("Setting" + std::to_string(extra), "on");
    }

    void MakeSoftware(HKEY root) {
        const std::size_t vendor = m_number / 2000;
        const std::size_t product = m_number / 100 % 20;
        Open(root, std::string(kScratchKey) + "\\Vendor" + std::to_string(vendor) + "\\Product" +
                       std::to_string(product) + "\\Settings\\Item" + std::to_string(m_number % 100));
        const std::size_t values = m_random() % 7;  // three on average
        for (std::size_t value = 0; value < values; ++value) SetAny("Value" + std::to_string(value));
    }

    void SetAny(const std::string& name) {
        switch (m_random() % 8) {
            case 0:
                return SetText(name, FilePath());
            case 1:
                return SetText(name, R"(%SystemRoot%\system32\kernel32.dll)", REG_EXPAND_SZ);
            case 2:
                return SetText(name, Guid(m_number));
            case 3:
                return SetText(name, std::string(m_random() % 120, 'b'), REG_BINARY);
            case 4:
                return SetText(name, "Some words that a person reads, " + std::to_string(m_number));
            default:
                return SetNumber(name);
        }
    }

    std::size_t m_number;
    std::minstd_rand m_random;
    CUniqueKey m_key;
};

void CountBelow(HKEY key, TreeSize& size) {
    TreeSize enumerated;
    WalkTree(
        key, [&enumerated] { ++enumerated.keys; }, [&enumerated] { ++enumerated.values; });
    size.keys += enumerated.keys;
    size.values += enumerated.values - enumerated.keys;  // each key has one enumeration behind its last value
}

}  // namespace

void MakeRegistry(std::size_t from, std::size_t to) {
    for (std::size_t number = from; number < to; ++number) CKeyMaker(number).Make();
}

TreeSize CountTree(HKEY key) {
    TreeSize size;
    CountBelow(key, size);
    return size;
}

TreeSize CountHives() {
    TreeSize all;
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER, HKEY_USERS}) CountBelow(root, all);
    return all;
}
