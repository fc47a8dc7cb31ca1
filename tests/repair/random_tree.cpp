#include "tests/repair/random_tree.h"

#include <doctest/doctest.h>

#include <string>

#include "platform/owners.h"
#include "tests/support/scratch_key.h"

namespace {

constexpr DWORD kTypes[] = {
    REG_NONE, REG_SZ,       REG_EXPAND_SZ,     REG_BINARY, REG_DWORD, REG_DWORD_BIG_ENDIAN,
    REG_LINK, REG_MULTI_SZ, REG_RESOURCE_LIST, 9,          10,        REG_QWORD,
    12,       0xFF,         0xFFFFFFFF};

int Below(std::mt19937& random, int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); }

/// Letters mostly, and now and then any byte that a line of text can hold.
std::string RandomText(std::mt19937& random, int length) {
    static constexpr char kTricky[] = "\"\\[]=@;,:%{}#\t\x01\x7F\x80\x81\xA0\xE4\xFF 0";
    std::string text;
    while (static_cast<int>(text.size()) < length) {
        char byte = static_cast<char>('a' + Below(random, 26));
        if (Below(random, 3) == 0) byte = kTricky[Below(random, sizeof kTricky - 1)];
        if (Below(random, 6) == 0) byte = static_cast<char>(1 + Below(random, 255));
        if (byte != '\n' && byte != '\r') text += byte;
    }
    return text;
}

std::string RandomBytes(std::mt19937& random, int length) {
    std::string bytes;
    for (int index = 0; index < length; ++index) bytes += static_cast<char>(Below(random, 256));
    return bytes;
}

int RandomLength(std::mt19937& random) {
    switch (Below(random, 4)) {
        case 0:
            return Below(random, 4);
        case 1:
            return Below(random, 300);
        default:
            return Below(random, 40);
    }
}

std::string RandomData(std::mt19937& random, DWORD type) {
    switch (type) {
        case REG_SZ:
        case REG_EXPAND_SZ:
            return RandomText(random, RandomLength(random)) + '\0';
        case REG_MULTI_SZ: {
            std::string texts;
            for (int count = Below(random, 4); count > 0; --count)
                texts += RandomText(random, 1 + Below(random, 20)) + '\0';
            return texts + '\0';
        }
        case REG_DWORD:
            return RandomBytes(random, Below(random, 3) == 0 ? Below(random, 9) : 4);
        default:
            return RandomBytes(random, RandomLength(random));
    }
}

}  // namespace

void PlantRandomTree(HKEY key, std::mt19937& random, int levels) {
    for (int count = Below(random, 5); count > 0; --count) {
        const DWORD type = kTypes[Below(random, static_cast<int>(std::size(kTypes)))];
        const std::string name = Below(random, 6) == 0 ? "" : RandomText(random, 1 + Below(random, 30));
        const std::string data = RandomData(random, type);
        REQUIRE(::RegSetValueExA(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(data.data()),
                                 static_cast<DWORD>(data.size())) == ERROR_SUCCESS);
    }
    if (levels == 0) return;
    for (int count = Below(random, 3); count > 0; --count) {
        std::string name = RandomText(random, 1 + Below(random, 20));
        for (char& c : name)
            if (c == '\\') c = '/';
        CUniqueKey subkey;
        REQUIRE(::RegCreateKeyExA(key, name.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, subkey.Receive(),
                                  nullptr) == ERROR_SUCCESS);
        PlantRandomTree(subkey.Get(), random, levels - 1);
    }
}
