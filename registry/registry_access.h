#pragma once

#include <windows.h>

#include <cstring>
#include <optional>
#include <string>

#include "platform/owners.h"

// The access rights that registry calls of the analysis ask for.
constexpr REGSAM kReadAccess = KEY_READ;
constexpr REGSAM kAllAccess = KEY_ALL_ACCESS;
static_assert(kReadAccess == 0x20019 && kAllAccess == 0xF003F);

/// Sizes in bytes that enumeration calls are given. A longer name or datum makes the call fail and leaves the
/// cleared buffers as the system left them (empty), and that is what is examined: these sizes decide what is
/// seen.
constexpr DWORD kNameBytes = 260;
constexpr DWORD kDataBytes = 260;

/// Where an enumeration writes one value. One byte more than the call is told of always stays zero, so data
/// that fill their buffer without a terminator still end.
struct ValueBuffers {
    char name[kNameBytes + 1];
    char data[kDataBytes + 1];
    DWORD nameBytes;  // as the call reported it, without a terminator
    DWORD dataBytes;  // as the call reported it, terminator included

    void Clear() {
        std::memset(name, 0, sizeof name);
        std::memset(data, 0, sizeof data);
        nameBytes = 0;
        dataBytes = kDataBytes;
    }
    /// Whether a zero byte stands in the name: what is before it names another value, or none.
    [[nodiscard]] bool HasHiddenName() const { return nameBytes != std::strlen(name); }
};

/// Opens a subkey; an empty or null subkey opens `parent` itself again.
[[nodiscard]] LSTATUS OpenKey(HKEY parent, const char* subkey, REGSAM access, CUniqueKey& key);

/// Whether a subkey can be opened by its name as an enumeration tells it. What stands before a zero byte
/// names another key, and nothing at all the key above. A backslash comes of a character that the code page
/// lacks, and would lead to a key further down.
/// @param bytes  length of the name as the enumeration told it.
[[nodiscard]] bool CanOpenByName(const char* name, DWORD bytes);

/// Clears the buffers and enumerates one value; its type is not looked at.
[[nodiscard]] LSTATUS EnumValue(HKEY key, DWORD index, ValueBuffers& value);

/// Enumerates one subkey's name; on failure the name is empty.
/// @return the system's code; ERROR_INVALID_NAME for a name that no call could open the subkey by.
[[nodiscard]] LSTATUS EnumSubkey(HKEY key, DWORD index, char (&name)[kNameBytes + 1]);

/// Whether an enumeration result ends the walk of its key. Besides the regular end these are the answers of a
/// handle that no later index can revive: not a valid handle, and a key deleted while it was open. Any other
/// failure concerns one index only, which is skipped.
[[nodiscard]] constexpr bool EndsWalk(LSTATUS result) {
    return result == ERROR_NO_MORE_ITEMS || result == ERROR_INVALID_HANDLE || result == ERROR_KEY_DELETED;
}

/// Tells the end of one walk over a key's values or subkeys.
class CWalkEnd {
public:
    enum class Of { Values, Subkeys };

    explicit CWalkEnd(Of what) : m_what(what) {}

    /// To be called with each result of the enumeration. A failure concerns one index only, but a key that
    /// does nothing else than fail would be walked for ever: now and then it is asked how much it holds, and
    /// behind that the walk is over.
    [[nodiscard]] bool IsReached(HKEY key, DWORD index, LSTATUS result) {
        if (result != ERROR_SUCCESS) return EndsWalk(result) || HasFailedTooLong(key, index);
        m_failures = 0;
        return false;
    }
    /// Whether the walk ended so, and what the key holds is not known.
    [[nodiscard]] bool HasGivenUp() const { return m_hasGivenUp; }

private:
    [[nodiscard]] bool HasFailedTooLong(HKEY key, DWORD index);

    Of m_what;
    int m_failures = 0;  // in a row, since the key was asked last
    bool m_hasGivenUp = false;
};

/// A file time in UTC as "2009/03/05 07:08:09"; nothing for a time that has no date.
[[nodiscard]] std::optional<std::string> FileTimeText(const FILETIME& time);

/// The key's last write time in UTC as "2009/03/05 07:08:09"; nothing when the key does not tell it.
[[nodiscard]] std::optional<std::string> QueryWriteTime(HKEY key);

/// A name of a key or value in small letters, in which names that the registry takes for one are equal.
[[nodiscard]] std::string InSmallLetters(std::string name);
