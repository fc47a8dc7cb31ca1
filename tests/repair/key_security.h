#pragma once

#include <windows.h>

#include <vector>

/// A key's owner and access list, read in the tests' own way.
class CKeySecurity {
public:
    explicit CKeySecurity(HKEY key);

    [[nodiscard]] PSID Owner();
    [[nodiscard]] PACL List();

private:
    std::vector<unsigned char> m_block;
};

/// The user of this process.
class CUser {
public:
    CUser();
    [[nodiscard]] PSID Identifier() { return reinterpret_cast<TOKEN_USER*>(m_block.data())->User.Sid; }

private:
    std::vector<unsigned char> m_block;
};

/// Whether this process's token has a privilege enabled.
[[nodiscard]] bool IsEnabled(const char* privilege);

/// Makes everybody a key's owner.
void GiveToEveryone(HKEY key);
